// The switches every board scene has, written once: whether logical connections show, and
// whether highlighting and isolating take only the visible objects.
//
// A board scene forwards its switch operations here and befriends this class. The kernel scene
// that takes the board's switches is the one IsolateOperations takes its sets through,
// _IsolateKernelScene() (null once the scene has ended). SceneT derives from BaseScene and
// PCBSceneHelper, and declares highlightOnlyVisible, isolateOnlyVisible and their two change
// events.
//
// Setting a switch to the value it has does nothing; a change reaches the kernel and posts, under
// the write lock. The toggle posts nothing: the kernel tells its own observers.
#pragma once

#include "dp/ReadWriteLock.h"
#include "scene/ChangeSource.h"

namespace qzkapp::ecad {

template <class SceneT> class BoardSwitches {
public:
    static void ToggleShowLogicalConnection(SceneT& scene) {
        dp::WriteLocker lock(scene.GetRWLock());
        scene.showLogicalConnections = !scene.showLogicalConnections;
        if (auto* board = scene._IsolateKernelScene()) {
            board->SetShowLogicalConnection(scene.showLogicalConnections);
        }
    }

    static bool GetHighlightOnlyVisible(SceneT const& scene) {
        dp::ReadLocker lock(scene.GetRWLock());
        return scene.highlightOnlyVisible;
    }

    static void SetHighlightOnlyVisible(SceneT& scene, bool value, ChangeSource source) {
        dp::WriteLocker lock(scene.GetRWLock());
        if (scene.highlightOnlyVisible == value) {
            return;
        }
        scene.highlightOnlyVisible = value;
        if (scene.kernelScene) {
            scene.kernelScene->SetHighlightOnlyVisible(value);
        }
        scene._PostEvent(SceneT::HIGHLIGHTONLYVISIBLE_CHANGED_EVENT(),
                         static_cast<unsigned int>(source), value);
    }

    static bool GetIsolateOnlyVisible(SceneT const& scene) {
        dp::ReadLocker lock(scene.GetRWLock());
        return scene.isolateOnlyVisible;
    }

    static void SetIsolateOnlyVisible(SceneT& scene, bool value, ChangeSource source) {
        dp::WriteLocker lock(scene.GetRWLock());
        if (scene.isolateOnlyVisible == value) {
            return;
        }
        scene.isolateOnlyVisible = value;
        if (auto* board = scene._IsolateKernelScene()) {
            board->SetIsolateOnlyVisible(value);
        }
        scene._PostEvent(SceneT::ISOLATEONLYVISIBLE_CHANGED_EVENT(),
                         static_cast<unsigned int>(source), value);
    }
};

} // namespace qzkapp::ecad
