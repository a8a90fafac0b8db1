#include "component/SceneApiFactory.h"

#include "board/PCBScene.h"
#include "compare/PCBCompareScene.h"
#include "compare/PCBOvlCompareScene.h"
#include "compare/PCBSchCompareScene.h"
#include "compare/SchematicCompareScene.h"
#include "du/FileSpec.h"
#include "qzk/ClassType.h"
#include "qzk/EcadDesign.h"
#include "qzk/Scene.h"
#include "qzk/View.h"
#include "qzk/ViewableSource.h"
#include "qzk/ecad/BaseScene.h"
#include "qzk/ecad/PCBCompareScene.h"
#include "qzk/ecad/PCBOvlCompareScene.h"
#include "qzk/ecad/PCBScene.h"
#include "qzk/ecad/PCBSchCompareScene.h"
#include "qzk/ecad/SchematicCompareScene.h"
#include "qzk/ecad/SchematicScene.h"
#include "scene/BaseScene.h"
#include "schematic/SchematicScene.h"

#include <cctype>
#include <string>

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

// A saved comparison: Create(world, entry, out).
template <class Kernel, class Api>
du::SmartPtr<qzk::Scene> MakeFromEntry(du::SmartPtr<qzk::World> const& world,
                                       du::SmartPtr<qzk::AnnoSetTableEntry> const& entry) {
    du::SmartPtr<Kernel> kernelScene;
    Kernel::Create(world, entry, kernelScene);
    return Bind<Api, Kernel>(kernelScene);
}

// Two designs: Create(world, first instance, first source, second instance, second source, out).
template <class Kernel, class Api>
du::SmartPtr<qzk::Scene> MakePair(du::SmartPtr<qzk::World> const& world,
                                  du::SmartPtr<qzk::Instance> const& firstInstance,
                                  du::SmartPtr<qzk::ViewableSource> const& firstSource,
                                  du::SmartPtr<qzk::Instance> const& secondInstance,
                                  du::SmartPtr<qzk::ViewableSource> const& secondSource) {
    du::SmartPtr<Kernel> kernelScene;
    Kernel::Create(world, firstInstance, firstSource, secondInstance, secondSource, kernelScene);
    return Bind<Api, Kernel>(kernelScene);
}

// Deliberately a substring search in the kernel's list, not a match of its entries: a fragment
// of an entry passes, and so does a file with no extension at all.
bool IsGerberSource(du::SmartPtr<qzk::ViewableSource> const& source) {
    du::FileSpec const file(source->GetFileSource().str());
    std::string extension;
    (void)file.GetFileExtension(&extension);
    for (char& c : extension) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return qzk::EcadDesign::GetGerberExts().find(extension) != std::string::npos;
}

} // namespace

SceneApiFactory::SceneApiFactory() = default;
SceneApiFactory::SceneApiFactory(SceneApiFactory const&) = default;
SceneApiFactory::SceneApiFactory(SceneApiFactory&&) noexcept = default;
SceneApiFactory& SceneApiFactory::operator=(SceneApiFactory const&) = default;
SceneApiFactory& SceneApiFactory::operator=(SceneApiFactory&&) noexcept = default;
SceneApiFactory::~SceneApiFactory() = default;

du::SmartPtr<qzk::Scene>
SceneApiFactory::CreateScene(du::SmartPtr<qzk::World> const& world,
                             du::SmartPtr<qzk::AnnoSetTableEntry> const& entry, unsigned int kind) {
    switch (kind) {
    case qzk::classid::EcadPCBCompareScene:
        return MakeFromEntry<qzk::ecad::PCBCompareScene, PCBCompareScene>(world, entry);
    case qzk::classid::EcadPCBSchCompareScene:
        return MakeFromEntry<qzk::ecad::PCBSchCompareScene, PCBSchCompareScene>(world, entry);
    case qzk::classid::EcadSchematicCompareScene:
        return MakeFromEntry<qzk::ecad::SchematicCompareScene, SchematicCompareScene>(world, entry);
    case qzk::classid::EcadPCBOvlCompareScene:
        return MakeFromEntry<qzk::ecad::PCBOvlCompareScene, PCBOvlCompareScene>(world, entry);
    default:
        return nullptr;
    }
}

du::SmartPtr<qzk::Scene> SceneApiFactory::CreateScene(
    du::SmartPtr<qzk::World> const& world, du::SmartPtr<qzk::Instance> const& firstInstance,
    du::SmartPtr<qzk::ViewableSource> const& firstSource,
    du::SmartPtr<qzk::Instance> const& secondInstance,
    du::SmartPtr<qzk::ViewableSource> const& secondSource, unsigned int kind) {
    switch (kind) {
    case qzk::classid::EcadPCBCompareScene:
        // A Gerber source on either side makes an overlay compare, from the same arguments in
        // the same order; the second source is looked at only when the first doesn't pass.
        if (IsGerberSource(firstSource) || IsGerberSource(secondSource)) {
            return MakePair<qzk::ecad::PCBOvlCompareScene, PCBOvlCompareScene>(
                world, firstInstance, firstSource, secondInstance, secondSource);
        }
        return MakePair<qzk::ecad::PCBCompareScene, PCBCompareScene>(
            world, firstInstance, firstSource, secondInstance, secondSource);
    case qzk::classid::EcadPCBSchCompareScene:
        return MakePair<qzk::ecad::PCBSchCompareScene, PCBSchCompareScene>(
            world, firstInstance, firstSource, secondInstance, secondSource);
    case qzk::classid::EcadSchematicCompareScene:
        return MakePair<qzk::ecad::SchematicCompareScene, SchematicCompareScene>(
            world, firstInstance, firstSource, secondInstance, secondSource);
    default:
        return nullptr;
    }
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
