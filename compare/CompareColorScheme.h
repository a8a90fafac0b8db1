// Which colour scheme a board compare fills its rows with: a number the user sets in the
// environment variable OSTREL_VIEW_X26_CVDEFAULT, read once for the whole process.
//
// The number counts only when the whole text is one decimal int (an optional sign and blanks
// ahead of it allowed, nothing at all behind it); anything else, an unset or empty variable
// included, is scheme 0. A text that reads -1 is not kept, and the variable is read anew at
// every call.
#pragma once

#include <string>

namespace qzkapp::ecad {

inline constexpr char const kCompareColorSchemeVariable[] = "OSTREL_VIEW_X26_CVDEFAULT";

// The scheme a text stands for.
int ParseCompareColorScheme(std::string const& text);

// The process's scheme, read from the environment at the first call. Unguarded: two scenes that
// race on the first read both compute the same value from the same environment.
int ReadCompareColorScheme();

// Forgets what was read, so that the next call reads the variable again. The scenes never call
// it; it is for whoever changed the variable on purpose (tests, a host's settings).
void ForgetCompareColorScheme();

} // namespace qzkapp::ecad
