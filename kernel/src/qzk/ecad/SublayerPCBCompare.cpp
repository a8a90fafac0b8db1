#include "qzk/ecad/SublayerPCBCompare.h"

namespace qzk::ecad {
SublayerPCBCompare::~SublayerPCBCompare() = default;
}
