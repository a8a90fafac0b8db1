#include "component/SceneApiFactory.h"

#include "qzk/Scene.h"
#include "qzk/View.h"
#include "qzk/ecad/BaseScene.h"
#include "scene/BaseScene.h"

namespace qzkapp::ecad {

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

du::SmartPtr<qzk::Scene>
SceneApiFactory::CreateScene(du::SmartPtr<qzk::World> const& /*world*/,
                             du::SmartPtr<qzk::Instance> const& /*firstInstance*/,
                             du::SmartPtr<qzk::ViewableSource> const& /*firstSource*/,
                             du::SmartPtr<qzk::Instance> const& /*secondInstance*/,
                             du::SmartPtr<qzk::ViewableSource> const& /*secondSource*/,
                             unsigned int /*kind*/) {
    return nullptr;
}

du::SmartPtr<qzk::Scene> SceneApiFactory::CreateScene(
    du::SmartPtr<qzk::World> const& /*world*/, du::SmartPtr<qzk::Instance> const& /*instance*/,
    du::SmartPtr<qzk::ViewableSource> const& /*source*/, unsigned int /*kind*/, bool& /*flag*/) {
    return nullptr;
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
