#include "qzk/ecad/Scene.h"

#include "qzk/ClassType.h"
#include "qzk/EcadDesign.h"
#include "qzk/Instance.h"
#include "qzk/View.h"
#include "qzk/ViewableSource.h"
#include "qzk/ecad/SchematicData.h"
#include "qzref/Journal.h"

namespace qzk::ecad {

namespace {

bool const registered = ClassType::RegisterClass(classid::EcadScene, {classid::EcadBaseScene});

std::vector<du::Symbol> PathOf(du::SmartPtr<qzk::ViewableSource> const& source) {
    return {source ? source->GetFileSource() : du::Symbol()};
}

} // namespace

Scene::Scene(du::SmartPtr<qzk::World> const& world, du::SmartPtr<qzk::Instance> const& instance,
             du::SmartPtr<qzk::ViewableSource> const& source)
    : BaseScene(world, nullptr, PathOf(source)), instance_(instance) {
    (void)registered;
}

Scene::~Scene() = default;

ClassType const& Scene::GetClassType() const {
    static ClassType const type(classid::EcadScene);
    return type;
}

du::Symbol Scene::GetDebugClassName() const {
    return "qzk::ecad::Scene";
}

void Scene::ClearDesignLoadedFlag() {
    qzref::Journal::Record(GetObjectName().str(), "ClearDesignLoadedFlag");
    std::lock_guard lock(stateMutex_);
    designLoaded_ = false;
}

void Scene::FinishDesignLoad() {
    BaseScene::FinishDesignLoad();
    du::SmartPtr<qzk::EcadDesign> design = _GetDesign(0);
    unsigned int pages = 1;
    if (design) {
        du::SmartPtr<qzk::EcadDesignData> data = design->GetEcadDesignData();
        if (auto* schematic = dynamic_cast<SchematicData*>(data.Get())) {
            pages = schematic->GetNumSheets();
        }
    }
    {
        std::lock_guard lock(stateMutex_);
        designLoaded_ = true;
    }
    SetNumPages(pages);
    for (unsigned int i = 0; i < GetNumViews(); ++i) {
        if (du::SmartPtr<qzk::View> view = GetView(i)) {
            view->StoreNumPages(pages);
        }
    }
}

} // namespace qzk::ecad
