// The layer's scene factory, the only thing a host receives through the entry point. A kind
// (the kernel class type id of the wanted scene) chooses the kernel scene to create and the API
// scene to wrap around it; the factory starts the API scene and hands back the kernel scene,
// through which the host reaches the API scene (GetApiScene). It keeps no record of what it
// made and may end before its scenes do.
//
// A kind that an overload does not know gives a null scene and has no side effect.
#pragma once

#include "component/ComponentExport.h"
#include "qzkapp/SceneApiFactory.h"

namespace qzkapp::ecad {

class QZECAD_EXPORT SceneApiFactory : public qzkapp::SceneApiFactory {
public:
    SceneApiFactory();
    SceneApiFactory(SceneApiFactory const&);
    SceneApiFactory(SceneApiFactory&&) noexcept;
    SceneApiFactory& operator=(SceneApiFactory const&);
    SceneApiFactory& operator=(SceneApiFactory&&) noexcept;
    ~SceneApiFactory() override;

    du::SmartPtr<qzk::Scene> CreateScene(du::SmartPtr<qzk::World> const& world,
                                         du::SmartPtr<qzk::AnnoSetTableEntry> const& entry,
                                         unsigned int kind) override;
    du::SmartPtr<qzk::Scene> CreateScene(du::SmartPtr<qzk::World> const& world,
                                         du::SmartPtr<qzk::Instance> const& firstInstance,
                                         du::SmartPtr<qzk::ViewableSource> const& firstSource,
                                         du::SmartPtr<qzk::Instance> const& secondInstance,
                                         du::SmartPtr<qzk::ViewableSource> const& secondSource,
                                         unsigned int kind) override;
    // flag is the host's: neither read nor written.
    du::SmartPtr<qzk::Scene> CreateScene(du::SmartPtr<qzk::World> const& world,
                                         du::SmartPtr<qzk::Instance> const& instance,
                                         du::SmartPtr<qzk::ViewableSource> const& source,
                                         unsigned int kind, bool& flag) override;
    // Tells the kernel scene, then its API scene, of a new view. Scenes of other kernels are
    // left alone.
    void ViewCreated(du::SmartPtr<qzk::Scene> const& scene,
                     du::SmartPtr<qzk::View> const& view) override;
};

} // namespace qzkapp::ecad
