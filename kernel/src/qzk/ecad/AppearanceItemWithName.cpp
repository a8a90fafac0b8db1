#include "qzk/ecad/AppearanceItemWithName.h"

namespace qzk::ecad {
AppearanceItemWithName::~AppearanceItemWithName() = default;
}
