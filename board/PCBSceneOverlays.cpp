// Overlays of a board scene and the full colour set.
#include "board/ColorVisOverlayOperationStep.h"
#include "board/ColorVisPCBOperationStep.h"
#include "board/PCBScene.h"
#include "design/ColorVisImageOperationStep.h"
#include "dg/DMat33.h"
#include "dg/DPoint2D.h"
#include "dp/ReadWriteLock.h"
#include "du/StringConversion.h"
#include "qzk/AnnoSet.h"
#include "qzk/Annotation.h"
#include "qzk/ecad/AnnoCVInfo.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/OverlayPrefs.h"
#include "qzk/ecad/PCBScene.h"
#include "qzk/ecad/PrefKeys.h"
#include "qzk/ecad/SublayerPCB_CV.h"
#include "scene/AdditiveRandom.h"
#include "scene/ColorVisGroupOperationStep.h"
#include "scene/StepRecording.h"

#include <algorithm>

namespace qzkapp::ecad {
namespace {

using Entries = std::vector<qzk::ecad::AnnoCVInfo>;

// Overlay ids are drawn from one source for the whole process, so that two boards never give
// the same id to their overlays while both are open.
AdditiveRandom const& OverlayIds() {
    static AdditiveRandom const ids;
    return ids;
}

// The kernel's annotation of the overlay layer, which goes with the last overlay.
unsigned int const kOverlayLayerAnnotation = 0x40000;

} // namespace

void PCBScene::OverlayCreated(du::SmartPtr<qzk::ecad::EcadPCBData> const& data,
                              std::wstring const& name, qzk::ecad::GerberPrefs const& gerberPrefs,
                              qzk::ecad::OverlayPrefs const& overlayPrefs, du::Symbol const& type,
                              bool flag) {
    if (!data) {
        return;
    }
    dg::DPoint2D center = data->GetRange().GetCenter();
    dg::DMat33 matrix = dg::DMat33::IDENTITY;
    overlayPrefs.ApplyTransform(matrix, center);
    center *= matrix;
    unsigned int color = 0x1FFFFFFu;
    bool visible = true;
    qzk::ecad::AnnoCVInfo::GetDefaultColorVis(qzk::ecad::PrefKeys::OVERLAYS(), color, visible);
    OverlayCreated(data, name, color, visible, gerberPrefs, center, matrix, type, flag);
}

void PCBScene::OverlayCreated(du::SmartPtr<qzk::ecad::EcadPCBData> const& data,
                              std::wstring const& name, unsigned int color, bool visible,
                              qzk::ecad::GerberPrefs const& gerberPrefs, dg::DPoint2D const& center,
                              dg::DMat33 const& matrix, du::Symbol const& type, bool flag) {
    AdditiveRandom const& ids = OverlayIds();
    dp::WriteLocker lock(GetRWLock());
    if (!data || !kernelScene) {
        return;
    }
    if (visible) {
        // The new overlay becomes the current one; the others stay hidden after it.
        bool hidden = false;
        for (qzk::ecad::AnnoCVInfo& entry : overlayCV) {
            if (entry.visible) {
                entry.visible = false;
                hidden = true;
            }
        }
        if (hidden) {
            kernelScene->OverlayColorVisChanged(overlayCV);
        }
    }
    // The images' sources are seeded alike: an id the kernel scene shows already is drawn again.
    uint64 id = ids.NextNonZeroId();
    while (kernelScene->FindOverlay(id)) {
        id = ids.NextNonZeroId();
    }
    qzk::ecad::AnnoCVInfo const entry(id, name.c_str(), color, visible,
                                      qzk::ecad::AnnoCVInfo::eOverlay);
    OverlayInfo const info{gerberPrefs, type, flag};
    kernelScene->CreateOverlay(data, id, visible, entry.GetColor(), 1, matrix, center, name);
    overlayCV.push_back(entry);
    overlayInfo[id] = info;
    _PostEvent(OVERLAY_CHANGED_EVENT(), static_cast<unsigned int>(ChangeSourceScene));
    kernelScene->SetViewsDirty();
}

std::vector<qzk::ecad::AnnoCVInfo>::iterator PCBScene::_CurOverlayEntry() {
    return std::find_if(overlayCV.begin(), overlayCV.end(),
                        [](qzk::ecad::AnnoCVInfo const& entry) { return entry.visible; });
}

uint64 PCBScene::_GetCurOverlay() const {
    auto const found =
        std::find_if(overlayCV.begin(), overlayCV.end(),
                     [](qzk::ecad::AnnoCVInfo const& entry) { return entry.visible; });
    return found != overlayCV.end() ? found->id : 0;
}

void PCBScene::RemoveCurOverlay() {
    dp::WriteLocker lock(GetRWLock());
    if (auto entry = _CurOverlayEntry(); entry != overlayCV.end()) {
        _RemoveOverlay(entry);
    }
}

void PCBScene::RemoveOverlay(uint64 const& id) {
    dp::WriteLocker lock(GetRWLock());
    auto entry = std::find_if(overlayCV.begin(), overlayCV.end(),
                              [id](qzk::ecad::AnnoCVInfo const& e) { return e.id == id; });
    if (entry != overlayCV.end()) {
        _RemoveOverlay(entry);
    }
}

void PCBScene::_RemoveOverlay(std::vector<qzk::ecad::AnnoCVInfo>::iterator& entry) {
    uint64 const id = entry->id;
    if (kernelScene) {
        kernelScene->RemoveOverlay(id);
    }
    selectedOverlays.erase(id);
    overlayInfo.erase(id);
    entry = overlayCV.erase(entry);
    _PostEvent(OVERLAY_CHANGED_EVENT(), static_cast<unsigned int>(ChangeSourceScene));
    if (!kernelScene) {
        return;
    }
    if (overlayCV.empty()) {
        du::SmartPtr<qzk::AnnoSet> annoSet;
        kernelScene->GetAnnoSet(annoSet);
        du::SmartPtr<qzk::Annotation> layer;
        if (annoSet && annoSet->GetAnnotationByType(kOverlayLayerAnnotation, 0, layer) && layer) {
            annoSet->RemoveAnnotationFromSet(layer, du::SmartPtr<qzk::Operation>());
        }
    }
    kernelScene->SetViewsDirty();
}

void PCBScene::RenameCurOverlay(std::wstring const& name) {
    dp::WriteLocker lock(GetRWLock());
    auto const entry = _CurOverlayEntry();
    if (entry == overlayCV.end()) {
        return;
    }
    entry->name = name;
    _PostEvent(OVERLAY_CHANGED_EVENT(), static_cast<unsigned int>(ChangeSourceScene));
    if (kernelScene) {
        kernelScene->SetViewsDirty();
        // After the listeners: they hear of the new name first.
        kernelScene->RenameOverlay(entry->id, du::WideStrToUtf8(name));
    }
}

void PCBScene::RotateCurOverlay(double angle) {
    dp::ReadLocker lock(GetRWLock());
    if (uint64 const id = _GetCurOverlay(); id != 0 && kernelScene) {
        kernelScene->RotateOverlay(id, angle);
    }
}

void PCBScene::FlipHorzCurOverlay() {
    dp::ReadLocker lock(GetRWLock());
    if (uint64 const id = _GetCurOverlay(); id != 0 && kernelScene) {
        kernelScene->FlipHorzOverlay(id);
    }
}

void PCBScene::FlipVertCurOverlay() {
    dp::ReadLocker lock(GetRWLock());
    if (uint64 const id = _GetCurOverlay(); id != 0 && kernelScene) {
        kernelScene->FlipVertOverlay(id);
    }
}

uint64 PCBScene::GetCurOverlay() const {
    dp::ReadLocker lock(GetRWLock());
    return _GetCurOverlay();
}

std::wstring PCBScene::GetCurOverlayName() {
    dp::ReadLocker lock(GetRWLock());
    auto const entry = _CurOverlayEntry();
    return entry != overlayCV.end() ? entry->name : std::wstring();
}

uint64 PCBScene::GetOverlayByName(std::wstring const& name) const {
    dp::ReadLocker lock(GetRWLock());
    auto const found =
        std::find_if(overlayCV.begin(), overlayCV.end(),
                     [&name](qzk::ecad::AnnoCVInfo const& entry) { return entry.name == name; });
    return found != overlayCV.end() ? found->id : 0;
}

void PCBScene::GetOverlayNames(std::set<std::wstring>& out) const {
    dp::ReadLocker lock(GetRWLock());
    for (qzk::ecad::AnnoCVInfo const& entry : overlayCV) {
        out.insert(entry.name);
    }
}

bool PCBScene::GetOverlayInfo(uint64 const& id, OverlayInfo& out) const {
    auto const found = overlayInfo.find(id);
    if (found == overlayInfo.end()) {
        return false;
    }
    out = found->second;
    return true;
}

bool PCBScene::HasOverlay(uint64 const& id) const {
    return overlayInfo.count(id) != 0;
}

void PCBScene::GetOverlayColorVisInfo(std::vector<qzk::ecad::AnnoCVInfo>& out) const {
    dp::ReadLocker lock(GetRWLock());
    PCBSceneHelper::GetOverlayColorVisInfo(out);
}

void PCBScene::UpdateOverlayCVInfo(std::vector<qzk::ecad::AnnoCVInfo> const& list,
                                   ChangeSource source) {
    dp::WriteLocker lock(GetRWLock());
    PCBSceneHelper::UpdateOverlayCVInfo(list, source);
}

void PCBScene::_NotifyOverlayColorVisChanged(ChangeSource source) {
    if (_GetPCBKernelScene() != nullptr) {
        kernelScene->OverlayColorVisChanged(overlayCV);
    }
    _PostEvent(OVERLAY_CHANGED_EVENT(), static_cast<unsigned int>(source));
}

void PCBScene::SetFullColorVisInfo(qzk::ecad::GroupCVInfoSet const& groups,
                                   qzk::ecad::SublayerPCB_CVSet const& sublayers,
                                   std::vector<qzk::ecad::AnnoCVInfo> const& overlays,
                                   std::vector<qzk::ecad::AnnoCVInfo> const& images,
                                   du::SmartPtr<qzk::Operation> const& op, ChangeSource source) {
    dp::WriteLocker lock(GetRWLock());
    // All four compared before anything changes.
    bool const groupsDiffer = qzk::ecad::GroupCVInfo::AreDifferent(GetGroupCV(), groups);
    bool const sublayersDiffer = qzk::ecad::SublayerPCB_CV::AreDifferent(sublayerCV, sublayers);
    bool const overlaysDiffer = qzk::ecad::AnnoCVInfo::AreDifferent(overlayCV, overlays);
    bool const imagesDiffer = qzk::ecad::AnnoCVInfo::AreDifferent(imageCV, images);
    if (!groupsDiffer && !sublayersDiffer && !overlaysDiffer && !imagesDiffer) {
        return;
    }
    if (groupsDiffer) {
        AddStep<ColorVisGroupOperationStep>(op, static_cast<BaseScene*>(this), GetGroupCV());
    }
    if (sublayersDiffer) {
        AddStep<ColorVisPCBOperationStep>(op, static_cast<PCBSceneHelper*>(this), sublayerCV);
    }
    if (overlaysDiffer) {
        AddStep<ColorVisOverlayOperationStep>(op, static_cast<PCBSceneHelper*>(this), overlayCV);
    }
    if (imagesDiffer) {
        AddStep<ColorVisImageOperationStep>(op, static_cast<Scene*>(this), imageCV);
    }
    if (groupsDiffer) {
        GetGroupCV().SetInfo(groups);
        ClearGroupAppearance();
        _PostEvent(GROUPCOLORVIS_CHANGED_EVENT(), static_cast<unsigned int>(source));
    }
    if (sublayersDiffer) {
        sublayerCV.clear();
        sublayerCV.insert(sublayers.begin(), sublayers.end());
        if (qzk::ecad::PCBScene* board = _GetPCBKernelScene()) {
            board->SetColorVisInfo(sublayerCV);
        }
        _PostEvent(SUBLAYERCOLORVIS_CHANGED_EVENT(), static_cast<unsigned int>(source));
    }
    if (overlaysDiffer) {
        qzk::ecad::AnnoCVInfo::AssignCVAttrs(overlayCV, overlays);
        _NotifyOverlayColorVisChanged(source);
    }
    if (imagesDiffer) {
        SetImageColorVisInfo(images, source);
    }
}

} // namespace qzkapp::ecad
