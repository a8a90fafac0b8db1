#include "qzk/ecad/DesignImage.h"

#include "IcmApiEcad.h"
#include "qz2d/ecad/Design.h"

namespace qzk::ecad {

DesignImage::DesignImage(std::string name) : DesignObject(IcmApiEcad::IMAGE, std::move(name)) {}

DesignImage::~DesignImage() = default;

} // namespace qzk::ecad
