#include "qzk/SelectionObserver.h"

#include "dom/MessageReader.h"
#include "qzk/SelectionItem.h"

namespace qzk {
namespace {

bool ReadItems(dom::MessageReader& reader, std::vector<du::SmartPtr<SelectionItem>>& items) {
    unsigned int count = 0;
    if (!reader.GetUInt32Value(count)) {
        return false;
    }
    // Each object is announced by a one-byte tag; a count beyond the bytes left is a lie.
    if (count > reader.BytesLeft()) {
        return false;
    }
    items.reserve(count);
    for (unsigned int i = 0; i < count; ++i) {
        du::SmartPtr<du::RefCounted> object;
        if (!reader.GetObjectValue(object)) {
            return false;
        }
        items.push_back(du::DynamicCast<SelectionItem>(object));
    }
    return true;
}

} // namespace

SelectionObserver::SelectionObserver() = default;

SelectionObserver::~SelectionObserver() {
    DetachFromMessageLoop();
}

void SelectionObserver::EventHandler(dom::MessageReader& reader) {
    unsigned char id = 0;
    if (!reader.GetUInt8Value(id)) {
        return;
    }
    if (id == SelectionManagerDestroyedId) {
        OnSelectionManagerDestroyed();
        return;
    }
    if (id != SelectionChangedId) {
        return;
    }
    unsigned int channel = 0;
    bool cleared = false;
    std::vector<du::SmartPtr<SelectionItem>> removed;
    std::vector<du::SmartPtr<SelectionItem>> added;
    if (reader.GetUInt32Value(channel) && reader.GetBooleanValue(cleared) &&
        ReadItems(reader, removed) && ReadItems(reader, added)) {
        OnSelectionChanged(channel, cleared, removed, added);
    }
}

void SelectionObserver::OnSelectionChanged(unsigned int /*channel*/, bool /*cleared*/,
                                           std::vector<du::SmartPtr<SelectionItem>> const&,
                                           std::vector<du::SmartPtr<SelectionItem>> const&) {}
void SelectionObserver::OnInsertItems(std::vector<du::SmartPtr<Object>>& /*items*/) {}
void SelectionObserver::OnRemoveItems(std::vector<du::SmartPtr<Object>>& /*items*/) {}
void SelectionObserver::OnClearSelection() {}
void SelectionObserver::OnBeginUpdate() {}
void SelectionObserver::OnEndUpdate() {}
void SelectionObserver::OnSelectionManagerDestroyed() {}

} // namespace qzk
