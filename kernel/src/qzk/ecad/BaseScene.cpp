#include "qzk/ecad/BaseScene.h"

#include "SceneMessages.h"
#include "du/CommonAllocatorImpl.h"
#include "du/StringConversion.h"
#include "qzk/AnnoSetTableEntry.h"
#include "qzk/ClassType.h"
#include "qzk/EcadDesign.h"
#include "qzk/Instance.h"
#include "qzk/View.h"
#include "qzk/ViewableSource.h"
#include "qzk/ecad/BaseSceneObserver.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzref/RecordFmt.h"

#include "qz2d/ecad/Design.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace qzk::ecad {

namespace {

bool const registered = ClassType::RegisterClass(classid::EcadBaseScene, {classid::Scene2D});

// Designs shared per path between live kernel scenes. Each scene that uses a path holds a counted
// reference to the design, so the raw pointer here stays valid while the path has users.
struct SharedDesign {
    qzk::EcadDesign* design;
    int users;
};

std::mutex& DesignsMutex() {
    static std::mutex mutex;
    return mutex;
}

std::map<std::string, SharedDesign>& Designs() {
    static std::map<std::string, SharedDesign> designs;
    return designs;
}

bool ValidLayer(int layer) {
    return layer >= 0 && layer <= 2;
}

} // namespace

BaseScene::BaseScene(du::SmartPtr<qzk::World> const& world,
                     du::SmartPtr<AnnoSetTableEntry> const& entry,
                     std::vector<du::Symbol> const& paths)
    : qzk::Scene2D(world, entry) {
    (void)registered;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        _SetFilePath(static_cast<int>(i), paths[i]);
    }
}

BaseScene::~BaseScene() {
    for (du::Symbol const& path : paths_) {
        _ReleaseDesign(path);
    }
}

ClassType const& BaseScene::GetClassType() const {
    static ClassType const type(classid::EcadBaseScene);
    return type;
}

du::Symbol BaseScene::GetDebugClassName() const {
    return "qzk::ecad::BaseScene";
}

void BaseScene::_SetApiScene(qzkapp::ecad::BaseScene* scene, qzk::Observable* observable) {
    qzref::Journal::Record(GetObjectName().str(), "SetApiScene",
                           {scene == nullptr ? std::string("null") : std::string("api")});
    du::SmartPtr<qzk::Observable> held(observable);
    {
        std::lock_guard lock(stateMutex_);
        apiScene_ = scene;
        std::swap(apiSceneHold_, held);
    }
    // The former API scene may end here; it must not find this scene's mutex held.
}

qzkapp::ecad::BaseScene* BaseScene::GetApiScene() const {
    qzref::Journal::Record(GetObjectName().str(), "GetApiScene");
    std::lock_guard lock(stateMutex_);
    return apiScene_;
}

void BaseScene::SetViewsDirty() const {
    qzref::Journal::Record(GetObjectName().str(), "SetViewsDirty");
    std::lock_guard lock(stateMutex_);
    ++viewsDirty_;
}

void BaseScene::SetDrawOrder(std::vector<short> const& order, bool flag, bool invert) {
    qzref::Journal::Record(GetObjectName().str(), "SetDrawOrder",
                           {qzref::Fmt(order), qzref::Fmt(flag), qzref::Fmt(invert)});
    {
        std::lock_guard lock(stateMutex_);
        drawOrder_ = order;
        drawOrderFlag_ = flag;
        invertLayers = invert;
    }
    // Every call is a new order for the views, so every call is told.
    _PostNotice(BaseSceneObserver::DrawOrderChangedEventId);
}

void BaseScene::SetOverlapColor(bool on) {
    qzref::Journal::Record(GetObjectName().str(), "SetOverlapColor", {qzref::Fmt(on)});
    std::size_t count = 0;
    {
        std::lock_guard lock(stateMutex_);
        if (overlapColor_ == on) {
            return;
        }
        overlapColor_ = on;
        count = looks_[GroupLayer].size();
    }
    auto shortCount = static_cast<unsigned short>(
        std::min<std::size_t>(count, std::numeric_limits<unsigned short>::max()));
    _PostNotice(BaseSceneObserver::OverlapChangedEventId, [on, shortCount](dom::ObserverProxy& p) {
        p.PushBooleanValue(on);
        p.PushUInt16Value(shortCount);
    });
    _TellSwitch(Switch::OverlapColor, on);
}

void BaseScene::GetGroupOverlapColor(dg::Color& out) const {
    qzref::Journal::Record(GetObjectName().str(), "GetGroupOverlapColor");
    std::lock_guard lock(stateMutex_);
    out = groupOverlapColor_;
}

void BaseScene::SetHighlightOnlyVisible(bool onlyVisible) {
    qzref::Journal::Record(GetObjectName().str(), "SetHighlightOnlyVisible",
                           {qzref::Fmt(onlyVisible)});
    {
        std::lock_guard lock(stateMutex_);
        if (highlightOnlyVisible_ == onlyVisible) {
            return;
        }
        highlightOnlyVisible_ = onlyVisible;
    }
    _PostNotice(BaseSceneObserver::HighlightSettingsEventId,
                [onlyVisible](dom::ObserverProxy& p) { p.PushBooleanValue(onlyVisible); });
    _TellSwitch(Switch::HighlightOnlyVisible, onlyVisible);
}

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
    return _AddOverlay(Overlay::_MakeBoardOverlay(this, board, id, visible, color.GetAsHexUI(),
                                                  kind, matrix, center, du::WideStrToUtf8(name)));
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
        overlay->_Transform(dg::DMat33::Rotation(angle, overlay->GetCenter()));
        _PostNotice(BaseSceneObserver::OverlayUpdateEventId, [overlay](dom::ObserverProxy& p) {
            p.PushObjectValue(du::SmartPtr<du::RefCounted>(overlay.Get()));
        });
    }
}

void BaseScene::FlipHorzOverlay(uint64 const& id) {
    qzref::Journal::Record(GetObjectName().str(), "FlipHorzOverlay",
                           {qzref::Fmt(static_cast<unsigned long>(id))});
    if (du::SmartPtr<Overlay> overlay = _Find(id)) {
        overlay->_Transform(dg::DMat33::FlipHorizontal(overlay->GetCenter()));
        _PostNotice(BaseSceneObserver::OverlayUpdateEventId, [overlay](dom::ObserverProxy& p) {
            p.PushObjectValue(du::SmartPtr<du::RefCounted>(overlay.Get()));
        });
    }
}

void BaseScene::FlipVertOverlay(uint64 const& id) {
    qzref::Journal::Record(GetObjectName().str(), "FlipVertOverlay",
                           {qzref::Fmt(static_cast<unsigned long>(id))});
    if (du::SmartPtr<Overlay> overlay = _Find(id)) {
        overlay->_Transform(dg::DMat33::FlipVertical(overlay->GetCenter()));
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

void BaseScene::PostNewerFileError(du::Symbol const& url) {
    qzref::Journal::Record(GetObjectName().str(), "PostNewerFileError", {qzref::Fmt(url.str())});
    _PostNotice(BaseSceneObserver::NewerFileErrorEventId,
                [url](dom::ObserverProxy& p) { p.PushStringValue(url.str()); });
}

void BaseScene::PostNewerFileWarning(du::Symbol const& url) {
    qzref::Journal::Record(GetObjectName().str(), "PostNewerFileWarning", {qzref::Fmt(url.str())});
    _PostNotice(BaseSceneObserver::NewerFileWarningEventId,
                [url](dom::ObserverProxy& p) { p.PushStringValue(url.str()); });
}

void BaseScene::SetFillShapes(bool fill) {
    qzref::Journal::Record(GetObjectName().str(), "SetFillShapes", {qzref::Fmt(fill)});
    {
        std::lock_guard lock(stateMutex_);
        if (fillShapes_ == fill) {
            return;
        }
        fillShapes_ = fill;
    }
    _PostNotice(BaseSceneObserver::FillShapesChangedEventId,
                [fill](dom::ObserverProxy& p) { p.PushBooleanValue(fill); });
    _TellSwitch(Switch::FillShapes, fill);
}

bool BaseScene::BeginAppearanceUpdate() {
    qzref::Journal::Record(GetObjectName().str(), "BeginAppearanceUpdate");
    std::lock_guard lock(stateMutex_);
    if (refuseAppearanceUpdate_) {
        return false;
    }
    ++openAppearanceUpdates_;
    return true;
}

void BaseScene::ClearItemAppearance(AppearanceItem const& item, bool highlightLayer) {
    // Per item on hot paths: nothing is formatted while the journal is off.
    if (qzref::Journal::IsEnabled()) {
        qzref::Journal::Record(GetObjectName().str(), "ClearItemAppearance",
                               {qzref::Fmt(item), qzref::Fmt(highlightLayer)});
    }
    std::lock_guard lock(stateMutex_);
    looks_[highlightLayer ? HighlightLayer : SelectionLayer].erase(AppearanceItem(item));
}

void BaseScene::_SetLook(AppearanceItem const& item, int layer, Look const& look) {
    std::lock_guard lock(stateMutex_);
    // The key is copied as a plain AppearanceItem, so what a derived record adds never lives on.
    looks_[layer][AppearanceItem(item.object, item.firstHandle, item.secondHandle, item.icm)] =
        look;
}

void BaseScene::SetItemSelectionAppearance(AppearanceItem const& item, dg::Color const& color,
                                           bool fonted, bool excludePlanesCondFigures) {
    if (qzref::Journal::IsEnabled()) {
        qzref::Journal::Record(GetObjectName().str(), "SetItemSelectionAppearance",
                               {qzref::Fmt(item), qzref::Fmt(color), qzref::Fmt(fonted),
                                qzref::Fmt(excludePlanesCondFigures)});
    }
    _SetLook(item, SelectionLayer, Look{color.GetAsHexUI(), fonted, excludePlanesCondFigures});
}

void BaseScene::SetItemHighlightAppearance(AppearanceItem const& item, dg::Color const& color,
                                           bool fonted) {
    if (qzref::Journal::IsEnabled()) {
        qzref::Journal::Record(GetObjectName().str(), "SetItemHighlightAppearance",
                               {qzref::Fmt(item), qzref::Fmt(color), qzref::Fmt(fonted)});
    }
    _SetLook(item, HighlightLayer, Look{color.GetAsHexUI(), fonted, false});
}

void BaseScene::SetItemGroupAppearance(AppearanceItem const& item, dg::Color const& color) {
    if (qzref::Journal::IsEnabled()) {
        qzref::Journal::Record(GetObjectName().str(), "SetItemGroupAppearance",
                               {qzref::Fmt(item), qzref::Fmt(color)});
    }
    _SetLook(item, GroupLayer, Look{color.GetAsHexUI(), false, false});
}

void BaseScene::ClearGroupAppearances(int layer) {
    qzref::Journal::Record(GetObjectName().str(), "ClearGroupAppearances", {qzref::Fmt(layer)});
    if (!ValidLayer(layer)) {
        return;
    }
    std::lock_guard lock(stateMutex_);
    looks_[layer].clear();
}

void BaseScene::EndAppearanceUpdate() {
    qzref::Journal::Record(GetObjectName().str(), "EndAppearanceUpdate");
    std::lock_guard lock(stateMutex_);
    if (openAppearanceUpdates_ == 0) {
        ++unbalancedEnds_;
        return;
    }
    --openAppearanceUpdates_;
}

bool BaseScene::GetItemAppearanceCount(AppearanceItem const& item, int layer) {
    qzref::Journal::Record(GetObjectName().str(), "GetItemAppearanceCount",
                           {qzref::Fmt(item), qzref::Fmt(layer)});
    if (!ValidLayer(layer)) {
        return false;
    }
    std::lock_guard lock(stateMutex_);
    return looks_[layer].count(AppearanceItem(item)) != 0;
}

void BaseScene::SetDefaultSelectionAppearance(dg::Color const& color, bool flag) {
    qzref::Journal::Record(GetObjectName().str(), "SetDefaultSelectionAppearance",
                           {qzref::Fmt(color), qzref::Fmt(flag)});
    std::lock_guard lock(stateMutex_);
    defaultSelectionColor_ = color.GetAsHexUI();
}

void BaseScene::GetSelectedOverlay(uint64& id) {
    qzref::Journal::Record(GetObjectName().str(), "GetSelectedOverlay",
                           {qzref::Fmt(static_cast<unsigned long>(id))});
}

void BaseScene::_ResolveEntryPaths() const {
    du::SmartPtr<AnnoSetTableEntry> entry = GetAnnoEntry();
    if (!entry || !entry->IsComplete()) {
        return;
    }
    du::SmartPtr<qzk::Instance> instance;
    du::SmartPtr<qzk::ViewableSource> sources[2];
    entry->GetFirst(instance, sources[0]);
    entry->GetSecond(instance, sources[1]);
    for (int i = 0; i < 2; ++i) {
        if (!sources[i]) {
            continue;
        }
        du::Symbol path = sources[i]->GetFileSource();
        std::lock_guard lock(stateMutex_);
        if (paths_.size() <= static_cast<std::size_t>(i)) {
            paths_.resize(i + 1);
            designs_.resize(i + 1);
        }
        if (paths_[i].empty() && !path.empty()) {
            paths_[i] = path;
            designs_[i] = _AcquireDesign(path);
        }
    }
}

void BaseScene::GetEcadDesign(du::SmartPtr<qzk::EcadDesign>& out, int index) const {
    qzref::Journal::Record(GetObjectName().str(), "GetEcadDesign", {qzref::Fmt(index)});
    out = _GetDesign(index);
}

du::SmartPtr<qzk::EcadDesign> BaseScene::_GetDesign(int index) const {
    _ResolveEntryPaths();
    std::lock_guard lock(stateMutex_);
    return index >= 0 && static_cast<std::size_t>(index) < designs_.size() ? designs_[index]
                                                                           : nullptr;
}

bool BaseScene::OnViewCreated() {
    qzref::Journal::Record(GetObjectName().str(), "OnViewCreated");
    std::lock_guard lock(stateMutex_);
    ++viewsCreated_;
    return true;
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

void BaseScene::FinishDesignLoad() {
    qzref::Journal::Record(GetObjectName().str(), "FinishDesignLoad");
}

void BaseScene::FinishDesignLoad(bool second) {
    qzref::Journal::Record(GetObjectName().str(), "FinishDesignLoad", {qzref::Fmt(second)});
}

bool BaseScene::GetLook(AppearanceItem const& item, int layer, Look& out) const {
    if (!ValidLayer(layer)) {
        return false;
    }
    std::lock_guard lock(stateMutex_);
    auto it = looks_[layer].find(AppearanceItem(item));
    if (it == looks_[layer].end()) {
        return false;
    }
    out = it->second;
    return true;
}

std::size_t BaseScene::GetLookCount(int layer) const {
    std::lock_guard lock(stateMutex_);
    return ValidLayer(layer) ? looks_[layer].size() : 0;
}

std::map<AppearanceItem, BaseScene::Look> BaseScene::GetLooks(int layer) const {
    std::lock_guard lock(stateMutex_);
    return ValidLayer(layer) ? looks_[layer] : std::map<AppearanceItem, Look>();
}

int BaseScene::GetOpenAppearanceUpdates() const {
    std::lock_guard lock(stateMutex_);
    return openAppearanceUpdates_;
}

unsigned int BaseScene::GetUnbalancedEndCount() const {
    std::lock_guard lock(stateMutex_);
    return unbalancedEnds_;
}

std::vector<short> BaseScene::GetDrawOrder() const {
    std::lock_guard lock(stateMutex_);
    return drawOrder_;
}

bool BaseScene::GetDrawOrderFlag() const {
    std::lock_guard lock(stateMutex_);
    return drawOrderFlag_;
}

bool BaseScene::GetOverlapColor() const {
    std::lock_guard lock(stateMutex_);
    return overlapColor_;
}

bool BaseScene::GetHighlightOnlyVisible() const {
    std::lock_guard lock(stateMutex_);
    return highlightOnlyVisible_;
}

bool BaseScene::GetFillShapes() const {
    std::lock_guard lock(stateMutex_);
    return fillShapes_;
}

unsigned int BaseScene::GetDefaultSelectionColor() const {
    std::lock_guard lock(stateMutex_);
    return defaultSelectionColor_;
}

unsigned int BaseScene::GetViewsDirtyCount() const {
    std::lock_guard lock(stateMutex_);
    return viewsDirty_;
}

unsigned int BaseScene::GetViewCreatedCount() const {
    std::lock_guard lock(stateMutex_);
    return viewsCreated_;
}

std::vector<du::SmartPtr<Overlay>> BaseScene::GetOverlays() const {
    std::lock_guard lock(stateMutex_);
    return overlays_;
}

std::vector<AnnoCVInfo> BaseScene::GetImageColorVis() const {
    std::lock_guard lock(stateMutex_);
    return imageColorVis_;
}

du::SmartPtr<qzk::Observable> BaseScene::GetApiSceneObservable() const {
    std::lock_guard lock(stateMutex_);
    return apiSceneHold_;
}

du::Symbol BaseScene::GetFilePath(int index) const {
    _ResolveEntryPaths();
    std::lock_guard lock(stateMutex_);
    return index >= 0 && static_cast<std::size_t>(index) < paths_.size() ? paths_[index]
                                                                         : du::Symbol();
}

void BaseScene::SetRefuseAppearanceUpdate(bool refuse) {
    std::lock_guard lock(stateMutex_);
    refuseAppearanceUpdate_ = refuse;
}

void BaseScene::SetGroupOverlapColor(dg::Color const& color) {
    {
        std::lock_guard lock(stateMutex_);
        groupOverlapColor_ = color;
    }
    _PostNotice(BaseSceneObserver::GroupOverlapColorChangedEventId);
}

void BaseScene::DestroyScene() {
    du::SmartPtr<BaseScene> self(this);
    Destroy();
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

void BaseScene::_OnDestroy() {
    du::SmartPtr<qzk::Observable> api = GetApiSceneObservable();
    if (api) {
        api->Destroy();
    }
    std::vector<du::SmartPtr<Overlay>> overlays;
    du::SmartPtr<qzk::Observable> released;
    {
        std::lock_guard lock(stateMutex_);
        overlays.swap(overlays_);
        apiScene_ = nullptr;
        std::swap(released, apiSceneHold_);
    }
    for (du::SmartPtr<Overlay> const& overlay : overlays) {
        overlay->_Detach();
    }
    qzk::Scene2D::_OnDestroy();
}

void BaseScene::OnViewAdded(du::SmartPtr<qzk::View> const& view) {
    _PostNotice(BaseSceneObserver::ViewCreateEventId, [view](dom::ObserverProxy& p) {
        p.PushObjectValue(du::SmartPtr<du::RefCounted>(view.Get()));
    });
}

void BaseScene::OnViewRemoved(du::SmartPtr<qzk::View> const& view) {
    _PostNotice(BaseSceneObserver::ViewRemoveEventId, [view](dom::ObserverProxy& p) {
        p.PushObjectValue(du::SmartPtr<du::RefCounted>(view.Get()));
    });
}

void BaseScene::_PostNotice(unsigned char id, std::function<void(dom::ObserverProxy&)> push) {
    PostObservableEvent(detail::PayloadEvent(id, std::move(push)), false);
}

int BaseScene::_AppearanceAspect(Switch, bool& schematic) const {
    schematic = false;
    return -1;
}

void BaseScene::_TellSwitch(Switch which, bool on) {
    bool schematic = false;
    int aspect = _AppearanceAspect(which, schematic);
    if (aspect < 0) {
        return;
    }
    std::vector<unsigned int> changed{static_cast<unsigned int>(aspect)};
    std::vector<unsigned int> none;
    _PostNotice(BaseSceneObserver::AppearanceChangedEventId,
                [schematic, on, changed, none](dom::ObserverProxy& p) {
                    p.PushBooleanValue(schematic);
                    detail::PushUInts(p, on ? changed : none);
                    detail::PushUInts(p, on ? none : changed);
                });
}

void BaseScene::_SetFilePath(int index, du::Symbol const& path) {
    du::SmartPtr<qzk::EcadDesign> design = _AcquireDesign(path);
    std::lock_guard lock(stateMutex_);
    if (paths_.size() <= static_cast<std::size_t>(index)) {
        paths_.resize(index + 1);
        designs_.resize(index + 1);
    }
    paths_[index] = path;
    designs_[index] = design;
}

du::SmartPtr<qzk::EcadDesign> BaseScene::_AcquireDesign(du::Symbol const& path) {
    if (path.empty()) {
        return nullptr;
    }
    std::lock_guard lock(DesignsMutex());
    auto& designs = Designs();
    auto it = designs.find(path.str());
    if (it != designs.end()) {
        ++it->second.users;
        return du::SmartPtr<qzk::EcadDesign>(it->second.design);
    }
    du::SmartPtr<qzk::EcadDesign> design = qzk::EcadDesign::FromFile(path.str());
    designs.emplace(path.str(), SharedDesign{design.Get(), 1});
    return design;
}

void BaseScene::_ReleaseDesign(du::Symbol const& path) {
    if (path.empty()) {
        return;
    }
    std::lock_guard lock(DesignsMutex());
    auto& designs = Designs();
    auto it = designs.find(path.str());
    if (it != designs.end() && --it->second.users == 0) {
        designs.erase(it);
    }
}

} // namespace qzk::ecad

namespace qzk::ecad {

bool BaseScene::_RegisterSceneObserver(qzk::Observer& observer) {
    qzref::Journal::Record(GetObjectName().str(), "RegisterObserver");
    void* block = du::CommonAllocatorImpl::Allocate(sizeof(dom::ObserverProxy), nullptr);
    du::SmartPtr<dom::ObserverProxy> proxy(new (block) dom::ObserverProxy(observer));
    return _RegisterObserver(observer, proxy, nullptr);
}

bool BaseScene::_UnregisterSceneObserver(qzk::Observer& observer) {
    qzref::Journal::Record(GetObjectName().str(), "UnregisterObserver");
    return DoUnregisterObserver(observer);
}

} // namespace qzk::ecad
