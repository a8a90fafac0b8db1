// Group colour and visibility, the overlap colour and the fill switch.
#include "scene/BaseScene.h"

#include "qzk/ecad/BaseScene.h"
#include "scene/AppearanceUpdate.h"
#include "scene/ColorVisGroupOperationStep.h"
#include "scene/EcadItemKinds.h"
#include "scene/StepRecording.h"
#include "scene/ToggleStep.h"

namespace qzkapp::ecad {

namespace {

// The kernel's appearance layer of group looks.
unsigned int const kGroupLayer = 2;

} // namespace

void BaseScene::GetGroupColorVisInfo(qzk::ecad::GroupCVInfoSet& out) const {
    dp::ReadLocker lock(GetRWLock());
    out.SetInfo(groupCV);
}

void BaseScene::ClearGroupAppearance() {
    dp::WriteLocker lock(GetRWLock());
    if (!kernelScene) {
        return;
    }
    if (AppearanceUpdate update(*kernelScene); update) {
        kernelScene->ClearGroupAppearances(kGroupLayer);
    }
}

void BaseScene::SetGroupColorVisInfo(qzk::ecad::GroupCVInfoSet const& info,
                                     du::SmartPtr<qzk::Operation> const& op, ChangeSource source) {
    dp::WriteLocker lock(GetRWLock());
    AddStep<ColorVisGroupOperationStep>(op, this, groupCV);
    groupCV.SetInfo(info);
    ClearGroupAppearance();
    _PostEvent(GROUPCOLORVIS_CHANGED_EVENT(), static_cast<unsigned int>(source));
}

void BaseScene::ApplyGroupColorVisInfo(qzk::ecad::GroupCVInfoSet const& info,
                                       du::SmartPtr<qzk::Operation> const& op) {
    AddStep<ColorVisGroupOperationStep>(op, this, groupCV);
    UpdateGroupCV(info, ChangeSourceScene);
}

void BaseScene::UpdateGroupCV(qzk::ecad::GroupCVInfoSet const& info, ChangeSource source) {
    dp::WriteLocker lock(GetRWLock());
    if (groupCV.empty()) {
        // The groups are not known yet: keep the colours for when they come.
        pendingGroupCV = info;
        return;
    }
    if (groupCV.Update(info)) {
        ClearGroupAppearance();
        _PostEvent(GROUPCOLORVIS_CHANGED_EVENT(), static_cast<unsigned int>(source));
    }
}

void BaseScene::UpdateGroups(std::vector<GroupInfo> const& groups) {
    dp::WriteLocker lock(GetRWLock());
    qzk::ecad::GroupCVInfoSet fresh(
        kernelScene->IsATypeOf(qzk::ClassType(qzk::classid::EcadSchematicScene)));
    for (GroupInfo const& group : groups) {
        qzk::ecad::GroupCVInfo info(group.name.safe_c_str(), group.color.GetAsHexUI(), false);
        info.groupFlag = group.flag;
        fresh.insert(info);
    }
    if (groupCV.Update(fresh, pendingGroupCV) && IsDesignLoaded()) {
        pendingGroupCV.clear();
        ClearGroupAppearance();
        _PostEvent(GROUPCOLORVIS_CHANGED_EVENT(), ChangeSourceScene);
    }
}

void BaseScene::OnGroupContentAdded(du::Symbol const& group, ItemList const& items) {
    qzk::ecad::GroupCVInfo const key(group.safe_c_str());
    // An unknown group is turned away before any lock, so that content of groups the scene does
    // not colour costs no lock; the colour itself is read again under the lock.
    if (groupCV.find(key) == groupCV.end()) {
        return;
    }
    dp::WriteLocker lock(GetRWLock());
    AppearanceUpdate update(*kernelScene);
    if (!update) {
        return;
    }
    auto const found = groupCV.find(key);
    if (found == groupCV.end()) {
        // Gone between the look and the lock.
        return;
    }
    dg::Color const groupColor = found->GetColor();
    for (du::SmartPtr<qzk::SelectionItem> const& item : items) {
        auto ecad = AsEcadItem(item);
        if (!ecad) {
            continue;
        }
        qzk::ecad::AppearanceItem appearance(ecad);
        if (kernelScene->GetItemAppearanceCount(appearance, kGroupLayer)) {
            // Already coloured by another group.
            dg::Color overlap;
            kernelScene->GetGroupOverlapColor(overlap);
            kernelScene->SetItemGroupAppearance(appearance, overlap);
        } else {
            kernelScene->SetItemGroupAppearance(appearance, groupColor);
        }
    }
}

void BaseScene::OnGroupContentDeleted(ItemList const& /*items*/) {
    // Which members left is not looked at: the layer is cleared and redrawn as content comes.
    OnGroupOverlapColorChanged();
}

void BaseScene::OnGroupOverlapColorChanged() {
    dp::WriteLocker lock(GetRWLock());
    if (!kernelScene) {
        return;
    }
    ClearGroupAppearance();
    _PostEvent(GROUPCOLORVIS_CHANGED_EVENT(), ChangeSourceOverlapColor);
}

void BaseScene::LoadColorVisInfo(du::SmartPtr<qzk::Operation> const& op) {
    // A scene without groups is done before any lock: the load's completion calls this for every
    // design, and most have no groups.
    if (groupCV.empty()) {
        return;
    }
    dp::WriteLocker lock(GetRWLock());
    AddStep<ColorVisGroupOperationStep>(op, this, groupCV);
    groupCV.ResetToDefault();
    ClearGroupAppearance();
    _PostEvent(GROUPCOLORVIS_CHANGED_EVENT(), ChangeSourceScene);
}

void BaseScene::SetOverlapColor(bool on, du::SmartPtr<qzk::Operation> const& op) {
    // Compared before the toggle takes the lock: of two racing calls, the later one's toggle
    // decides, as it would between any two calls.
    if (on != overlapColor) {
        ToggleOverlapColor(op);
    }
}

void BaseScene::ToggleOverlapColor(du::SmartPtr<qzk::Operation> const& /*op*/) {
    // This switch takes an operation but has no step: it cannot be undone.
    dp::WriteLocker lock(GetRWLock());
    overlapColor = !overlapColor;
    kernelScene->SetOverlapColor(overlapColor);
}

void BaseScene::SetFillShapes(bool on, du::SmartPtr<qzk::Operation> const& op) {
    // Compared before the toggle takes the lock, like SetOverlapColor.
    if (on != fillShapes) {
        ToggleFillShapes(op);
    }
}

void BaseScene::ToggleFillShapes(du::SmartPtr<qzk::Operation> const& op) {
    dp::WriteLocker lock(GetRWLock());
    AddStep<FillShapesOperationStep>(op, this);
    fillShapes = !fillShapes;
    kernelScene->SetFillShapes(fillShapes);
}

} // namespace qzkapp::ecad
