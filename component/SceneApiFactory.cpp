#include "component/SceneApiFactory.h"

#include "board/PCBScene.h"
#include "qzk/ClassType.h"
#include "qzk/Scene.h"
#include "qzk/View.h"
#include "qzk/ecad/BaseScene.h"
#include "qzk/ecad/PCBScene.h"
#include "qzk/ecad/SchematicScene.h"
#include "scene/BaseScene.h"
#include "schematic/SchematicScene.h"

namespace qzkapp::ecad {
namespace {

// Wraps the API scene around a kernel scene that Create made, starts it, and hands back the
// kernel scene. Bound is the kernel type the API scene's constructor takes. From here on only
// the kernel scene's reference keeps the API scene alive; should the constructor or Init throw,
// the local references go and the pool gets the memory back.
template <class Api, class Bound, class Kernel>
du::SmartPtr<qzk::Scene> Bind(du::SmartPtr<Kernel> const& kernelScene) {
    du::SmartPtr<Api> apiScene = du::MakeCounted<Api>(du::SmartPtr<Bound>(kernelScene));
    try {
        apiScene->Init();
    } catch (...) {
        // Constructed, the two scenes hold each other, and Init may have left observers with the
        // kernel; nobody but this call knows the pair, so it ends it as the kernel ends a scene.
        kernelScene->Destroy();
        throw;
    }
    return du::SmartPtr<qzk::Scene>(kernelScene);
}

// One design: Create(world, instance, source, out).
template <class Kernel, class Api, class Bound = Kernel>
du::SmartPtr<qzk::Scene> MakeSingle(du::SmartPtr<qzk::World> const& world,
                                    du::SmartPtr<qzk::Instance> const& instance,
                                    du::SmartPtr<qzk::ViewableSource> const& source) {
    du::SmartPtr<Kernel> kernelScene;
    Kernel::Create(world, instance, source, kernelScene);
    return Bind<Api, Bound>(kernelScene);
}

} // namespace

SceneApiFactory::SceneApiFactory() = default;
SceneApiFactory::SceneApiFactory(SceneApiFactory const&) = default;
SceneApiFactory::SceneApiFactory(SceneApiFactory&&) noexcept = default;
SceneApiFactory& SceneApiFactory::operator=(SceneApiFactory const&) = default;
SceneApiFactory& SceneApiFactory::operator=(SceneApiFactory&&) noexcept = default;
SceneApiFactory::~SceneApiFactory() = default;

du::SmartPtr<qzk::Scene>
SceneApiFactory::CreateScene(du::SmartPtr<qzk::World> const& /*world*/,
                             du::SmartPtr<qzk::AnnoSetTableEntry> const& /*entry*/,
                             unsigned int /*kind*/) {
    return nullptr;
}

du::SmartPtr<qzk::Scene> SceneApiFactory::CreateScene(
    du::SmartPtr<qzk::World> const& /*world*/, du::SmartPtr<qzk::Instance> const& /*firstInstance*/,
    du::SmartPtr<qzk::ViewableSource> const& /*firstSource*/,
    du::SmartPtr<qzk::Instance> const& /*secondInstance*/,
    du::SmartPtr<qzk::ViewableSource> const& /*secondSource*/, unsigned int /*kind*/) {
    return nullptr;
}

du::SmartPtr<qzk::Scene> SceneApiFactory::CreateScene(
    du::SmartPtr<qzk::World> const& world, du::SmartPtr<qzk::Instance> const& instance,
    du::SmartPtr<qzk::ViewableSource> const& source, unsigned int kind, bool& /*flag*/) {
    switch (kind) {
    case qzk::classid::EcadPCBScene:
        return MakeSingle<qzk::ecad::PCBScene, PCBScene, qzk::ecad::Scene>(world, instance, source);
    // Two names of one scene.
    case qzk::classid::EcadSchematicScene:
    case qzk::classid::EcadSchematicSceneAlt:
        return MakeSingle<qzk::ecad::SchematicScene, SchematicScene, qzk::ecad::Scene>(
            world, instance, source);
    default:
        return nullptr;
    }
}

void SceneApiFactory::ViewCreated(du::SmartPtr<qzk::Scene> const& scene,
                                  du::SmartPtr<qzk::View> const& view) {
    auto* kernelScene = dynamic_cast<qzk::ecad::BaseScene*>(scene.Get());
    if (kernelScene == nullptr) {
        return;
    }
    kernelScene->OnViewCreated();
    // Every kernel scene of this kind is bound to an API scene from its construction on.
    du::SmartPtr<BaseScene> apiScene(kernelScene->GetApiScene());
    apiScene->ViewCreated(view);
}

} // namespace qzkapp::ecad
