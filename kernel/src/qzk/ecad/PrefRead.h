// Reads of the user's preferences for the colour records. Each read leaves the caller's value
// alone and returns false when there is no world or the key is not stored.
#pragma once

#include "du/SmartPtr.h"
#include "du/Symbol.h"

namespace qzk {
class Preferences;
}

namespace qzk::ecad::prefread {

bool ColorWord(du::Symbol const& key, unsigned int& word);
bool Flag(du::Symbol const& key, bool& value);

// The same against preferences the caller found once, for a caller that reads many keys; null
// preferences store nothing.
du::SmartPtr<qzk::Preferences> Prefs();
bool ColorWord(qzk::Preferences* prefs, du::Symbol const& key, unsigned int& word);
bool Flag(qzk::Preferences* prefs, du::Symbol const& key, bool& value);

} // namespace qzk::ecad::prefread
