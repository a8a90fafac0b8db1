// The orientation family's bodies, written once for every board scene.
//
// A board scene forwards its orientation operations here and supplies, as hooks it declares
// (and befriends this class):
//   static unsigned char ORIENTATION_CHANGED_EVENT(), ROTATION_CHANGED_EVENT()  its event ids
//   void _InvertLayersForFlip(du::SmartPtr<qzk::Operation> const& op)  the layer order's
//        inversion when a flip reaches the view (which order, and whether op gets its step,
//        differs per scene); called under the write lock
// SceneT derives from BaseScene and PCBSceneHelper.
//
// The early comparisons read the fields without a lock, so an unchanged value costs nothing and
// records nothing. The view that turns is the scene's first.
#pragma once

#include "dp/ReadWriteLock.h"
#include "du/SmartPtr.h"
#include "qzk/Operation.h"
#include "qzk/View.h"
#include "qzk/ecad/BaseScene.h"
#include "scene/BaseScene.h"

namespace qzkapp::ecad {

template <class SceneT> class OrientationOperations {
public:
    using Operation = du::SmartPtr<qzk::Operation>;

    static void SetFlip(SceneT& scene, bool flip, Operation const& op, bool applyToView) {
        if (flip == scene._GetFlip()) {
            return;
        }
        dp::WriteLocker lock(scene.GetRWLock());
        if (!scene._SetFlip(Self(scene), FirstView(scene), flip, op, applyToView)) {
            return;
        }
        // A flip that leaves the view alone leaves the layer order alone too.
        if (applyToView) {
            scene._InvertLayersForFlip(op);
        }
        scene._PostEvent(SceneT::ORIENTATION_CHANGED_EVENT(), flip ? 1u : 0u);
    }

    static void SetRotation(SceneT& scene, short rotation, Operation const& op, bool applyToView) {
        if (SceneT::ReduceRotation(rotation) == scene._GetRotation()) {
            return;
        }
        dp::WriteLocker lock(scene.GetRWLock());
        if (!scene._SetRotation(Self(scene), FirstView(scene), rotation, op, applyToView)) {
            return;
        }
        // Sign-extended: -90 travels as 0xFFFFFFA6.
        scene._PostEvent(SceneT::ROTATION_CHANGED_EVENT(),
                         static_cast<unsigned int>(static_cast<int>(scene._GetRotation())));
    }

    // Through the virtual table, so that a flip's undo runs the scene's own SetFlip.
    static void ToggleFlip(BaseScene& scene, Operation const& op) {
        scene.SetFlip(!scene.GetFlip(), op, true);
    }

    // The read and the write are two critical sections; the sum wraps in 16 bits.
    static void AddRotation(SceneT& scene, short delta, Operation const& op) {
        short target = 0;
        {
            dp::ReadLocker lock(scene.GetRWLock());
            target = static_cast<short>(scene._GetRotation() + delta);
        }
        static_cast<BaseScene&>(scene).SetRotation(target, op, true);
    }

private:
    static du::SmartPtr<BaseScene> Self(SceneT& scene) {
        return du::SmartPtr<BaseScene>(static_cast<BaseScene*>(&scene));
    }
    static du::SmartPtr<qzk::View> FirstView(SceneT const& scene) {
        auto const& kernel = scene.GetKernelScene();
        return kernel ? kernel->GetView(0) : du::SmartPtr<qzk::View>();
    }
};

} // namespace qzkapp::ecad
