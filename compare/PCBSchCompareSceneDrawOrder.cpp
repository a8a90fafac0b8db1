// The two draw orders of the board-against-schematic compare: the family of the single list
// (BaseSceneDisplayPriority.cpp), once per side, with each side's kernel call and event.
#include "compare/PCBSchCompareScene.h"

#include "compare/PCBSchDisplayPriorityApplyStep.h"
#include "compare/PCBSchDisplayPriorityOperationStep.h"
#include "compare/PCBSchDisplayPriorityResetStep.h"
#include "compare/PCBSchInvertLayersOperationStep.h"
#include "dp/ReadWriteLock.h"
#include "du/StringConversion.h"
#include "qzk/ecad/PCBSchCompareScene.h"
#include "scene/DrawOrderLists.h"
#include "scene/StepRecording.h"

#include <algorithm>

namespace qzkapp::ecad {
namespace {

// Waits until no one else is inside the scene, and holds nothing afterwards.
void LockBarrier(dp::ReadWriteLock* lock) {
    dp::WriteLocker barrier(lock);
}

} // namespace

void PCBSchCompareScene::GetPCBDrawOrder(std::vector<short>& out) const {
    dp::ReadLocker lock(GetRWLock());
    out = pcbDrawOrder;
}

void PCBSchCompareScene::GetSchDrawOrder(std::vector<short>& out) const {
    dp::ReadLocker lock(GetRWLock());
    out = schDrawOrder;
}

void PCBSchCompareScene::GetPCBDefaultDrawOrder(std::vector<short>& out) const {
    dp::ReadLocker lock(GetRWLock());
    PCBSceneHelper::_GetDefaultDrawOrder(_BoardDesign(), out);
}

void PCBSchCompareScene::GetSchDefaultDrawOrder(std::vector<short>& out) const {
    dp::ReadLocker lock(GetRWLock());
    SchSceneHelper::_GetDefaultDrawOrder(_SchematicDesign(), out);
}

void PCBSchCompareScene::GetDefaultDrawOrder(std::vector<short>& /*out*/) const {
    dp::ReadLocker lock(GetRWLock());
    PCBSceneHelper::_GetDefaultDrawOrder(_BoardDesign(), pcbDrawOrder);
    SchSceneHelper::_GetDefaultDrawOrder(_SchematicDesign(), schDrawOrder);
    if (qzk::ecad::PCBSchCompareScene* compare = _GetPCBSchKernelScene()) {
        compare->SetPCBDrawOrder(pcbDrawOrder, false, false);
        compare->SetSchDrawOrder(schDrawOrder);
    }
}

void PCBSchCompareScene::DrawOrderMoveLayer(bool pcb, short layer, uint64 index, bool undo) {
    std::vector<short>& list = pcb ? pcbDrawOrder : schDrawOrder;
    // Read before the lock, as a caller outside the contract may pass the size itself.
    if (index > list.size()) {
        return;
    }
    // The scene may end inside the move (a handler of the undo list's change); the kernel scene
    // stays until the move is done.
    du::SmartPtr<qzk::ecad::BaseScene> const held = kernelScene;
    dp::WriteLocker lock(GetRWLock());
    auto found = std::find(list.begin(), list.end(), layer);
    if (found == list.end()) {
        return;
    }
    auto const oldIndex = static_cast<uint64>(found - list.begin());
    if (undo) {
        std::string const name = pcb ? du::WideStrToUtf8(GetSublayerLabel(layer, 0).c_str())
                                     : du::WideStrToUtf8(GetLayerName(layer));
        AddStepAndRecord<PCBSchDisplayPriorityOperationStep>(NewMoveLayerOperation(name, held),
                                                             this, layer, oldIndex, index, pcb);
    }
    MoveLayerTo(list, oldIndex, index);
    auto* compare = dynamic_cast<qzk::ecad::PCBSchCompareScene*>(held.Get());
    if (pcb) {
        if (compare != nullptr) {
            compare->SetPCBDrawOrder(pcbDrawOrder, true, false);
        }
        _PostEvent(PCB_DRAWORDER_CHANGED_EVENT());
    } else {
        if (compare != nullptr) {
            compare->SetSchDrawOrder(schDrawOrder);
        }
        _PostEvent(SCH_DRAWORDER_CHANGED_EVENT());
    }
}

void PCBSchCompareScene::PreviewDrawOrderTopLayer(bool pcb, short layer) {
    qzk::ecad::PCBSchCompareScene* compare = _GetPCBSchKernelScene();
    if (compare == nullptr) {
        return;
    }
    auto show = [compare, pcb](std::vector<short> const& order) {
        if (pcb) {
            compare->SetPCBDrawOrder(order, false, false);
        } else {
            compare->SetSchDrawOrder(order);
        }
    };
    if (layer > 0) {
        std::vector<short> order;
        if (pcb) {
            GetPCBDrawOrder(order);
        } else {
            GetSchDrawOrder(order);
        }
        if (PreviewLayerOnTop(order, layer)) {
            show(order);
        }
    } else if (layer == 0) {
        dp::ReadLocker lock(GetRWLock());
        show(pcb ? pcbDrawOrder : schDrawOrder);
    } else {
        std::vector<short> order;
        if (pcb) {
            GetPCBDefaultDrawOrder(order);
        } else {
            GetSchDefaultDrawOrder(order);
        }
        show(order);
    }
}

void PCBSchCompareScene::ResetPCBSchDrawOrder(bool pcb) {
    dp::WriteLocker lock(GetRWLock());
    AddStepAndRecord<PCBSchDisplayPriorityResetStep>(NewResetDrawOrderOperation(kernelScene), this,
                                                     pcb ? pcbDrawOrder : schDrawOrder, pcb);
    qzk::ecad::PCBSchCompareScene* compare = _GetPCBSchKernelScene();
    if (pcb) {
        GetPCBDefaultDrawOrder(pcbDrawOrder);
        if (compare != nullptr) {
            compare->SetPCBDrawOrder(pcbDrawOrder, true, false);
        }
        _PostEvent(PCB_DRAWORDER_CHANGED_EVENT());
    } else {
        GetSchDefaultDrawOrder(schDrawOrder);
        if (compare != nullptr) {
            compare->SetSchDrawOrder(schDrawOrder);
        }
        _PostEvent(SCH_DRAWORDER_CHANGED_EVENT());
    }
}

void PCBSchCompareScene::ApplyDrawOrder(bool pcb, std::vector<short> const& order, bool invert,
                                        du::SmartPtr<qzk::Operation> const& op) {
    LockBarrier(GetRWLock());
    AddStep<PCBSchDisplayPriorityApplyStep>(op, this, pcb);
    if (pcb) {
        SetPCBDrawOrder(MergeDrawOrder(order, pcbDrawOrder), true, invert);
    } else {
        SetSchDrawOrder(MergeDrawOrder(order, schDrawOrder));
    }
}

void PCBSchCompareScene::PCBSchDrawOrderInvertLayers(du::SmartPtr<qzk::Operation> const& op) {
    LockBarrier(GetRWLock());
    AddStep<PCBSchInvertLayersOperationStep>(op, this);
    std::reverse(pcbDrawOrder.begin(), pcbDrawOrder.end());
    if (qzk::ecad::PCBSchCompareScene* compare = _GetPCBSchKernelScene()) {
        compare->SetPCBDrawOrder(pcbDrawOrder, true, !compare->invertLayers);
    }
    _PostEvent(PCB_DRAWORDER_CHANGED_EVENT());
}

void PCBSchCompareScene::SetPCBDrawOrder(std::vector<short> const& order, bool flag, bool invert) {
    LockBarrier(GetRWLock());
    pcbDrawOrder = order;
    if (qzk::ecad::PCBSchCompareScene* compare = _GetPCBSchKernelScene()) {
        compare->SetPCBDrawOrder(pcbDrawOrder, flag, invert);
    }
    _PostEvent(PCB_DRAWORDER_CHANGED_EVENT());
}

void PCBSchCompareScene::SetSchDrawOrder(std::vector<short> const& order) {
    LockBarrier(GetRWLock());
    schDrawOrder = order;
    if (qzk::ecad::PCBSchCompareScene* compare = _GetPCBSchKernelScene()) {
        compare->SetSchDrawOrder(schDrawOrder);
    }
    _PostEvent(SCH_DRAWORDER_CHANGED_EVENT());
}

} // namespace qzkapp::ecad
