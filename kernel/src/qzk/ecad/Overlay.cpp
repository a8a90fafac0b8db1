#include "qzk/ecad/Overlay.h"

#include "qzk/ClassType.h"
#include "qzk/ecad/BaseScene.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/OverlaySelectionItem.h"
#include "qzref/RecordFmt.h"

#include "qz2d/ecad/Design.h"

#include <algorithm>

namespace qzk::ecad {

namespace {

bool const registered = ClassType::RegisterClass(classid::EcadOverlay, {classid::Object});

uint64 ItemId(du::SmartPtr<OverlaySelectionItem> const& item) {
    return item ? item->GetItemId() : 0;
}

} // namespace

Overlay::Overlay(BaseScene* scene, uint64 id, bool visible, unsigned int color, unsigned int kind,
                 dg::DMat33 const& matrix, dg::DPoint2D const& center, std::string const& name)
    : overlayKind(kind), id_(id), scene_(scene), color_(color), visible_(visible), matrix_(matrix),
      center_(center), name_(name) {
    (void)registered;
}

Overlay::~Overlay() = default;

ClassType const& Overlay::GetClassType() const {
    static ClassType const type(classid::EcadOverlay);
    return type;
}

du::Symbol Overlay::GetDebugClassName() const {
    return "qzk::ecad::Overlay";
}

du::SmartPtr<Overlay> Overlay::_MakeBoardOverlay(BaseScene* scene,
                                                 du::SmartPtr<EcadPCBData> const& board, uint64 id,
                                                 bool visible, unsigned int color,
                                                 unsigned int kind, dg::DMat33 const& matrix,
                                                 dg::DPoint2D const& center,
                                                 std::string const& name) {
    du::SmartPtr<Overlay> overlay(
        new Overlay(scene, id, visible, color, kind, matrix, center, name));
    overlay->board_ = board;
    return overlay;
}

du::SmartPtr<Overlay> Overlay::_MakePictureOverlay(BaseScene* scene,
                                                   du::SmartPtr<qz2d::ecad::Design> const& picture,
                                                   uint64 id, bool visible, unsigned int color,
                                                   unsigned int kind, dg::DMat33 const& matrix,
                                                   unsigned int parameter, std::string const& name,
                                                   bool flag) {
    // A picture has no centre of its own here; its transforms turn about the origin.
    du::SmartPtr<Overlay> overlay(
        new Overlay(scene, id, visible, color, kind, matrix, dg::DPoint2D(), name));
    overlay->picture_ = du::SmartPtr<qzk::Object>(picture.Get());
    overlay->parameter_ = parameter;
    overlay->pictureFlag_ = flag;
    return overlay;
}

void Overlay::Select(du::SmartPtr<OverlaySelectionItem> const& item) {
    qzref::Journal::Record(GetObjectName().str(), "Select",
                           {qzref::Fmt(static_cast<unsigned long>(ItemId(item)))});
    unsigned int own = 0;
    {
        std::lock_guard lock(mutex_);
        own = color_;
    }
    _Mark(ItemId(item), own, false, false);
}

void Overlay::Select(du::SmartPtr<OverlaySelectionItem> const& item, dg::Color const& color,
                     bool flag) {
    qzref::Journal::Record(GetObjectName().str(), "Select",
                           {qzref::Fmt(static_cast<unsigned long>(ItemId(item))), qzref::Fmt(color),
                            qzref::Fmt(flag)});
    _Mark(ItemId(item), color.GetAsHexUI(), flag, false);
}

void Overlay::PreSelect(du::SmartPtr<OverlaySelectionItem> const& item, dg::Color const& color,
                        bool flag) {
    qzref::Journal::Record(GetObjectName().str(), "PreSelect",
                           {qzref::Fmt(static_cast<unsigned long>(ItemId(item))), qzref::Fmt(color),
                            qzref::Fmt(flag)});
    _Mark(ItemId(item), color.GetAsHexUI(), flag, true);
}

void Overlay::ClearSelection() {
    qzref::Journal::Record(GetObjectName().str(), "ClearSelection");
    bool hadSelected = false;
    bool hadPreselected = false;
    {
        std::lock_guard lock(mutex_);
        for (Mark const& mark : marks_) {
            (mark.preselected ? hadPreselected : hadSelected) = true;
        }
        marks_.clear();
    }
    if (hadSelected) {
        _TellAppearance(false, eOverlaySelected);
    }
    if (hadPreselected) {
        _TellAppearance(false, eOverlayPreselected);
    }
}

void Overlay::SetColor(dg::Color const& color) {
    qzref::Journal::Record(GetObjectName().str(), "SetColor", {qzref::Fmt(color)});
    _SetColorWord(color.GetAsHexUI());
}

void Overlay::SetVisibility(bool visible) {
    qzref::Journal::Record(GetObjectName().str(), "SetVisibility", {qzref::Fmt(visible)});
    _SetVisible(visible);
}

void Overlay::_Mark(uint64 itemId, unsigned int color, bool flag, bool preselected) {
    bool first = false;
    {
        std::lock_guard lock(mutex_);
        first = std::none_of(marks_.begin(), marks_.end(),
                             [&](Mark const& m) { return m.preselected == preselected; });
        std::erase_if(marks_, [&](Mark const& m) {
            return m.itemId == itemId && m.preselected == preselected;
        });
        marks_.push_back(Mark{itemId, color, flag, preselected});
    }
    if (first) {
        _TellAppearance(true, preselected ? eOverlayPreselected : eOverlaySelected);
    }
}

void Overlay::_TellAppearance(bool cameOn, unsigned int aspect) {
    BaseScene* scene = nullptr;
    {
        std::lock_guard lock(mutex_);
        scene = scene_;
    }
    if (scene == nullptr) {
        return;
    }
    std::set<OverlayAppearance> changed{static_cast<OverlayAppearance>(aspect)};
    std::set<OverlayAppearance> none;
    scene->_TellOverlayAppearance(du::SmartPtr<Overlay>(this), cameOn ? changed : none,
                                  cameOn ? none : changed);
}

dg::DPoint2D Overlay::_GetCenter() const {
    std::lock_guard lock(mutex_);
    return center_;
}

void Overlay::_SetName(std::string const& name) {
    std::lock_guard lock(mutex_);
    name_ = name;
}

void Overlay::_Transform(dg::DMat33 const& transform) {
    std::lock_guard lock(mutex_);
    matrix_ = transform * matrix_;
}

void Overlay::_SetVisible(bool visible) {
    {
        std::lock_guard lock(mutex_);
        if (visible_ == visible) {
            return;
        }
        visible_ = visible;
    }
    _TellAppearance(visible, eOverlayVisible);
}

void Overlay::_SetColorWord(unsigned int color) {
    std::lock_guard lock(mutex_);
    color_ = color;
}

void Overlay::_Detach() {
    std::lock_guard lock(mutex_);
    scene_ = nullptr;
}

void Overlay::_OnDestroy() {
    _Detach();
}

} // namespace qzk::ecad
