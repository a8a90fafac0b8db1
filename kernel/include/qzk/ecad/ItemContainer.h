// A set of highlight or isolate items, ordered by AppearanceItem::operator<.
//
// Copying into a container empties the target first and then inserts the source's entries in
// order, so an entry of the target whose key the source also has does not survive with its old
// name or colour.
#pragma once

#include "qzk/ecad/HighlightItem.h"
#include "qzk/ecad/IsolateItem.h"

#include <cstddef>
#include <set>

namespace qzk::ecad {

template <class T> class ItemContainer {
public:
    using Set = std::set<T>;
    using iterator = typename Set::iterator;
    using const_iterator = typename Set::const_iterator;
    using value_type = T;

    ItemContainer() = default;
    ItemContainer(ItemContainer const& other) { CopyFrom(other); }
    ItemContainer& operator=(ItemContainer const& other) {
        if (this != &other) {
            CopyFrom(other);
        }
        return *this;
    }
    virtual ~ItemContainer() = default;

    // Inserting a key that is present keeps the present entry, as std::set does.
    std::pair<iterator, bool> insert(T const& item) { return items_.insert(item); }
    std::size_t erase(AppearanceItem const& key) { return items_.erase(Key(key)); }
    iterator erase(const_iterator where) { return items_.erase(where); }
    iterator find(AppearanceItem const& key) { return items_.find(Key(key)); }
    const_iterator find(AppearanceItem const& key) const { return items_.find(Key(key)); }
    bool contains(AppearanceItem const& key) const { return find(key) != end(); }

    iterator begin() { return items_.begin(); }
    iterator end() { return items_.end(); }
    const_iterator begin() const { return items_.begin(); }
    const_iterator end() const { return items_.end(); }
    std::size_t size() const noexcept { return items_.size(); }
    bool empty() const noexcept { return items_.empty(); }
    void clear() { items_.clear(); }

    Set const& GetItems() const noexcept { return items_; }

private:
    static T Key(AppearanceItem const& key) {
        T item;
        static_cast<AppearanceItem&>(item) = key;
        return item;
    }
    void CopyFrom(ItemContainer const& other) {
        items_.clear();
        for (T const& item : other.items_) {
            items_.insert(items_.end(), item);
        }
    }

    Set items_;
};

extern template class ItemContainer<HighlightItem>;
extern template class ItemContainer<IsolateItem>;

} // namespace qzk::ecad
