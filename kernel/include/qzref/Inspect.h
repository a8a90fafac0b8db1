// The one door to what tests and the host read back from kernel objects and do to them beyond
// the platform interface: qzref::Inspect(object) gives the object's inspector, whose members
// carry the names the readers and controls have always had, e.g.
//     qzref::Inspect(*scene).GetLook(item, 1, look)
// The most derived overload wins, so an inspector of a derived scene also has its base's members.
#pragma once

#include "du/SmartPtr.h"
#include "qzref/AnnoSetInspector.h"
#include "qzref/AnnoSetTableEntryInspector.h"
#include "qzref/AnnoSetTableInspector.h"
#include "qzref/BaseSceneInspector.h"
#include "qzref/BoardSceneInspector.h"
#include "qzref/CompareSceneInspector.h"
#include "qzref/ManagedObjectInspector.h"
#include "qzref/ObservableInspector.h"
#include "qzref/ObserverInspector.h"
#include "qzref/OperationInspector.h"
#include "qzref/OverlayInspector.h"
#include "qzref/PCBSchCompareSceneInspector.h"
#include "qzref/QzkAppInspector.h"
#include "qzref/ReadWriteLockInspector.h"
#include "qzref/SceneInspector.h"
#include "qzref/SceneManagerInspector.h"
#include "qzref/SchematicCompareSceneInspector.h"
#include "qzref/SchematicSceneInspector.h"
#include "qzref/SelectionManagerInspector.h"
#include "qzref/ViewInspector.h"
#include "qzref/WorldInspector.h"

#include <type_traits>

namespace qzref {

// The kernel's building blocks.
inline ObservableInspector Inspect(qzk::Observable& observable) {
    return ObservableInspector(observable);
}
inline ObserverInspector Inspect(qzk::Observer& observer) {
    return ObserverInspector(observer);
}
inline ManagedObjectInspector Inspect(dom::ManagedObject& keeper) {
    return ManagedObjectInspector(keeper);
}
inline OperationInspector Inspect(qzk::Operation& operation) {
    return OperationInspector(operation);
}
inline SelectionManagerInspector Inspect(qzk::SelectionManager& manager) {
    return SelectionManagerInspector(manager);
}
inline WorldInspector Inspect(qzk::World& world) {
    return WorldInspector(world);
}
inline ReadWriteLockInspector Inspect(dp::ReadWriteLock& lock) {
    return ReadWriteLockInspector(lock);
}

inline BaseSceneInspector Inspect(qzk::ecad::BaseScene& scene) {
    return BaseSceneInspector(scene);
}
inline SceneInspector Inspect(qzk::ecad::Scene& scene) {
    return SceneInspector(scene);
}
inline CompareSceneInspector Inspect(qzk::ecad::CompareScene& scene) {
    return CompareSceneInspector(scene);
}
template <class Base, class ColorSet>
BoardSceneInspector<Base, ColorSet> Inspect(qzk::ecad::BoardScene<Base, ColorSet>& scene) {
    return BoardSceneInspector<Base, ColorSet>(scene);
}
inline SchematicSceneInspector Inspect(qzk::ecad::SchematicScene& scene) {
    return SchematicSceneInspector(scene);
}
inline SchematicCompareSceneInspector Inspect(qzk::ecad::SchematicCompareScene& scene) {
    return SchematicCompareSceneInspector(scene);
}
inline OverlayInspector Inspect(qzk::ecad::Overlay& overlay) {
    return OverlayInspector(overlay);
}
inline PCBSchCompareSceneInspector Inspect(qzk::ecad::PCBSchCompareScene& scene) {
    return PCBSchCompareSceneInspector(scene);
}

inline SceneManagerInspector Inspect(qzkapp::SceneManager& manager) {
    return SceneManagerInspector(manager);
}
inline QzkAppInspector Inspect(qzkapp::QzkApp& app) {
    return QzkAppInspector(app);
}

inline AnnoSetInspector Inspect(qzk::AnnoSet& set) {
    return AnnoSetInspector(set);
}
inline AnnotationInspector Inspect(qzk::Annotation& annotation) {
    return AnnotationInspector(annotation);
}
inline ViewInspector Inspect(qzk::View& view) {
    return ViewInspector(view);
}
inline View2DInspector Inspect(qzk::View2D& view) {
    return View2DInspector(view);
}

inline AnnoSetTableInspector Inspect(qzk::AnnoSetTable& table) {
    return AnnoSetTableInspector(table);
}
inline AnnoSetTableEntryInspector Inspect(qzk::AnnoSetTableEntry& entry) {
    return AnnoSetTableEntryInspector(entry);
}

// A kernel object seen as const by its caller (the renderer, say) is inspected all the same: the
// kernel's objects are shared, const only in one caller's view.
template <class T>
requires std::is_const_v<std::remove_reference_t<T>>
auto Inspect(T&& object)
    -> decltype(Inspect(const_cast<std::remove_const_t<std::remove_reference_t<T>>&>(object))) {
    return Inspect(const_cast<std::remove_const_t<std::remove_reference_t<T>>&>(object));
}

// The same through a counted reference; the object must be there.
template <class T> auto Inspect(du::SmartPtr<T> const& object) -> decltype(Inspect(*object)) {
    return Inspect(*object);
}

} // namespace qzref
