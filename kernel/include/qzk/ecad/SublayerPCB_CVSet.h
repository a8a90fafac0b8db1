// The colour and visibility of a board's sublayers, ordered by the sublayer key.
#pragma once

#include "qzk/ecad/SublayerPCB_CV.h"

#include <set>

namespace qzk::ecad {

class SublayerPCB_CVSet : public std::set<SublayerPCB_CV> {
public:
    SublayerPCB_CVSet() = default;
    SublayerPCB_CVSet(SublayerPCB_CVSet const&) = default;
    SublayerPCB_CVSet& operator=(SublayerPCB_CVSet const&) = default;
    ~SublayerPCB_CVSet();
};

} // namespace qzk::ecad
