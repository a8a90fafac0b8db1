// The one way a private forwarder (an observer or event the kernel keeps) reaches back into the
// scene that made it.
//
// The kernel may hold a forwarder past its scene and call it on any thread. So a forwarder never
// keeps a plain pointer: it keeps a SceneLink. The scene registers every link it makes in its
// SceneLinks and cuts them all, in one place, while something still holds it (the kernel holds
// the scene while it ends it). A call that gets through the link takes a counted reference to
// the scene under the link's guard and keeps it for the call's duration, so the scene cannot be
// freed underneath the call; the call may still find the scene ended (no kernel scene), which
// the handlers check for.
#pragma once

#include "du/SmartPtr.h"

#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace qzkapp::ecad {

// The state one link shares with the registry of its scene.
class SceneLinkState {
public:
    explicit SceneLinkState(du::RefCounted const* scene) : scene_(scene) {}

    // Takes a counted reference to the scene unless the link is cut or the scene is already
    // going (its count has reached zero and its destructor may be running). True when taken;
    // the caller then owns one reference, added with holder as its holder.
    bool Acquire(void* holder) const {
        std::lock_guard lock(mutex_);
        if (scene_ == nullptr) {
            return false;
        }
        if (scene_->AddReference(holder) == 1) {
            // Nobody held it: it is being freed. Give the count back without the release
            // protocol, which would free it a second time.
            scene_->RemoveReference(holder);
            return false;
        }
        return true;
    }

    void Cut() {
        std::lock_guard lock(mutex_);
        scene_ = nullptr;
    }

private:
    mutable std::mutex mutex_;
    du::RefCounted const* scene_;
};

// Every link one scene has made; the scene cuts them all when it ends.
class SceneLinks {
public:
    SceneLinks() = default;
    SceneLinks(SceneLinks const&) = delete;
    SceneLinks& operator=(SceneLinks const&) = delete;
    ~SceneLinks() { CutAll(); }

    std::shared_ptr<SceneLinkState> Make(du::RefCounted const* scene) {
        auto state = std::make_shared<SceneLinkState>(scene);
        std::lock_guard lock(mutex_);
        links_.push_back(state);
        return state;
    }

    // Idempotent; a link made after this call is not cut by it.
    void CutAll() {
        std::vector<std::shared_ptr<SceneLinkState>> links;
        {
            std::lock_guard lock(mutex_);
            links.swap(links_);
        }
        for (auto const& link : links) {
            link->Cut();
        }
    }

private:
    std::mutex mutex_;
    std::vector<std::shared_ptr<SceneLinkState>> links_;
};

// A forwarder's tie to its scene of type T (a BaseScene or a class derived from it).
template <class T> class SceneLink {
public:
    // Registers the link with the scene, which cuts it when it ends.
    explicit SceneLink(T* scene) : scene_(scene), state_(scene->_GetLinks().Make(scene)) {}

    // Calls fn(T&) while holding the scene, when the link is up; false when it is cut.
    template <class F> bool Call(F&& fn) const {
        if (!state_->Acquire(const_cast<SceneLink*>(this))) {
            return false;
        }
        // Adopts the reference Acquire took; dropping it may free the scene on this thread.
        du::SmartPtr<T> held(scene_);
        ReleaseAcquired();
        std::forward<F>(fn)(*held);
        return true;
    }

    // Cuts this link alone, for a forwarder whose own source ends first.
    void Cut() { state_->Cut(); }

private:
    void ReleaseAcquired() const {
        static_cast<du::RefCounted const*>(scene_)->RemoveReference(const_cast<SceneLink*>(this));
    }

    T* scene_;
    std::shared_ptr<SceneLinkState> state_;
};

} // namespace qzkapp::ecad
