// An observer of the world: preference changes, the world's end and the kernel's other world-wide
// notices, each delivered as a message and decoded here into the matching virtual.
//
// Message ids (the first value of each message): 0 world destroyed, 1 preferences changed,
// 2 structure loaded (bool), 3 user input disabled (bool), 4 scene added (scene), 5 scene removed
// (scene), 6 annotation set table changed (new, old), 7 language changed. This kernel sends
// 0, 1 and 7; 4 to 6 are reserved and, like unknown ids, ignored.
#pragma once

#include "dom/Observer.h"
#include "du/SmartPtr.h"

namespace qzk {

class Scene;
class AnnoSetTable;

class WorldObserver : public dom::Observer {
public:
    enum : unsigned char {
        WorldDestroyedId = 0,
        PreferencesChangedId = 1,
        StructureLoadedId = 2,
        SetDisabledUserInputId = 3,
        SceneAddedId = 4,
        SceneRemovedId = 5,
        AnnoSetTableChangedId = 6,
        LanguageChangedId = 7,
    };

    WorldObserver();
    ~WorldObserver() override;

    void EventHandler(dom::MessageReader& reader) override;
    virtual void OnWorldDestroyed();
    virtual void OnPreferencesChanged();
    virtual void OnStructureLoaded(bool loaded);
    virtual void OnSetDisabledUserInput(bool disabled);
    virtual void OnSceneAdded(du::SmartPtr<Scene> const& scene);
    virtual void OnSceneRemoved(du::SmartPtr<Scene> const& scene);
    virtual void OnAnnoSetTableChanged(du::SmartPtr<AnnoSetTable> const& newTable,
                                       du::SmartPtr<AnnoSetTable> const& oldTable);
    virtual void OnLanguageChanged();
};

} // namespace qzk
