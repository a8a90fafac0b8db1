#include "qzk/ecad/Scene.h"

#include "qzk/AnnoSet.h"
#include "qzk/ClassType.h"
#include "qzk/EcadDesign.h"
#include "qzk/Instance.h"
#include "qzk/View.h"
#include "qzk/ViewableSource.h"
#include "qzk/ecad/DesignImage.h"
#include "qzk/ecad/EcadDesignData.h"
#include "qzk/ecad/ImageAnnotation.h"
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
    // A design scene always has its annotations: the design's images, the overlay layer.
    SetAnnoSet(qzk::AnnoSet::Create());
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
        _ApplyDesignImages(data);
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

void Scene::_ApplyDesignImages(du::SmartPtr<qzk::EcadDesignData> const& data) {
    auto const* design = dynamic_cast<EcadDesignData const*>(data.Get());
    du::SmartPtr<qzk::AnnoSet> set;
    GetAnnoSet(set);
    if (design == nullptr || !set) {
        return;
    }
    {
        std::lock_guard lock(stateMutex_);
        if (imagesOf_ == design) {
            return;
        }
        imagesOf_ = design;
    }
    for (DesignImage const* image : design->GetImages()) {
        ImageAnnotation::Params params;
        params.id = image->id;
        params.rep = image->picture;
        params.imageName = image->name;
        params.overlayName = image->overlayName;
        params.imageKind = image->kind;
        params.imageColor = image->color;
        params.overlayParameter = image->parameter;
        params.visible = image->visible;
        set->_Add(ImageAnnotation::Create(params));
    }
}

} // namespace qzk::ecad
