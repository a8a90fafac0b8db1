#include "PrefRead.h"

#include "dg/Color.h"
#include "qzk/Preferences.h"
#include "qzk/World.h"

namespace qzk::ecad::prefread {
namespace {

du::SmartPtr<qzk::Preferences> Prefs() {
    auto const world = qzk::World::GetWorld();
    return world ? world->GetPreferences() : du::SmartPtr<qzk::Preferences>();
}

} // namespace

bool ColorWord(du::Symbol const& key, unsigned int& word) {
    auto const prefs = Prefs();
    bool usedDefault = true;
    dg::Color color(word, true);
    if (!prefs || !prefs->GetIntUIAsColor(key, color, &usedDefault) || usedDefault) {
        return false;
    }
    word = color.GetAsHexUI();
    return true;
}

bool Flag(du::Symbol const& key, bool& value) {
    auto const prefs = Prefs();
    bool usedDefault = true;
    bool read = value;
    if (!prefs || !prefs->GetBool(key, read, &usedDefault) || usedDefault) {
        return false;
    }
    value = read;
    return true;
}

} // namespace qzk::ecad::prefread
