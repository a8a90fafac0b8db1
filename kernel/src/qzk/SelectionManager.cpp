#include "qzk/SelectionManager.h"

#include "dom/ObservableEvent.h"
#include "dom/ObserverProxy.h"
#include "du/CommonAllocatorImpl.h"
#include "qzk/Kernel.h"
#include "qzk/SelectionItem.h"
#include "qzk/SelectionObserver.h"
#include "qzref/Journal.h"

#include <algorithm>
#include <utility>

namespace qzk {
namespace {

// The channels a scene's selection manager keeps: what is selected, what the pointer rests on,
// and the items associated with the selection. Other channel numbers hold nothing.
constexpr unsigned int kSelectedChannel = 0;
constexpr unsigned int kPreselectedChannel = 1;
constexpr unsigned int kAssociatedChannel = 4;

using Items = std::vector<du::SmartPtr<SelectionItem>>;

bool const registered = ClassType::RegisterClass(classid::SelectionManager, {classid::Object});

class SelectionChangedEvent : public dom::ObservableEvent {
public:
    SelectionChangedEvent(unsigned int channel, bool cleared, Items const& removed,
                          Items const& added)
        : channel_(channel), cleared_(cleared), removed_(removed), added_(added) {}

    void Post(dom::ObserverProxy* proxy) const override {
        proxy->PushUInt8Value(SelectionObserver::SelectionChangedId);
        proxy->PushUInt32Value(channel_);
        proxy->PushBooleanValue(cleared_);
        PushItems(proxy, removed_);
        PushItems(proxy, added_);
    }

private:
    static void PushItems(dom::ObserverProxy* proxy, Items const& items) {
        proxy->PushUInt32Value(static_cast<unsigned int>(items.size()));
        for (auto const& item : items) {
            proxy->PushObjectValue(item);
        }
    }

    unsigned int channel_;
    bool cleared_;
    Items const& removed_;
    Items const& added_;
};

class DestroyedEvent : public dom::ObservableEvent {
public:
    void Post(dom::ObserverProxy* proxy) const override {
        proxy->PushUInt8Value(SelectionObserver::SelectionManagerDestroyedId);
    }
};

std::string FmtItems(Items const& items) {
    std::string out = "[";
    for (std::size_t i = 0; i < items.size(); ++i) {
        std::string text;
        if (items[i]) {
            items[i]->PopulateRepresentation(text);
        }
        out += (i == 0 ? "" : " ") + qzref::Fmt(text);
    }
    return out + "]";
}

char const* OperationName(SelectionManager::Operation operation) {
    switch (operation) {
    case SelectionManager::replace:
        return "replace";
    case SelectionManager::add:
        return "add";
    case SelectionManager::remove:
        return "remove";
    case SelectionManager::clear:
        return "clear";
    case SelectionManager::toggle:
        return "toggle";
    }
    return "unknown";
}

bool Contains(Items const& items, du::SmartPtr<SelectionItem> const& item) {
    return std::find(items.begin(), items.end(), item) != items.end();
}

} // namespace

SelectionManager::SelectionManager() = default;

SelectionManager::~SelectionManager() {
    NotifyDestroyed();
}

ClassType const& SelectionManager::GetClassType() const {
    static ClassType const type(classid::SelectionManager);
    return type;
}

bool SelectionManager::RegisterObserver(SelectionObserver const& observer) {
    qzref::Journal::Record(GetObjectName().str(), "RegisterObserver", {observer.GetObjectClass()});
    void* block = du::CommonAllocatorImpl::Allocate(sizeof(dom::ObserverProxy), nullptr);
    du::SmartPtr<dom::ObserverProxy> proxy(new (block) dom::ObserverProxy(observer));
    return observers_.AddObserver(observer, proxy);
}

bool SelectionManager::UnregisterObserver(SelectionObserver const& observer) {
    qzref::Journal::Record(GetObjectName().str(), "UnregisterObserver",
                           {observer.GetObjectClass()});
    if (!observers_.RemoveObserver(observer)) {
        return false;
    }
    UnmanageFromKernel(&observer);
    return true;
}

std::vector<du::SmartPtr<SelectionItem>>* SelectionManager::Channel(unsigned int channel) {
    switch (channel) {
    case kSelectedChannel:
        return &selected_;
    case kPreselectedChannel:
        return &preselected_;
    case kAssociatedChannel:
        return &associated_;
    default:
        return nullptr;
    }
}

unsigned int SelectionManager::ApplyItems(unsigned int channel, Items const& items,
                                          Operation operation) {
    qzref::Journal::Record(GetObjectName().str(), "ApplyItems",
                           {qzref::Fmt(channel), FmtItems(items), OperationName(operation)});
    Items removed;
    Items added;
    bool cleared = false;
    // Held through the post, so observers hear of changes in the order they were made.
    std::lock_guard lock(mutex_);
    Items* list = Channel(channel);
    if (list == nullptr) {
        return 0;
    }
    switch (operation) {
    case replace:
        cleared = true;
        removed.swap(*list);
        for (auto const& item : items) {
            if (item && !Contains(*list, item)) {
                list->push_back(item);
            }
        }
        added = *list;
        break;
    case clear:
        cleared = !list->empty();
        removed.swap(*list);
        break;
    case add:
    case remove:
    case toggle:
        for (auto const& item : items) {
            if (!item) {
                continue;
            }
            auto found = std::find(list->begin(), list->end(), item);
            if (found != list->end() && operation != add) {
                list->erase(found);
                removed.push_back(item);
            } else if (found == list->end() && operation != remove) {
                list->push_back(item);
                added.push_back(item);
            }
        }
        break;
    }
    auto const count = static_cast<unsigned int>(removed.size() + added.size());
    if (cleared || count != 0) {
        // A cleared notice lists no removed items: cleared says that all of them went.
        Items const none;
        observers_.PostEvent(
            SelectionChangedEvent(channel, cleared, cleared ? none : removed, added));
    }
    return count;
}

std::vector<du::SmartPtr<SelectionItem>> SelectionManager::GetItems(unsigned int channel) const {
    std::lock_guard lock(mutex_);
    Items const* list = const_cast<SelectionManager*>(this)->Channel(channel);
    return list == nullptr ? Items{} : *list;
}

void SelectionManager::NotifyDestroyed() {
    {
        std::lock_guard lock(mutex_);
        if (std::exchange(destroyNotified_, true)) {
            return;
        }
    }
    observers_.PostEvent(DestroyedEvent());
}

void SelectionManager::_OnDestroy() {
    NotifyDestroyed();
}

} // namespace qzk
