#include "board/PCBSceneHelper.h"

#include "IcmApiEcad.h"
#include "board/ColorVisPCBOperationStep.h"
#include "du/StringConversion.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/SelectionItem.h"
#include "scene/StepRecording.h"

#include <algorithm>

namespace qzkapp::ecad {
namespace {

using qzk::ecad::SublayerPCB_CV;
using qzk::ecad::SublayerPCB_CVSet;
using qzk::ecad::SublayerPCBBase;

// The sublayer that ForceVisibility never hides: the board itself.
short const kBoardLayer = 1;
short const kBoardSublayer = 2;
// The sublayers on which a component's own parts are drawn.
short const kComponentSublayerLow = 14;
short const kComponentSublayerHigh = 15;
short const kTopLayerFallback = 4;
short const kBottomLayerFallback = 0;

du::SmartPtr<qzk::ecad::EcadPCBData> AsBoard(PCBSceneHelper::DesignData const& design) {
    return du::DynamicCast<qzk::ecad::EcadPCBData>(design);
}

// Sublayers 10, 11, 14 and 15 hold the parts of a component: the handle less 10, in 16 bits,
// has no bit outside 0x0005.
bool IsComponentPartSublayer(short sublayer) {
    return (static_cast<unsigned short>(sublayer - 10) & 0xFFFAu) == 0;
}

// Handles that are not negative first, ascending; the negative ones after them.
bool DrawsBefore(short a, short b) {
    return a >= 0 && (b < 0 || a < b);
}

} // namespace

PCBSceneHelper::PCBSceneHelper() : showLogicalConnections(false), rotation(0), flip(false) {}

PCBSceneHelper::PCBSceneHelper(PCBSceneHelper const& other) = default;
PCBSceneHelper& PCBSceneHelper::operator=(PCBSceneHelper const& other) = default;
PCBSceneHelper::~PCBSceneHelper() = default;

void PCBSceneHelper::GetColorVisInfo(SublayerPCB_CVSet& out) const {
    out.clear();
    out.insert(sublayerCV.begin(), sublayerCV.end());
}

void PCBSceneHelper::SetColorVisInfo(SublayerPCB_CVSet const& set,
                                     du::SmartPtr<qzk::Operation> const& op,
                                     ChangeSource /*source*/) {
    AddStep<ColorVisPCBOperationStep>(op, this, sublayerCV);
    if (&set != &sublayerCV) {
        sublayerCV.clear();
        sublayerCV.insert(set.begin(), set.end());
    }
}

void PCBSceneHelper::ApplyColorVisInfo(SublayerPCB_CVSet const& /*set*/,
                                       du::SmartPtr<qzk::Operation> const& /*op*/) {}

void PCBSceneHelper::GetOverlayColorVisInfo(std::vector<qzk::ecad::AnnoCVInfo>& out) const {
    out.clear();
    out.insert(out.end(), overlayCV.begin(), overlayCV.end());
}

void PCBSceneHelper::UpdateOverlayCVInfo(std::vector<qzk::ecad::AnnoCVInfo> const& list,
                                         ChangeSource source) {
    if (qzk::ecad::AnnoCVInfo::AreDifferent(overlayCV, list)) {
        qzk::ecad::AnnoCVInfo::AssignCVAttrs(overlayCV, list);
        _NotifyOverlayColorVisChanged(source);
    }
}

bool PCBSceneHelper::GetShowLogicalConnections() const {
    return showLogicalConnections;
}
short PCBSceneHelper::GetTopLayer() const {
    return 0;
}
short PCBSceneHelper::GetBottomLayer() const {
    return 0;
}
void PCBSceneHelper::_NotifyOverlayColorVisChanged(ChangeSource /*source*/) {}

void PCBSceneHelper::ForceVisibility(std::set<SublayerPCBBase> const& visible) {
    if (visible.empty()) {
        return;
    }
    SublayerPCB_CVSet present;
    GetColorVisInfo(present);
    SublayerPCB_CVSet result;
    for (SublayerPCB_CV const& entry : present) {
        bool named = false;
        for (SublayerPCBBase const& wanted : visible) {
            if ((wanted.layer == -1 || wanted.layer == entry.layer) &&
                wanted.sublayer == entry.sublayer) {
                named = true;
                break;
            }
        }
        bool const board = entry.layer == kBoardLayer && entry.sublayer == kBoardSublayer;
        SublayerPCB_CV copy(entry);
        copy.visible = named || board;
        result.insert(copy);
    }
    SetColorVisInfo(result, du::SmartPtr<qzk::Operation>(), ChangeSourceScene);
}

void PCBSceneHelper::GetLayersSublayers(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                                        std::set<SublayerPCBBase>& out) {
    for (auto const& entry : items) {
        auto item = du::DynamicCast<qzk::ecad::SelectionItem>(entry);
        if (!item || !item->IsComponent() || !item->designData) {
            continue;
        }
        IcmApiEcad* session = item->GetIcmApiEcad();
        if (session == nullptr) {
            continue;
        }
        void* footprint = nullptr;
        short layer = 0;
        session->GetComponentFootprint(item->GetObject(), footprint, layer);
        if (layer != 0) {
            out.insert(SublayerPCBBase(layer, kComponentSublayerHigh));
            out.insert(SublayerPCBBase(layer, kComponentSublayerLow));
        }
        void* iterator = nullptr;
        session->StartChildIteration(footprint, IcmApiEcad::SHAPE, iterator);
        void* child = nullptr;
        while (session->NextIteratedChild(iterator, child)) {
            short childLayer = 0;
            short childSublayer = 0;
            session->GetObjectLayer(child, childLayer, childSublayer);
            if (IsComponentPartSublayer(childSublayer)) {
                out.insert(SublayerPCBBase(childLayer, childSublayer));
            }
        }
        if (iterator != nullptr) {
            IcmApiPublicSession::IcmIteratorDelete(iterator);
        }
    }
}

void PCBSceneHelper::CombineColorVisInfo(SublayerPCB_CVSet const& given,
                                         SublayerPCB_CVSet& out) const {
    for (SublayerPCB_CV const& own : sublayerCV) {
        auto const found = given.find(own);
        out.insert(found != given.end() ? *found : own);
    }
}

void PCBSceneHelper::_GetDefaultColorVisInfo(DesignData const& design, SublayerPCB_CVSet& out,
                                             bool flag) const {
    auto board = AsBoard(design);
    if (!board) {
        return;
    }
    bool const overlayData = board->IsOverlayData();
    SublayerPCB_CVSet prefs;
    SublayerPCB_CV::GetPrefs(prefs);
    for (SublayerPCBBase const* key : board->sublayers) {
        SublayerPCB_CV cv(*key);
        SublayerPCB_CV::GetDefaultColorVis(board, prefs, cv, overlayData, flag);
        out.insert(cv);
    }
}

void PCBSceneHelper::_GetDefaultDrawOrder(DesignData const& design, std::vector<short>& out) const {
    out.clear();
    auto board = AsBoard(design);
    if (!board) {
        return;
    }
    for (SublayerPCBBase const* key : board->sublayers) {
        out.push_back(key->layer);
    }
    // Stable, so that equal negative handles stay side by side for unique.
    std::stable_sort(out.begin(), out.end(), DrawsBefore);
    out.erase(std::unique(out.begin(), out.end()), out.end());
}

short PCBSceneHelper::_GetSublayerHandle(DesignData const& design, short layer,
                                         std::string const& name) const {
    short handle = -1;
    auto board = AsBoard(design);
    if (!board) {
        return handle;
    }
    std::string const layerName = board->GetLayerName(layer).str();
    if (IcmApiEcad* session = board->GetIcmApiEcad()) {
        session->GetSublayerHandle(layerName, name, handle);
    }
    return handle;
}

std::wstring PCBSceneHelper::_GetSublayerLabel(DesignData const& design, short layer,
                                               short sublayer) {
    auto board = AsBoard(design);
    if (!board) {
        return std::wstring();
    }
    return du::Utf8ToWideStr(board->GetSublayerLabel(layer, sublayer).str());
}

short PCBSceneHelper::_GetTopLayer(DesignData const& design) const {
    auto board = AsBoard(design);
    return board ? board->GetTop() : kTopLayerFallback;
}

short PCBSceneHelper::_GetBottomLayer(DesignData const& design) const {
    auto board = AsBoard(design);
    return board ? board->GetBottom() : kBottomLayerFallback;
}

} // namespace qzkapp::ecad
