#include "du/AssembleArgs.h"

#include <cctype>
#include <cstdio>

namespace du {

AssembleArgs::AssembleArgs(char const* format) : format_(format != nullptr ? format : "") {}

char AssembleArgs::NextConversion() {
    while (cursor_ < format_.size()) {
        if (format_[cursor_] != '%') {
            ++cursor_;
            continue;
        }
        ++cursor_;
        while (cursor_ < format_.size() &&
               (std::isdigit(static_cast<unsigned char>(format_[cursor_])) ||
                format_[cursor_] == '.' || format_[cursor_] == 'l' || format_[cursor_] == '-')) {
            ++cursor_;
        }
        if (cursor_ >= format_.size()) {
            break;
        }
        char const conversion = format_[cursor_++];
        if (conversion != '%') {
            return conversion;
        }
    }
    return '\0';
}

AssembleArgs& AssembleArgs::Add(std::string const& text) {
    NextConversion();
    args_.push_back(text);
    return *this;
}

AssembleArgs& AssembleArgs::Add(char const* text) {
    return Add(std::string(text != nullptr ? text : ""));
}

AssembleArgs& AssembleArgs::Add(long long value) {
    char buffer[32];
    if (NextConversion() == 'x') {
        std::snprintf(buffer, sizeof buffer, "%llx", static_cast<unsigned long long>(value));
    } else {
        std::snprintf(buffer, sizeof buffer, "%lld", value);
    }
    args_.emplace_back(buffer);
    return *this;
}

AssembleArgs& AssembleArgs::Add(unsigned long long value) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, NextConversion() == 'x' ? "%llx" : "%llu", value);
    args_.emplace_back(buffer);
    return *this;
}

AssembleArgs& AssembleArgs::Add(double value) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, NextConversion() == 'f' ? "%f" : "%g", value);
    args_.emplace_back(buffer);
    return *this;
}

std::string AssembleArgs::Substitute(std::string const& text) const {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && i + 1 < text.size() && text[i + 1] >= '1' && text[i + 1] <= '9') {
            std::size_t const index = static_cast<std::size_t>(text[i + 1] - '1');
            if (index < args_.size()) {
                out += args_[index];
                ++i;
                continue;
            }
        }
        out += text[i];
    }
    return out;
}

} // namespace du
