#include "qzk/ecad/AppearanceItem.h"

#include "qzk/ecad/SelectionItem.h"

#include <functional>

namespace qzk::ecad {

AppearanceItem const AppearanceItem::s_emptyAppItem;

AppearanceItem::AppearanceItem(du::SmartPtr<SelectionItem> const& item) {
    *this = item;
}

AppearanceItem::~AppearanceItem() = default;

bool AppearanceItem::operator<(AppearanceItem const& other) const {
    if (object != other.object) {
        return std::less<void*>()(object, other.object);
    }
    if (firstHandle != other.firstHandle) {
        return firstHandle < other.firstHandle;
    }
    if (secondHandle != other.secondHandle) {
        return secondHandle < other.secondHandle;
    }
    return std::less<IcmApiEcad*>()(icm, other.icm);
}

bool AppearanceItem::operator==(AppearanceItem const& other) const {
    return object == other.object && firstHandle == other.firstHandle &&
           secondHandle == other.secondHandle && icm == other.icm;
}

AppearanceItem& AppearanceItem::operator=(du::SmartPtr<SelectionItem> const& item) {
    if (!item) {
        object = nullptr;
        firstHandle = 0;
        secondHandle = 0;
        icm = nullptr;
        return *this;
    }
    object = item->GetObject();
    firstHandle = item->firstHandle;
    secondHandle = item->secondHandle;
    icm = item->GetIcmApiEcad();
    return *this;
}

} // namespace qzk::ecad
