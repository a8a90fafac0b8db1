// Overlays: made, found, moved, removed, and their appearance told to observers.
#include "qzk/ecad/BaseScene.h"

#include "SceneMessages.h"
#include "du/CommonAllocatorImpl.h"
#include "du/StringConversion.h"
#include "qzk/AnnoSet.h"
#include "qzk/AnnoSetTableEntry.h"
#include "qzk/ClassType.h"
#include "qzk/EcadDesign.h"
#include "qzk/Instance.h"
#include "qzk/View.h"
#include "qzk/ViewableSource.h"
#include "qzk/ecad/BaseSceneObserver.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/OverlayLayerAnnotation.h"
#include "qzref/RecordFmt.h"

#include "qz2d/ecad/Design.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace qzk::ecad {

du::SmartPtr<Overlay> BaseScene::CreateOverlay(du::SmartPtr<EcadPCBData> const& board, uint64 id,
                                               bool visible, dg::Color const& color,
                                               unsigned int kind, dg::DMat33 const& matrix,
                                               dg::DPoint2D const& center,
                                               std::wstring const& name) {
    qzref::Journal::Record(GetObjectName().str(), "CreateOverlay",
                           {board ? board->GetDesignName().str() : std::string("null"),
                            qzref::Fmt(static_cast<unsigned long>(id)), qzref::Fmt(visible),
                            qzref::Fmt(color), qzref::Fmt(kind), qzref::Fmt(matrix),
                            qzref::Fmt(center), qzref::Fmt(name)});
    du::SmartPtr<Overlay> overlay =
        _AddOverlay(Overlay::_MakeBoardOverlay(this, board, id, visible, color.GetAsHexUI(), kind,
                                               matrix, center, du::WideStrToUtf8(name)));
    // The layer of board overlays comes with the first of them.
    du::SmartPtr<qzk::AnnoSet> set;
    GetAnnoSet(set);
    if (set && !set->_FindByType(classid::EcadOverlayLayerAnnotation, 0)) {
        set->_Add(OverlayLayerAnnotation::Create());
    }
    return overlay;
}

du::SmartPtr<Overlay> BaseScene::CreateOverlay(du::SmartPtr<qz2d::ecad::Design> const& design,
                                               uint64 id, bool visible, dg::Color const& color,
                                               unsigned int kind, dg::DMat33 const& matrix,
                                               unsigned int parameter, std::string const& name,
                                               bool flag) {
    qzref::Journal::Record(GetObjectName().str(), "CreateOverlay",
                           {design ? qzref::Fmt(design->GetName()) : std::string("null"),
                            qzref::Fmt(static_cast<unsigned long>(id)), qzref::Fmt(visible),
                            qzref::Fmt(color), qzref::Fmt(kind), qzref::Fmt(matrix),
                            qzref::Fmt(parameter), qzref::Fmt(name), qzref::Fmt(flag)});
    return _AddOverlay(Overlay::_MakePictureOverlay(this, design, id, visible, color.GetAsHexUI(),
                                                    kind, matrix, parameter, name, flag));
}

du::SmartPtr<Overlay> BaseScene::_AddOverlay(du::SmartPtr<Overlay> const& overlay) {
    du::SmartPtr<Overlay> replaced;
    {
        std::lock_guard lock(stateMutex_);
        auto it = std::find_if(overlays_.begin(), overlays_.end(),
                               [&](auto const& o) { return o->GetId() == overlay->GetId(); });
        if (it != overlays_.end()) {
            replaced = *it;
            overlays_.erase(it);
        }
        overlays_.push_back(overlay);
    }
    if (replaced) {
        replaced->_Detach();
        _PostNotice(BaseSceneObserver::OverlayRemoveEventId, [replaced](dom::ObserverProxy& p) {
            p.PushObjectValue(du::SmartPtr<du::RefCounted>(replaced.Get()));
        });
    }
    _PostNotice(BaseSceneObserver::OverlayCreateEventId, [overlay](dom::ObserverProxy& p) {
        p.PushObjectValue(du::SmartPtr<du::RefCounted>(overlay.Get()));
    });
    return overlay;
}

du::SmartPtr<Overlay> BaseScene::_Find(uint64 id) const {
    std::lock_guard lock(stateMutex_);
    for (du::SmartPtr<Overlay> const& overlay : overlays_) {
        if (overlay->GetId() == id) {
            return overlay;
        }
    }
    return nullptr;
}

du::SmartPtr<Overlay> BaseScene::FindOverlay(uint64 const& id) {
    qzref::Journal::Record(GetObjectName().str(), "FindOverlay",
                           {qzref::Fmt(static_cast<unsigned long>(id))});
    return _Find(id);
}

void BaseScene::RemoveOverlay(uint64 const& id) {
    qzref::Journal::Record(GetObjectName().str(), "RemoveOverlay",
                           {qzref::Fmt(static_cast<unsigned long>(id))});
    du::SmartPtr<Overlay> removed;
    {
        std::lock_guard lock(stateMutex_);
        auto it = std::find_if(overlays_.begin(), overlays_.end(),
                               [&](auto const& o) { return o->GetId() == id; });
        if (it == overlays_.end()) {
            return;
        }
        removed = *it;
        overlays_.erase(it);
    }
    removed->_Detach();
    _PostNotice(BaseSceneObserver::OverlayRemoveEventId, [removed](dom::ObserverProxy& p) {
        p.PushObjectValue(du::SmartPtr<du::RefCounted>(removed.Get()));
    });
}

void BaseScene::RenameOverlay(uint64 id, std::string const& name) {
    qzref::Journal::Record(GetObjectName().str(), "RenameOverlay",
                           {qzref::Fmt(static_cast<unsigned long>(id)), qzref::Fmt(name)});
    if (du::SmartPtr<Overlay> overlay = _Find(id)) {
        overlay->_SetName(name);
        _PostNotice(BaseSceneObserver::OverlayUpdateEventId, [overlay](dom::ObserverProxy& p) {
            p.PushObjectValue(du::SmartPtr<du::RefCounted>(overlay.Get()));
        });
    }
}

void BaseScene::RotateOverlay(uint64 const& id, double angle) {
    qzref::Journal::Record(GetObjectName().str(), "RotateOverlay",
                           {qzref::Fmt(static_cast<unsigned long>(id)), qzref::Fmt(angle)});
    if (du::SmartPtr<Overlay> overlay = _Find(id)) {
        overlay->_Transform(dg::DMat33::Rotation(angle, overlay->_GetCenter()));
        _PostNotice(BaseSceneObserver::OverlayUpdateEventId, [overlay](dom::ObserverProxy& p) {
            p.PushObjectValue(du::SmartPtr<du::RefCounted>(overlay.Get()));
        });
    }
}

void BaseScene::FlipHorzOverlay(uint64 const& id) {
    qzref::Journal::Record(GetObjectName().str(), "FlipHorzOverlay",
                           {qzref::Fmt(static_cast<unsigned long>(id))});
    if (du::SmartPtr<Overlay> overlay = _Find(id)) {
        overlay->_Transform(dg::DMat33::FlipHorizontal(overlay->_GetCenter()));
        _PostNotice(BaseSceneObserver::OverlayUpdateEventId, [overlay](dom::ObserverProxy& p) {
            p.PushObjectValue(du::SmartPtr<du::RefCounted>(overlay.Get()));
        });
    }
}

void BaseScene::FlipVertOverlay(uint64 const& id) {
    qzref::Journal::Record(GetObjectName().str(), "FlipVertOverlay",
                           {qzref::Fmt(static_cast<unsigned long>(id))});
    if (du::SmartPtr<Overlay> overlay = _Find(id)) {
        overlay->_Transform(dg::DMat33::FlipVertical(overlay->_GetCenter()));
        _PostNotice(BaseSceneObserver::OverlayUpdateEventId, [overlay](dom::ObserverProxy& p) {
            p.PushObjectValue(du::SmartPtr<du::RefCounted>(overlay.Get()));
        });
    }
}

void BaseScene::OverlayColorVisChanged(std::vector<AnnoCVInfo> const& list) {
    qzref::Journal::Record(GetObjectName().str(), "OverlayColorVisChanged", {qzref::Fmt(list)});
    for (AnnoCVInfo const& entry : list) {
        if (du::SmartPtr<Overlay> overlay = _Find(entry.id)) {
            overlay->_SetColorWord(entry.color);
            overlay->_SetVisible(entry.visible);
        }
    }
}

void BaseScene::GetSelectedOverlay(uint64& id) {
    qzref::Journal::Record(GetObjectName().str(), "GetSelectedOverlay",
                           {qzref::Fmt(static_cast<unsigned long>(id))});
}

void BaseScene::ApplyImageColorVis(std::vector<AnnoCVInfo> const& list) {
    qzref::Journal::Record(GetObjectName().str(), "ApplyImageColorVis", {qzref::Fmt(list)});
    {
        std::lock_guard lock(stateMutex_);
        imageColorVis_ = list;
    }
    for (AnnoCVInfo const& entry : list) {
        if (du::SmartPtr<Overlay> overlay = _Find(entry.id)) {
            overlay->_SetColorWord(entry.color);
            overlay->_SetVisible(entry.visible);
        }
    }
}

void BaseScene::_TellOverlayAppearance(du::SmartPtr<Overlay> const& overlay,
                                       std::set<OverlayAppearance> const& on,
                                       std::set<OverlayAppearance> const& off) {
    std::vector<unsigned int> onList(on.begin(), on.end());
    std::vector<unsigned int> offList(off.begin(), off.end());
    _PostNotice(BaseSceneObserver::OverlayAppearanceChangedEventId,
                [overlay, onList, offList](dom::ObserverProxy& p) {
                    p.PushObjectValue(du::SmartPtr<du::RefCounted>(overlay.Get()));
                    detail::PushUInts(p, onList);
                    detail::PushUInts(p, offList);
                });
}

} // namespace qzk::ecad
