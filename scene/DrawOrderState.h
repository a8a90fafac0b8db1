// A display priority as the undo steps hold it: the order of the layers and the inversion.
#pragma once

#include <vector>

namespace qzkapp::ecad {

struct DrawOrderState {
    std::vector<short> order;
    bool invert = false;
};

} // namespace qzkapp::ecad
