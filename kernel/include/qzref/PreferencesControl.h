// Changing the world's preferences, as the user's preference dialog would. Setting does not tell
// anyone; NotifyChanged tells the world's observers, once, as a message each.
#pragma once

#include "du/Symbol.h"

namespace qzref {

class PreferencesControl {
public:
    // A colour is stored as its word (dg::Color's layout). No-ops without a world.
    static void SetColorWord(du::Symbol const& key, unsigned int word);
    static void SetBool(du::Symbol const& key, bool value);
    static bool Remove(du::Symbol const& key);
    static void Clear();
    static void NotifyChanged();
};

} // namespace qzref
