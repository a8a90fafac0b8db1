#include "qzref/PreferencesControl.h"

#include "qzk/Preferences.h"
#include "qzk/World.h"

namespace qzref {
namespace {

du::SmartPtr<qzk::Preferences> CurrentPreferences() {
    du::SmartPtr<qzk::World> world = qzk::World::GetWorld();
    return world ? world->GetPreferences() : nullptr;
}

} // namespace

void PreferencesControl::SetColorWord(du::Symbol const& key, unsigned int word) {
    if (auto preferences = CurrentPreferences()) {
        preferences->Set(key, word);
    }
}

void PreferencesControl::SetBool(du::Symbol const& key, bool value) {
    if (auto preferences = CurrentPreferences()) {
        preferences->Set(key, value);
    }
}

bool PreferencesControl::Remove(du::Symbol const& key) {
    auto preferences = CurrentPreferences();
    return preferences && preferences->Remove(key);
}

void PreferencesControl::Clear() {
    if (auto preferences = CurrentPreferences()) {
        preferences->Clear();
    }
}

void PreferencesControl::NotifyChanged() {
    if (du::SmartPtr<qzk::World> world = qzk::World::GetWorld()) {
        world->NotifyPreferencesChanged();
    }
}

} // namespace qzref
