#include "PrefRead.h"

#include "dg/Color.h"
#include "qzk/Preferences.h"
#include "qzk/World.h"

namespace qzk::ecad::prefread {

du::SmartPtr<qzk::Preferences> Prefs() {
    auto const world = qzk::World::GetWorld();
    return world ? world->GetPreferences() : du::SmartPtr<qzk::Preferences>();
}

bool ColorWord(du::Symbol const& key, unsigned int& word) {
    return ColorWord(Prefs().Get(), key, word);
}

bool Flag(du::Symbol const& key, bool& value) {
    return Flag(Prefs().Get(), key, value);
}

bool ColorWord(qzk::Preferences* prefs, du::Symbol const& key, unsigned int& word) {
    bool usedDefault = true;
    dg::Color color(word, true);
    if (prefs == nullptr || !prefs->GetIntUIAsColor(key, color, &usedDefault) || usedDefault) {
        return false;
    }
    word = color.GetAsHexUI();
    return true;
}

bool Flag(qzk::Preferences* prefs, du::Symbol const& key, bool& value) {
    bool usedDefault = true;
    bool read = value;
    if (prefs == nullptr || !prefs->GetBool(key, read, &usedDefault) || usedDefault) {
        return false;
    }
    value = read;
    return true;
}

} // namespace qzk::ecad::prefread
