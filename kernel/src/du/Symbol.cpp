#include "du/Symbol.h"

#include <memory>
#include <mutex>
#include <unordered_map>

namespace du {
namespace {

// A use count reaches zero, and a text is looked up again from zero, only under the mutex, so an
// entry is never found after its last symbol has decided to remove it.
struct Table {
    std::mutex mutex;
    std::unordered_map<std::string_view, std::unique_ptr<detail::SymbolEntry>> entries;
};

Table& GetTable() {
    static Table* table = [] {
        // Leaked on purpose: symbols may be used by other statics during shutdown.
        static Table instance;
        return &instance;
    }();
    return *table;
}

detail::SymbolEntry* Intern(std::string_view text) {
    Table& table = GetTable();
    std::lock_guard lock(table.mutex);
    auto found = table.entries.find(text);
    if (found == table.entries.end()) {
        auto entry = std::make_unique<detail::SymbolEntry>(text);
        std::string_view const key = entry->text;
        found = table.entries.emplace(key, std::move(entry)).first;
    }
    found->second->uses.fetch_add(1, std::memory_order_relaxed);
    return found->second.get();
}

void Release(detail::SymbolEntry* entry) noexcept {
    std::size_t uses = entry->uses.load(std::memory_order_relaxed);
    while (uses > 1) {
        if (entry->uses.compare_exchange_weak(uses, uses - 1, std::memory_order_acq_rel)) {
            return;
        }
    }
    Table& table = GetTable();
    std::lock_guard lock(table.mutex);
    if (entry->uses.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        // By iterator: the key is a view of the text that the erase destroys.
        table.entries.erase(table.entries.find(std::string_view(entry->text)));
    }
}

} // namespace

Symbol const Symbol::EMPTY;

Symbol::Symbol() : entry_(Intern("")) {}
Symbol::Symbol(char const* text) : entry_(Intern(text != nullptr ? text : "")) {}
Symbol::Symbol(std::string const& text) : entry_(Intern(text)) {}
Symbol::Symbol(std::string_view text) : entry_(Intern(text)) {}

Symbol::~Symbol() {
    Release(entry_);
}

Symbol& Symbol::operator=(Symbol const& other) noexcept {
    if (this != &other && entry_ != other.entry_) {
        other.entry_->uses.fetch_add(1, std::memory_order_relaxed);
        Release(entry_);
        entry_ = other.entry_;
    }
    return *this;
}

Symbol& Symbol::operator=(char const* text) {
    detail::SymbolEntry* const entry = Intern(text != nullptr ? text : "");
    Release(entry_);
    entry_ = entry;
    return *this;
}

std::size_t Symbol::TableSize() {
    Table& table = GetTable();
    std::lock_guard lock(table.mutex);
    return table.entries.size();
}

} // namespace du
