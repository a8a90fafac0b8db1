#include "qzk/World.h"

#include "dom/ObserverProxy.h"
#include "du/CommonAllocatorImpl.h"
#include "qzk/Kernel.h"
#include "qzk/Observable.h"
#include "qzk/Preferences.h"
#include "qzk/WorldObserver.h"
#include "qzref/Journal.h"

#include <utility>

namespace qzk {
namespace {

std::mutex g_worldMutex;
du::SmartPtr<World> g_world;

bool const registered = ClassType::RegisterClass(classid::World, {classid::Object});

} // namespace

World::World() : preferences_(new Preferences()) {}

World::~World() = default;

du::SmartPtr<World> World::GetWorld() {
    std::lock_guard lock(g_worldMutex);
    return g_world;
}

void World::SetWorld(du::SmartPtr<World> const& world) {
    du::SmartPtr<World> old;
    {
        std::lock_guard lock(g_worldMutex);
        old = std::exchange(g_world, world);
    }
}

ClassType const& World::GetClassType() const {
    static ClassType const type(classid::World);
    return type;
}

du::SmartPtr<Preferences> World::GetPreferences() const {
    return preferences_;
}

bool World::RegisterObserver(du::SmartPtr<WorldObserver> const& observer, bool keepAlive) {
    qzref::Journal::Record(
        "World", "RegisterObserver",
        {observer ? std::string(observer->GetObjectClass()) : "null", qzref::Fmt(keepAlive)});
    if (!observer) {
        return false;
    }
    void* block = du::CommonAllocatorImpl::Allocate(sizeof(dom::ObserverProxy), nullptr);
    du::SmartPtr<dom::ObserverProxy> proxy(new (block) dom::ObserverProxy(*observer));
    if (!observers_.AddObserver(*observer, proxy)) {
        return false;
    }
    if (keepAlive) {
        std::lock_guard lock(keptMutex_);
        kept_[observer.Get()] = observer;
    }
    return true;
}

bool World::DeregisterObserver(du::SmartPtr<WorldObserver> const& observer) {
    qzref::Journal::Record("World", "DeregisterObserver",
                           {observer ? std::string(observer->GetObjectClass()) : "null"});
    if (!observer || !observers_.RemoveObserver(*observer)) {
        return false;
    }
    du::SmartPtr<WorldObserver> released;
    {
        std::lock_guard lock(keptMutex_);
        auto found = kept_.find(observer.Get());
        if (found != kept_.end()) {
            released = std::move(found->second);
            kept_.erase(found);
        }
    }
    UnmanageFromKernel(observer.Get());
    return true;
}

void World::PostNotice(unsigned char id) {
    observers_.PostEvent(Observable::SimpleEvent(id));
}

void World::NotifyPreferencesChanged() {
    PostNotice(WorldObserver::PreferencesChangedId);
}

void World::NotifyWorldDestroyed() {
    PostNotice(WorldObserver::WorldDestroyedId);
}

void World::NotifyLanguageChanged() {
    PostNotice(WorldObserver::LanguageChangedId);
}

std::size_t World::GetObserverCount() const {
    return observers_.GetObserverCount();
}

void World::_OnDestroy() {}

} // namespace qzk
