#include "du/StringConversion.h"

#include <string_view>

namespace du {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsContinuation(unsigned char byte) noexcept {
    return (byte & 0xC0u) == 0x80u;
}

// Decodes one code point at text[i] and advances i past what it used; a malformed sequence
// consumes one byte and yields U+FFFD, so decoding resynchronises at the next lead byte.
char32_t Decode(std::string_view text, std::size_t& i) noexcept {
    auto const lead = static_cast<unsigned char>(text[i]);
    if (lead < 0x80u) {
        ++i;
        return lead;
    }
    std::size_t length = 0;
    char32_t value = 0;
    char32_t minimum = 0;
    if ((lead & 0xE0u) == 0xC0u) {
        length = 2;
        value = lead & 0x1Fu;
        minimum = 0x80;
    } else if ((lead & 0xF0u) == 0xE0u) {
        length = 3;
        value = lead & 0x0Fu;
        minimum = 0x800;
    } else if ((lead & 0xF8u) == 0xF0u) {
        length = 4;
        value = lead & 0x07u;
        minimum = 0x10000;
    } else {
        ++i;
        return kReplacement;
    }
    if (i + length > text.size()) {
        ++i;
        return kReplacement;
    }
    for (std::size_t k = 1; k < length; ++k) {
        auto const byte = static_cast<unsigned char>(text[i + k]);
        if (!IsContinuation(byte)) {
            ++i;
            return kReplacement;
        }
        value = (value << 6) | (byte & 0x3Fu);
    }
    if (value < minimum || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) {
        ++i;
        return kReplacement;
    }
    i += length;
    return value;
}

void AppendWide(std::wstring& out, char32_t value) {
    // A narrow wchar_t takes what lies past the basic plane as a surrogate pair.
    if (sizeof(wchar_t) < 4 && value >= 0x10000) {
        value -= 0x10000;
        out += static_cast<wchar_t>(0xD800 + (value >> 10));
        out += static_cast<wchar_t>(0xDC00 + (value & 0x3FF));
        return;
    }
    out += static_cast<wchar_t>(value);
}

void AppendUtf8(std::string& out, char32_t value) {
    if (value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) {
        value = kReplacement;
    }
    if (value < 0x80) {
        out += static_cast<char>(value);
    } else if (value < 0x800) {
        out += static_cast<char>(0xC0 | (value >> 6));
        out += static_cast<char>(0x80 | (value & 0x3F));
    } else if (value < 0x10000) {
        out += static_cast<char>(0xE0 | (value >> 12));
        out += static_cast<char>(0x80 | ((value >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (value & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (value >> 18));
        out += static_cast<char>(0x80 | ((value >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((value >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (value & 0x3F));
    }
}

std::wstring ToWide(std::string_view utf8) {
    std::wstring out;
    out.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        AppendWide(out, Decode(utf8, i));
    }
    return out;
}

std::string ToUtf8(std::wstring_view wide) {
    std::string out;
    out.reserve(wide.size());
    for (std::size_t i = 0; i < wide.size(); ++i) {
        auto value = static_cast<char32_t>(wide[i]);
        if constexpr (sizeof(wchar_t) < 4) {
            value &= 0xFFFF;
            if (value >= 0xD800 && value <= 0xDBFF && i + 1 < wide.size()) {
                auto const low = static_cast<char32_t>(wide[i + 1]) & 0xFFFF;
                if (low >= 0xDC00 && low <= 0xDFFF) {
                    value = 0x10000 + ((value - 0xD800) << 10) + (low - 0xDC00);
                    ++i;
                }
            }
        }
        AppendUtf8(out, value);
    }
    return out;
}

} // namespace

std::wstring Utf8ToWideStr(std::string const& utf8) {
    return ToWide(utf8);
}

std::wstring Utf8ToWideStr(char const* utf8) {
    return utf8 != nullptr ? ToWide(utf8) : std::wstring();
}

std::string WideStrToUtf8(std::wstring const& wide) {
    return ToUtf8(wide);
}

std::string WideStrToUtf8(wchar_t const* wide) {
    return wide != nullptr ? ToUtf8(wide) : std::string();
}

namespace {
std::wstring& ThreadBuffer() {
    thread_local std::wstring buffer;
    return buffer;
}
} // namespace

wchar_t const* Utf8ToWideBuffered(char const* utf8) {
    ThreadBuffer() = Utf8ToWideStr(utf8);
    return ThreadBuffer().c_str();
}

wchar_t const* Utf8ToWideBuffered(std::string const& utf8) {
    ThreadBuffer() = ToWide(utf8);
    return ThreadBuffer().c_str();
}

} // namespace du
