// What kind of ECAD design a source holds, as the kernel tells it from the design's data (or,
// before the design is loaded, from its file).
#pragma once

namespace qzk {

class EcadSource {
public:
    enum EcadType : int {
        eUnknown = 0,
        eSchematic = 1,
        eBoard = 2,
        eGerber = 3,
    };
};

} // namespace qzk
