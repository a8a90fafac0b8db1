#include "IcmIteratorTable.h"

IcmIteratorTable& IcmIteratorTable::Get() {
    static IcmIteratorTable table;
    return table;
}

void* IcmIteratorTable::Add(std::vector<void*> children) {
    auto entry = std::make_unique<Entry>();
    entry->children = std::move(children);
    void* handle = entry.get();
    std::lock_guard lock(mutex_);
    entries_.emplace(handle, std::move(entry));
    return handle;
}

void* IcmIteratorTable::Next(void* handle) {
    std::lock_guard lock(mutex_);
    auto found = entries_.find(handle);
    if (found == entries_.end()) {
        return nullptr;
    }
    Entry& entry = *found->second;
    return entry.next < entry.children.size() ? entry.children[entry.next++] : nullptr;
}

void IcmIteratorTable::Release(void* handle) {
    std::lock_guard lock(mutex_);
    entries_.erase(handle);
}

std::size_t IcmIteratorTable::Size() const {
    std::lock_guard lock(mutex_);
    return entries_.size();
}
