// Display priority: the order in which the board's layers are drawn, and its undo steps.
#include "scene/BaseScene.h"

#include "du/StringConversion.h"
#include "qzk/Operation.h"
#include "qzk/ecad/BaseScene.h"
#include "scene/DisplayPriorityApplyStep.h"
#include "scene/DisplayPriorityOperationStep.h"
#include "scene/DisplayPriorityResetStep.h"
#include "scene/DrawOrderLists.h"
#include "scene/StepRecording.h"
#include "scene/ToggleStep.h"
#include <algorithm>

namespace qzkapp::ecad {

void BaseScene::GetDrawOrder(std::vector<short>& out) const {
    dp::ReadLocker lock(GetRWLock());
    out = drawOrder;
}

bool BaseScene::GetInvertLayers() const {
    dp::ReadLocker lock(GetRWLock());
    return kernelScene->invertLayers;
}

void BaseScene::DrawOrderMoveLayer(short layer, uint64 index, bool undo) {
    // Read before the lock, as a caller outside the contract may pass the size itself.
    if (index > drawOrder.size()) {
        return;
    }
    dp::WriteLocker lock(GetRWLock());
    auto found = std::find(drawOrder.begin(), drawOrder.end(), layer);
    if (found == drawOrder.end()) {
        return;
    }
    auto const oldIndex = static_cast<uint64>(found - drawOrder.begin());
    if (undo) {
        auto op = NewMoveLayerOperation(du::WideStrToUtf8(GetLayerName(layer)), kernelScene);
        AddStepAndRecord<DisplayPriorityOperationStep>(op, this, layer, oldIndex, index);
    }
    MoveLayerTo(drawOrder, oldIndex, index);
    kernelScene->SetDrawOrder(drawOrder, false, false);
    _PostEvent(DRAWORDER_CHANGED_EVENT());
}

void BaseScene::PreviewDrawOrderTopLayer(short layer) {
    if (layer > 0) {
        std::vector<short> order;
        GetDrawOrder(order);
        if (PreviewLayerOnTop(order, layer)) {
            kernelScene->SetDrawOrder(order, false, false);
        }
    } else if (layer == 0) {
        dp::ReadLocker lock(GetRWLock());
        kernelScene->SetDrawOrder(drawOrder, false, false);
    } else {
        std::vector<short> order;
        GetDefaultDrawOrder(order);
        kernelScene->SetDrawOrder(order, false, false);
    }
}

void BaseScene::ResetDrawOrder(bool undo) {
    dp::WriteLocker lock(GetRWLock());
    if (undo) {
        AddStepAndRecord<DisplayPriorityResetStep>(NewResetDrawOrderOperation(kernelScene), this,
                                                   drawOrder);
    }
    GetDefaultDrawOrder(drawOrder);
    kernelScene->SetDrawOrder(drawOrder, true, false);
    _PostEvent(DRAWORDER_CHANGED_EVENT());
}

namespace {
// Waits until no one else is inside the scene, and holds nothing afterwards.
void LockBarrier(dp::ReadWriteLock* lock) {
    dp::WriteLocker barrier(lock);
}
} // namespace

void BaseScene::ApplyDrawOrder(std::vector<short> const& order, bool invert,
                               du::SmartPtr<qzk::Operation> const& op) {
    LockBarrier(GetRWLock());
    AddStep<DisplayPriorityApplyStep>(op, this);
    SetDrawOrder(MergeDrawOrder(order, drawOrder), true, invert);
}

void BaseScene::SetDrawOrder(std::vector<short> const& order, bool flag, bool invert) {
    LockBarrier(GetRWLock());
    drawOrder = order;
    kernelScene->SetDrawOrder(drawOrder, flag, invert);
    _PostEvent(DRAWORDER_CHANGED_EVENT());
}

void BaseScene::DrawOrderInvertLayers(du::SmartPtr<qzk::Operation> const& op) {
    LockBarrier(GetRWLock());
    _DrawOrderInvertLayers(op);
}

void BaseScene::_DrawOrderInvertLayers(du::SmartPtr<qzk::Operation> const& op) {
    AddStep<InvertLayersOperationStep>(op, this);
    std::reverse(drawOrder.begin(), drawOrder.end());
    kernelScene->SetDrawOrder(drawOrder, true, !kernelScene->invertLayers);
    _PostEvent(DRAWORDER_CHANGED_EVENT());
}

} // namespace qzkapp::ecad
