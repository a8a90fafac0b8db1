// Names one object on screen: the key of every item set and of every change of look.
//
// Order and equality look at the object, the two handles and the session only, so the
// records derived from it (a name, a colour, a flag) never make two keys of one object. An item
// holds raw pointers into a design and is valid only as long as the design is.
#pragma once

#include "du/SmartPtr.h"

// The query session of a loaded design (the design data's, see qzk/ecad/EcadDesignData.h).
class IcmApiEcad;

namespace qzk::ecad {

class SelectionItem;

class AppearanceItem {
public:
    // The empty item: all fields null or 0.
    static AppearanceItem const s_emptyAppItem;

    AppearanceItem() noexcept = default;
    AppearanceItem(void* object, short firstHandle, short secondHandle, IcmApiEcad* icm) noexcept
        : object(object), firstHandle(firstHandle), secondHandle(secondHandle), icm(icm) {}
    // From the item's object, handles and session; a null pointer gives the empty item.
    explicit AppearanceItem(du::SmartPtr<SelectionItem> const& item);
    AppearanceItem(AppearanceItem const&) = default;
    AppearanceItem& operator=(AppearanceItem const&) = default;

    virtual ~AppearanceItem();
    // Object, then first handle, then second handle, then session.
    virtual bool operator<(AppearanceItem const& other) const;
    virtual bool operator==(AppearanceItem const& other) const;
    // Takes the key fields from the item and leaves what a derived record adds.
    virtual AppearanceItem& operator=(du::SmartPtr<SelectionItem> const& item);

    bool operator!=(AppearanceItem const& other) const { return !(*this == other); }
    bool IsEmpty() const noexcept { return object == nullptr; }

    void* object = nullptr;
    short firstHandle = 0;
    short secondHandle = 0;
    IcmApiEcad* icm = nullptr;
};

} // namespace qzk::ecad
