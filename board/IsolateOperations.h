// The isolate family's bodies, written once for every board scene.
//
// A board scene forwards its isolate operations here and supplies what differs between the
// board scenes, as two hooks it declares (and befriends this class):
//   KernelScene* _IsolateKernelScene() const  the kernel scene that takes SetIsolated and
//                                             ClearIsolated (its class differs per scene); null
//                                             once the scene has ended
//   void _IsolateViewsDirty() const           the redraw request after a change
// SceneT derives from BaseScene and PCBSceneHelper.
//
// Every mutator holds the write lock throughout, records one step with the whole former set
// (also when nothing changes, and hands the operation to the undo list itself), changes the set,
// and pushes the whole set to the kernel only when something changed. Nothing is posted: the
// kernel tells its own observers.
#pragma once

#include "dp/ReadWriteLock.h"
#include "du/SmartPtr.h"
#include "qzk/Operation.h"
#include "qzk/Scene.h"
#include "qzk/SelectionItem.h"
#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/IsolateItem.h"
#include "qzk/ecad/ItemContainer.h"
#include "scene/BaseScene.h"
#include "scene/ItemsApearnceOperationStep.h"
#include "scene/StepRecording.h"

#include <vector>

namespace qzkapp::ecad {

template <class SceneT> class IsolateOperations {
public:
    using Items = std::vector<du::SmartPtr<qzk::SelectionItem>>;
    using Operation = du::SmartPtr<qzk::Operation>;
    using Container = qzk::ecad::ItemContainer<qzk::ecad::IsolateItem>;

    static void Isolate(SceneT& scene, Items const& items, Operation const& op) {
        dp::WriteLocker lock(scene.GetRWLock());
        Record(scene, op);
        uint64 const cleared = scene._ClearIsolated();
        uint64 const added = scene._AddToIsolated(items, KernelOf(scene));
        // Isolating the same list again still pushes it: the clear counts.
        if (cleared + added != 0) {
            Push(scene);
            scene._IsolateViewsDirty();
        }
    }

    static void AddToIsolated(SceneT& scene, Items const& items, Operation const& op) {
        dp::WriteLocker lock(scene.GetRWLock());
        Record(scene, op);
        if (scene._AddToIsolated(items, KernelOf(scene)) != 0) {
            Push(scene);
            scene._IsolateViewsDirty();
        }
    }

    static void Deisolate(SceneT& scene, Items const& items, Operation const& op) {
        dp::WriteLocker lock(scene.GetRWLock());
        Record(scene, op);
        if (scene.RemoveIsolates(items, KernelOf(scene)) != 0) {
            Push(scene);
            scene._IsolateViewsDirty();
        }
    }

    static void ClearAllIsolated(SceneT& scene, Operation const& op) {
        dp::WriteLocker lock(scene.GetRWLock());
        Record(scene, op);
        if (scene._ClearIsolated() != 0) {
            // Straight to the kernel's clear, not through Push.
            if (auto* kernel = scene._IsolateKernelScene()) {
                kernel->ClearIsolated();
            }
            scene._IsolateViewsDirty();
        }
    }

    static void GetItems(SceneT const& scene, Container& out) {
        dp::ReadLocker lock(scene.GetRWLock());
        out = scene.isolated;
    }

    // Records nothing: this is the way back for undo.
    static void SetItems(SceneT& scene, Container const& items, bool setViewsDirty) {
        dp::WriteLocker lock(scene.GetRWLock());
        uint64 const cleared = scene._ClearIsolated();
        if (cleared + items.size() == 0) {
            return;
        }
        scene.isolated = items;
        Push(scene);
        if (setViewsDirty) {
            scene._IsolateViewsDirty();
        }
    }

    // The whole set to the kernel; an empty set goes as a clear, not as an empty list.
    static void Push(SceneT const& scene) {
        auto* kernel = scene._IsolateKernelScene();
        if (kernel == nullptr) {
            return;
        }
        if (scene.isolated.empty()) {
            kernel->ClearIsolated();
            return;
        }
        std::vector<qzk::ecad::AppearanceItem> flat;
        scene.GetIsolatedAppearances(flat);
        kernel->SetIsolated(flat);
    }

private:
    // The set before the change, read through the scene's virtual GetItems under its read lock
    // (taken inside the write lock this thread holds).
    static void Record(SceneT& scene, Operation const& op) {
        if (!op) {
            return;
        }
        Container before;
        static_cast<BaseScene&>(scene).GetItems(before);
        AddStepAndRecord<ItemsApearnceOperationStep<Container>>(op, &scene, before);
    }

    static du::SmartPtr<qzk::Scene> KernelOf(SceneT const& scene) {
        return du::SmartPtr<qzk::Scene>(scene.GetKernelScene());
    }
};

} // namespace qzkapp::ecad
