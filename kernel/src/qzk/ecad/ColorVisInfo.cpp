#include "qzk/ecad/ColorVisInfo.h"

namespace qzk::ecad {
ColorVisInfo::~ColorVisInfo() = default;
}
