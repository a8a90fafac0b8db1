#include "qzk/ecad/RotateData.h"

namespace qzk::ecad {

RotateData::~RotateData() = default;

} // namespace qzk::ecad
