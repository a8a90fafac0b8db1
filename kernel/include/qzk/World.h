// The world: the one place that holds the preferences and tells world observers of changes.
// Exists between qzref::Platform::Start and Stop; GetWorld() is null outside that span.
//
// Notices travel as messages through the kernel's message loop, one per registered observer;
// the world never calls an observer directly.
#pragma once

#include "dom/Observable.h"
#include "du/SmartPtr.h"
#include "qzk/Object.h"

#include <cstddef>
#include <map>
#include <mutex>

namespace qzref {
class Platform;
class PreferencesControl;
class WorldInspector;
} // namespace qzref

namespace qzk {

class Preferences;
class WorldObserver;

class World : public Object {
public:
    ~World() override;

    static du::SmartPtr<World> GetWorld();

    ClassType const& GetClassType() const override;

    du::SmartPtr<Preferences> GetPreferences() const;
    // keepAlive true: the world holds a counted reference to the observer until it is
    // deregistered or the world ends; false: the caller keeps it alive and deregisters it in
    // time. false for null or an observer already registered.
    bool RegisterObserver(du::SmartPtr<WorldObserver> const& observer, bool keepAlive);
    // Also lets the kernel release the observer.
    bool DeregisterObserver(du::SmartPtr<WorldObserver> const& observer);

    // Kernel side: notices to every registered observer.
    void NotifyPreferencesChanged();
    void NotifyWorldDestroyed();

protected:
    void _OnDestroy() override;

private:
    friend class qzref::WorldInspector;
    void NotifyLanguageChanged();
    std::size_t GetObserverCount() const;

    friend class qzref::Platform;
    World();
    static void SetWorld(du::SmartPtr<World> const& world);
    void PostNotice(unsigned char id);

    du::SmartPtr<Preferences> preferences_;
    dom::Observable observers_;
    mutable std::mutex keptMutex_;
    std::map<WorldObserver const*, du::SmartPtr<WorldObserver>> kept_;
};

} // namespace qzk
