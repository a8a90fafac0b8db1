#include "qzk/ecad/SublayerPCB.h"

namespace qzk::ecad {
SublayerPCB::~SublayerPCB() = default;
}
