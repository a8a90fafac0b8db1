// A kernel ECAD scene's life, its link to the API scene, its designs and its notices.
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

void BaseScene::FinishDesignLoad() {
    qzref::Journal::Record(GetObjectName().str(), "FinishDesignLoad");
}

void BaseScene::FinishDesignLoad(bool second) {
    qzref::Journal::Record(GetObjectName().str(), "FinishDesignLoad", {qzref::Fmt(second)});
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

void BaseScene::DestroyScene() {
    du::SmartPtr<BaseScene> self(this);
    Destroy();
}

void BaseScene::_OnDestroy() {
    // The steps of this scene's operations act on the API scene, which ends next.
    _ForgetOperations();
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
    _PostKernelNotice(detail::PayloadEvent(id, std::move(push)));
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
