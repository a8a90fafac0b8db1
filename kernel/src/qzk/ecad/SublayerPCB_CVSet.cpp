#include "qzk/ecad/SublayerPCB_CVSet.h"

namespace qzk::ecad {
SublayerPCB_CVSet::~SublayerPCB_CVSet() = default;
}
