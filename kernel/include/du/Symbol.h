// Interned string. Equal texts share one stored string, so comparing two symbols compares one
// pointer; the table is process-wide, thread-safe and never shrinks.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace du {

class Symbol {
public:
    static Symbol const EMPTY;

    Symbol();
    Symbol(char const* text);
    Symbol(std::string const& text);
    explicit Symbol(std::string_view text);

    Symbol& operator=(char const* text);

    // Never null; "" for the empty symbol.
    char const* safe_c_str() const noexcept { return text_->c_str(); }
    std::size_t length() const noexcept { return text_->size(); }
    bool empty() const noexcept { return text_->empty(); }
    std::string const& str() const noexcept { return *text_; }
    operator std::string() const { return *text_; }

    friend bool operator==(Symbol const& a, Symbol const& b) noexcept { return a.text_ == b.text_; }
    // Ordered by text, so that maps keyed by symbols list in a stable order.
    friend bool operator<(Symbol const& a, Symbol const& b) noexcept { return *a.text_ < *b.text_; }

private:
    std::string const* text_;
};

} // namespace du

template <> struct std::hash<du::Symbol> {
    std::size_t operator()(du::Symbol const& s) const noexcept {
        return std::hash<void const*>()(s.safe_c_str());
    }
};
