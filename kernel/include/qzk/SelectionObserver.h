// An observer of a scene's selection manager. The manager's notices arrive as messages and are
// decoded here into the matching virtual.
//
// Message ids: 0 selection changed (channel, cleared, removed items, added items),
// 1 selection manager destroyed. The other virtuals stay at their empty defaults; the reference
// manager does not send them.
#pragma once

#include "dom/Observer.h"
#include "du/SmartPtr.h"

#include <vector>

namespace qzk {

class Object;
class SelectionItem;

class SelectionObserver : public dom::Observer {
public:
    enum : unsigned char { SelectionChangedId = 0, SelectionManagerDestroyedId = 1 };

    SelectionObserver();
    ~SelectionObserver() override;

    void EventHandler(dom::MessageReader& reader) override;
    // removed lists the items that left the channel, added those that came, each in the order
    // the manager applied them. cleared: every item of the channel went first.
    virtual void OnSelectionChanged(unsigned int channel, bool cleared,
                                    std::vector<du::SmartPtr<SelectionItem>> const& removed,
                                    std::vector<du::SmartPtr<SelectionItem>> const& added);
    virtual void OnInsertItems(std::vector<du::SmartPtr<Object>>& items);
    virtual void OnRemoveItems(std::vector<du::SmartPtr<Object>>& items);
    virtual void OnClearSelection();
    virtual void OnBeginUpdate();
    virtual void OnEndUpdate();
    virtual void OnSelectionManagerDestroyed();
};

} // namespace qzk
