// An appearance item with a display name. The name never takes part in comparisons.
#pragma once

#include "du/Symbol.h"
#include "qzk/ecad/AppearanceItem.h"

namespace qzk::ecad {

class AppearanceItemWithName : public AppearanceItem {
public:
    AppearanceItemWithName() = default;
    AppearanceItemWithName(void* object, short firstHandle, short secondHandle, IcmApiEcad* icm,
                           du::Symbol const& name = du::Symbol::EMPTY)
        : AppearanceItem(object, firstHandle, secondHandle, icm), name(name) {}
    AppearanceItemWithName(AppearanceItem const& item, du::Symbol const& name)
        : AppearanceItem(item), name(name) {}
    AppearanceItemWithName(AppearanceItemWithName const&) = default;
    AppearanceItemWithName& operator=(AppearanceItemWithName const&) = default;
    ~AppearanceItemWithName() override;

    using AppearanceItem::operator=;

    du::Symbol name;
};

} // namespace qzk::ecad
