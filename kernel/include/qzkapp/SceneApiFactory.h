// The application layer's base of scene factories: a component hands the host a factory that
// makes kernel scenes, each with the component's API scene around it, and is told of each view
// the host creates for one of its scenes.
//
// The base makes nothing: every CreateScene answers null and ViewCreated does nothing. Each base
// body journals its call under the receiver "SceneApiFactory", so a test sees a component that
// falls through to the base (DoAdditionalCreateScene is one a component may leave alone).
#pragma once

#include "du/RefCounted.h"
#include "du/SmartPtr.h"

namespace qzk {
class AnnoSetTableEntry;
class AsyncEvent;
class Instance;
class Scene;
class View;
class ViewableSource;
class World;
} // namespace qzk

namespace qzkapp {

class SceneApiFactory : public du::RefCounted {
public:
    SceneApiFactory() = default;
    SceneApiFactory(SceneApiFactory const&) = default;
    SceneApiFactory(SceneApiFactory&&) = default;
    SceneApiFactory& operator=(SceneApiFactory const&) = default;
    SceneApiFactory& operator=(SceneApiFactory&&) = default;
    ~SceneApiFactory() override;

    // A scene of a saved comparison.
    virtual du::SmartPtr<qzk::Scene> CreateScene(du::SmartPtr<qzk::World> const& world,
                                                 du::SmartPtr<qzk::AnnoSetTableEntry> const& entry,
                                                 unsigned int kind);
    // A scene of two designs.
    virtual du::SmartPtr<qzk::Scene>
    CreateScene(du::SmartPtr<qzk::World> const& world,
                du::SmartPtr<qzk::Instance> const& firstInstance,
                du::SmartPtr<qzk::ViewableSource> const& firstSource,
                du::SmartPtr<qzk::Instance> const& secondInstance,
                du::SmartPtr<qzk::ViewableSource> const& secondSource, unsigned int kind);
    // A scene of one design. The flag is the host's; the base neither reads nor writes it.
    virtual du::SmartPtr<qzk::Scene> CreateScene(du::SmartPtr<qzk::World> const& world,
                                                 du::SmartPtr<qzk::Instance> const& instance,
                                                 du::SmartPtr<qzk::ViewableSource> const& source,
                                                 unsigned int kind, bool& flag);
    // A hook to add to a scene after it was made; event, if given, is the job to complete.
    // The base does not touch the event.
    virtual void DoAdditionalCreateScene(du::SmartPtr<qzk::Scene> const& scene,
                                         du::SmartPtr<qzk::Instance> const& instance,
                                         du::SmartPtr<qzk::ViewableSource> const& source,
                                         qzk::AsyncEvent* event);
    virtual void ViewCreated(du::SmartPtr<qzk::Scene> const& scene,
                             du::SmartPtr<qzk::View> const& view);
};

} // namespace qzkapp
