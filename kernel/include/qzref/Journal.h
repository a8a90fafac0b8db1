// The journal: every call that reaches a kernel object from outside the kernel, in order, one
// line of text per call. Tests assert on it; the host program prints it.
//
// Line format (docs/journal.md has the full grammar):
//     <receiver>.<Operation>(<arg>, <arg>, ...)
// The receiver is the object's name (qzk::Object::GetObjectName, or a fixed name such as
// "World", "Kernel", "Loader" for singletons). Arguments are formatted by the Fmt overloads:
// bool as true/false, integers in decimal, colour words as 0x%08X, texts in double quotes,
// lists as [a b c], items by the name of their design object.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace qzref {

class Journal {
public:
    // Appends "<receiver>.<operation>(<args joined by ", ">)".
    static void Record(std::string_view receiver, std::string_view operation,
                       std::initializer_list<std::string> args = {});
    static void Append(std::string line);

    static std::vector<std::string> Lines();
    // The lines appended since a mark taken with Size().
    static std::vector<std::string> Since(std::size_t mark);
    static std::size_t Size();
    static void Clear();

    // Benchmarks switch recording off to measure the bare mechanism.
    static void SetEnabled(bool enabled);
    static bool IsEnabled();
};

// A colour word, formatted in hex.
struct ColorWord {
    unsigned int word;
};

std::string Fmt(bool value);
std::string Fmt(int value);
std::string Fmt(unsigned int value);
std::string Fmt(short value);
std::string Fmt(unsigned short value);
std::string Fmt(unsigned char value);
std::string Fmt(long value);
std::string Fmt(unsigned long value);
std::string Fmt(double value);
std::string Fmt(ColorWord value);
std::string Fmt(char const* text);
std::string Fmt(std::string const& text);
std::string Fmt(std::wstring const& text);

template <class T> std::string Fmt(std::vector<T> const& values) {
    std::string out = "[";
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i != 0) {
            out += ' ';
        }
        out += Fmt(values[i]);
    }
    out += ']';
    return out;
}

} // namespace qzref
