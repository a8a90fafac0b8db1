#include "qzk/ecad/GerberPrefs.h"

#include "PrefRead.h"

namespace qzk::ecad {

void GerberPrefs::Init() {
    *this = GerberPrefs();
    prefread::Flag(du::Symbol("Ecad/Gerber/metric"), metric);
    prefread::Flag(du::Symbol("Ecad/Gerber/leading_zeros_omitted"), leadingZerosOmitted);
    integerDigits = metric ? 3 : 2;
    decimalDigits = metric ? 3 : 4;
}

bool GerberPrefs::operator==(GerberPrefs const& other) const noexcept {
    return metric == other.metric && integerDigits == other.integerDigits &&
           decimalDigits == other.decimalDigits && leadingZerosOmitted == other.leadingZerosOmitted;
}

} // namespace qzk::ecad
