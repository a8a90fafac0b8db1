// UTF-8 and wide strings. wchar_t holds UTF-32 where it is 32 bits wide and UTF-16 where it is
// 16 bits wide. Malformed input (a bad UTF-8 sequence, an overlong form, a lone surrogate)
// becomes U+FFFD; conversions never throw for bad data.
#pragma once

#include <string>

namespace du {

std::wstring Utf8ToWideStr(std::string const& utf8);
std::wstring Utf8ToWideStr(char const* utf8);
std::string WideStrToUtf8(std::wstring const& wide);
std::string WideStrToUtf8(wchar_t const* wide);
// The conversion in a buffer of the calling thread: the pointer stays valid until that thread
// calls Utf8ToWideBuffered again. Null input gives an empty string.
wchar_t const* Utf8ToWideBuffered(char const* utf8);
wchar_t const* Utf8ToWideBuffered(std::string const& utf8);

} // namespace du
