// Interned string. Equal texts share one stored string, so comparing two symbols compares one
// pointer. The table is process-wide and thread-safe; a text leaves it when its last symbol goes,
// so a host that reads many files with many names or errors does not grow without bound.
#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace du {

namespace detail {
struct SymbolEntry {
    explicit SymbolEntry(std::string_view value) : text(value) {}
    std::string const text;
    std::atomic<std::size_t> uses{0};
};
} // namespace detail

class Symbol {
public:
    static Symbol const EMPTY;

    Symbol();
    Symbol(char const* text);
    Symbol(std::string const& text);
    explicit Symbol(std::string_view text);
    Symbol(Symbol const& other) noexcept : entry_(other.entry_) {
        entry_->uses.fetch_add(1, std::memory_order_relaxed);
    }
    Symbol& operator=(Symbol const& other) noexcept;
    Symbol& operator=(char const* text);
    ~Symbol();

    // Never null; "" for the empty symbol. Valid while this symbol or an equal one lives.
    char const* safe_c_str() const noexcept { return entry_->text.c_str(); }
    std::size_t length() const noexcept { return entry_->text.size(); }
    bool empty() const noexcept { return entry_->text.empty(); }
    std::string const& str() const noexcept { return entry_->text; }
    operator std::string() const { return entry_->text; }

    friend bool operator==(Symbol const& a, Symbol const& b) noexcept {
        return a.entry_ == b.entry_;
    }
    // Ordered by text, so that maps keyed by symbols list in a stable order.
    friend bool operator<(Symbol const& a, Symbol const& b) noexcept {
        return a.entry_->text < b.entry_->text;
    }

    // The number of distinct texts held now.
    static std::size_t TableSize();

private:
    detail::SymbolEntry* entry_;
};

} // namespace du

template <> struct std::hash<du::Symbol> {
    std::size_t operator()(du::Symbol const& s) const noexcept {
        return std::hash<void const*>()(s.safe_c_str());
    }
};
