#include "qzk/WorldObserver.h"

#include "dom/MessageReader.h"

namespace qzk {

WorldObserver::WorldObserver() = default;

WorldObserver::~WorldObserver() {
    DetachFromMessageLoop();
}

void WorldObserver::EventHandler(dom::MessageReader& reader) {
    unsigned char id = 0;
    if (!reader.GetUInt8Value(id)) {
        return;
    }
    bool flag = false;
    switch (id) {
    case WorldDestroyedId:
        OnWorldDestroyed();
        break;
    case PreferencesChangedId:
        OnPreferencesChanged();
        break;
    case StructureLoadedId:
        if (reader.GetBooleanValue(flag)) {
            OnStructureLoaded(flag);
        }
        break;
    case SetDisabledUserInputId:
        if (reader.GetBooleanValue(flag)) {
            OnSetDisabledUserInput(flag);
        }
        break;
    case LanguageChangedId:
        OnLanguageChanged();
        break;
    default:
        // The scene and annotation set table notices are not sent by this kernel.
        break;
    }
}

void WorldObserver::OnWorldDestroyed() {}
void WorldObserver::OnPreferencesChanged() {}
void WorldObserver::OnStructureLoaded(bool /*loaded*/) {}
void WorldObserver::OnSetDisabledUserInput(bool /*disabled*/) {}
void WorldObserver::OnSceneAdded(du::SmartPtr<Scene> const& /*scene*/) {}
void WorldObserver::OnSceneRemoved(du::SmartPtr<Scene> const& /*scene*/) {}
void WorldObserver::OnAnnoSetTableChanged(du::SmartPtr<AnnoSetTable> const& /*newTable*/,
                                          du::SmartPtr<AnnoSetTable> const& /*oldTable*/) {}
void WorldObserver::OnLanguageChanged() {}

} // namespace qzk
