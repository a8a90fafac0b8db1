#include "du/Symbol.h"

#include <mutex>
#include <unordered_set>

namespace du {
namespace {

struct Table {
    std::mutex mutex;
    std::unordered_set<std::string> texts;
};

Table& GetTable() {
    static Table* table = [] {
        // Leaked on purpose: symbols may be used by other statics during shutdown.
        static Table instance;
        return &instance;
    }();
    return *table;
}

std::string const* Intern(std::string_view text) {
    Table& table = GetTable();
    std::lock_guard lock(table.mutex);
    // References into an unordered_set stay valid across rehashing.
    return &*table.texts.emplace(text).first;
}

} // namespace

Symbol const Symbol::EMPTY;

Symbol::Symbol() : text_(Intern("")) {}
Symbol::Symbol(char const* text) : text_(Intern(text != nullptr ? text : "")) {}
Symbol::Symbol(std::string const& text) : text_(Intern(text)) {}
Symbol::Symbol(std::string_view text) : text_(Intern(text)) {}

Symbol& Symbol::operator=(char const* text) {
    text_ = Intern(text != nullptr ? text : "");
    return *this;
}

} // namespace du
