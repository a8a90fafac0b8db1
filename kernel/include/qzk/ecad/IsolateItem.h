// An isolated object: an appearance item with a name, compared as its AppearanceItem.
#pragma once

#include "qzk/ecad/AppearanceItemWithName.h"

namespace qzk::ecad {

class IsolateItem : public AppearanceItemWithName {
public:
    IsolateItem() = default;
    IsolateItem(void* object, short firstHandle, short secondHandle, IcmApiEcad* icm,
                du::Symbol const& name = du::Symbol::EMPTY)
        : AppearanceItemWithName(object, firstHandle, secondHandle, icm, name) {}
    IsolateItem(AppearanceItem const& item, du::Symbol const& name)
        : AppearanceItemWithName(item, name) {}
    IsolateItem(IsolateItem const&) = default;
    IsolateItem& operator=(IsolateItem const&) = default;
    ~IsolateItem() override;

    using AppearanceItem::operator=;
};

} // namespace qzk::ecad
