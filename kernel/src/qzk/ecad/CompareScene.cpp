#include "qzk/ecad/CompareScene.h"

#include "qzk/ClassType.h"
#include "qzk/EcadDesign.h"
#include "qzk/ecad/BaseSceneObserver.h"
#include "qzk/ecad/PageList.h"
#include "qzk/ecad/SchematicData.h"
#include "qzref/RecordFmt.h"

#include <algorithm>

namespace qzk::ecad {

namespace {
bool const registered =
    ClassType::RegisterClass(classid::EcadCompareScene, {classid::EcadBaseScene});
} // namespace

CompareScene::CompareScene(du::SmartPtr<qzk::World> const& world,
                           du::SmartPtr<AnnoSetTableEntry> const& entry,
                           std::vector<du::Symbol> const& paths)
    : BaseScene(world, entry, paths) {
    (void)registered;
}

CompareScene::~CompareScene() = default;

ClassType const& CompareScene::GetClassType() const {
    static ClassType const type(classid::EcadCompareScene);
    return type;
}

du::Symbol CompareScene::GetDebugClassName() const {
    return "qzk::ecad::CompareScene";
}

void CompareScene::GetFirstDesign(du::SmartPtr<qzk::EcadDesign>& out) {
    qzref::Journal::Record(GetObjectName().str(), "GetFirstDesign");
    out = _GetDesign(0);
}

void CompareScene::GetSecondDesign(du::SmartPtr<qzk::EcadDesign>& out) {
    qzref::Journal::Record(GetObjectName().str(), "GetSecondDesign");
    out = _GetDesign(1);
}

void CompareScene::SetFirstItemColor(dg::Color const& color) {
    qzref::Journal::Record(GetObjectName().str(), "SetFirstItemColor", {qzref::Fmt(color)});
    std::lock_guard lock(stateMutex_);
    firstColor_ = color;
}

void CompareScene::SetSecondItemColor(dg::Color const& color) {
    qzref::Journal::Record(GetObjectName().str(), "SetSecondItemColor", {qzref::Fmt(color)});
    std::lock_guard lock(stateMutex_);
    secondColor_ = color;
}

void CompareScene::SetCommonItemColor(dg::Color const& color) {
    qzref::Journal::Record(GetObjectName().str(), "SetCommonItemColor", {qzref::Fmt(color)});
    std::lock_guard lock(stateMutex_);
    commonColor_ = color;
}

dg::Color CompareScene::GetFirstItemColor() const {
    qzref::Journal::Record(GetObjectName().str(), "GetFirstItemColor");
    std::lock_guard lock(stateMutex_);
    return firstColor_;
}

dg::Color CompareScene::GetSecondItemColor() const {
    qzref::Journal::Record(GetObjectName().str(), "GetSecondItemColor");
    std::lock_guard lock(stateMutex_);
    return secondColor_;
}

dg::Color CompareScene::GetCommonItemColor() const {
    qzref::Journal::Record(GetObjectName().str(), "GetCommonItemColor");
    std::lock_guard lock(stateMutex_);
    return commonColor_;
}

unsigned int CompareScene::_CountPages() const {
    unsigned int pages = 1;
    for (int i = 0; i < 2; ++i) {
        du::SmartPtr<qzk::EcadDesign> design = _GetDesign(i);
        du::SmartPtr<qzk::EcadDesignData> data = design ? design->GetEcadDesignData() : nullptr;
        if (auto* schematic = dynamic_cast<SchematicData*>(data.Get())) {
            pages = std::max(pages, schematic->GetNumSheets());
        }
    }
    return pages;
}

du::SmartPtr<PageList> CompareScene::GetPageList() {
    qzref::Journal::Record(GetObjectName().str(), "GetPageList");
    return du::SmartPtr<PageList>(new PageList(_CountPages()));
}

void CompareScene::FinishDesignLoad(bool second) {
    BaseScene::FinishDesignLoad(second);
    {
        std::lock_guard lock(stateMutex_);
        finished_[second ? 1 : 0] = true;
    }
    SetNumPages(_CountPages());
}

} // namespace qzk::ecad
