// A scene's selection manager: the lists of picked items of channels 0 (selection),
// 1 (preselection) and 4 (associated highlight), and the notices to its observers.
//
// One per kernel scene. Items are told apart by identity (the same item object); a list keeps
// the order items came in. Every change that alters a list is told to each registered observer as
// one message, never inside ApplyItems. Other channel numbers hold nothing: ApplyItems answers 0
// and tells no one.
#pragma once

#include "dom/Observable.h"
#include "du/SmartPtr.h"
#include "qzk/Object.h"

#include <mutex>
#include <vector>

namespace qzref {
class SelectionManagerInspector;
}

namespace qzk {

class SelectionItem;
class SelectionObserver;

class SelectionManager : public Object {
public:
    enum Operation : unsigned int {
        // The channel becomes exactly items; told as cleared, with all of items added.
        replace = 0,
        // Items not yet in the channel are appended; told with those that came.
        add = 1,
        // Items in the channel leave it; told with those that went.
        remove = 2,
        // The channel empties; told as cleared, if it held anything. items is not read.
        clear = 3,
        // Items in the channel leave it, the others are appended; told with both.
        toggle = 4,
    };

    SelectionManager();
    ~SelectionManager() override;

    ClassType const& GetClassType() const override;

    // false if the observer is already registered here.
    bool RegisterObserver(SelectionObserver const& observer);
    bool UnregisterObserver(SelectionObserver const& observer);
    // Returns the number of items that came into or left the channel (for replace and clear:
    // the items held afterwards plus the ones that went).
    unsigned int ApplyItems(unsigned int channel,
                            std::vector<du::SmartPtr<SelectionItem>> const& items,
                            Operation operation);

    // Kernel side.
    std::vector<du::SmartPtr<SelectionItem>> GetItems(unsigned int channel) const;
    // Tells the observers that the manager ends (the kernel scene calls this as it goes; the
    // destructor does it too if nobody did).
    void NotifyDestroyed();

protected:
    void _OnDestroy() override;

private:
    friend class qzref::SelectionManagerInspector;
    std::size_t GetObserverCount() const { return observers_.GetObserverCount(); }

    std::vector<du::SmartPtr<SelectionItem>>* Channel(unsigned int channel);

    mutable std::mutex mutex_;
    std::vector<du::SmartPtr<SelectionItem>> selected_;
    std::vector<du::SmartPtr<SelectionItem>> preselected_;
    std::vector<du::SmartPtr<SelectionItem>> associated_;
    dom::Observable observers_;
    bool destroyNotified_ = false;
};

} // namespace qzk
