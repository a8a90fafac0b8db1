#include "compare/CompareScene.h"

#include "dg/Color.h"
#include "dp/ReadWriteLock.h"
#include "qzk/AnnoSetTableEntry.h"
#include "qzk/AsyncEvent.h"
#include "qzk/EcadDesign.h"
#include "qzk/Kernel.h"
#include "qzk/Preferences.h"
#include "qzk/World.h"
#include "qzk/ecad/CompareScene.h"
#include "qzk/ecad/EcadDesignData.h"
#include "qzloader/EcadDesignLoaderEvent.h"
#include "qzloader/Loader.h"

namespace qzkapp::ecad {

// Defined behind CompareScene, whose protected handlers it calls as the owner of its loads.
class CompareLoadCompletion {
public:
    static void Loaded(CompareScene& scene, qzloader::EcadDesignLoaderEvent* event) {
        scene.OnDesignLoaded(event);
    }
    static void Failed(CompareScene& scene, qzloader::EcadDesignLoaderEvent* event) {
        scene.OnDesignLoadFailed(event);
    }
    static void EntryComplete(CompareScene& scene) { scene.OnBranchLinkLoadComplete(); }
};

// The scene's wait for its saved comparison's entry to be complete. The entry holds it until
// its ticket comes back; the scene may end first, and cuts the link when it does.
class WaitForLoadEvent : public qzk::AsyncEvent {
public:
    WaitForLoadEvent(CompareScene* scene, du::SmartPtr<qzk::AnnoSetTableEntry> entry)
        : qzk::AsyncEvent(true), scene_(scene), entry_(std::move(entry)) {}
    ~WaitForLoadEvent() override { DetachFromMessageLoop(); }

    du::SmartPtr<qzk::AnnoSetTableEntry> const& Entry() const { return entry_; }
    unsigned int Ticket() const { return ticket_; }
    void SetTicket(unsigned int ticket) { ticket_ = ticket; }
    // Ends the tie both ways: the entry holds this event while its ticket is open, so the event
    // lets the entry go, or a ticket that is never given back would keep both alive.
    void Cut() {
        scene_.Cut();
        entry_ = nullptr;
    }

private:
    // Whatever the status: the entry has done what it will do.
    void OnCompleted(int /*status*/) override {
        scene_.Call([](CompareScene& scene) { CompareLoadCompletion::EntryComplete(scene); });
    }

    SceneLink<CompareScene> scene_;
    du::SmartPtr<qzk::AnnoSetTableEntry> entry_;
    unsigned int ticket_ = 0;
};

namespace {

// The completion of one design's load; the scene tells which design by comparing the event
// with the two it keeps.
class EcadDesignLoaderEvent : public qzloader::EcadDesignLoaderEvent {
public:
    explicit EcadDesignLoaderEvent(CompareScene* scene) : scene_(scene) {}
    ~EcadDesignLoaderEvent() override { DetachFromMessageLoop(); }

private:
    void OnProgress(unsigned char /*percent*/) override {}

    void OnCompleted(int status) override {
        if (status != StatusSuccess && status != StatusError && status != StatusCanceled) {
            return;
        }
        scene_.Call([this, status](CompareScene& scene) {
            if (status == StatusSuccess) {
                CompareLoadCompletion::Loaded(scene, this);
            } else {
                CompareLoadCompletion::Failed(scene, this);
            }
        });
    }

    SceneLink<CompareScene> scene_;
};

char const* const kFirstColorKey = "Compare/Ecad_Compare/compare_color_a";
char const* const kSecondColorKey = "Compare/Ecad_Compare/compare_color_b";
char const* const kCommonColorKey = "Compare/Ecad_Compare/compare_color_common";

// The colour grids have until the host gives one: a blue.
unsigned int const kImageGridColor = 0x01386FD5;

// The loader's results that tell of a file written by a newer version.
long const kNewerUnreadable = -8;
long const kNewerRead = 3;

void Manage(du::SmartPtr<qzk::Kernel> const& kernel, dom::ManagedObject* object) {
    if (kernel) {
        kernel->ManageObject(du::SmartPtr<dom::ManagedObject>(object));
    }
}

} // namespace

CompareScene::CompareScene(du::SmartPtr<qzk::ecad::CompareScene> const& scene,
                           unsigned int highlightColor)
    : BaseScene(du::SmartPtr<qzk::ecad::BaseScene>(scene), highlightColor),
      imageGridColor(kImageGridColor, true) {}

// The links of the loader events and the wait were cut with the scene's others.
CompareScene::~CompareScene() {
    _EndWait();
}

unsigned char CompareScene::GetBaseEventId() {
    return BaseScene::GetNextEventId();
}
unsigned char CompareScene::GetNextEventId() {
    return GetBaseEventId() + 2;
}
unsigned char CompareScene::ECAD_DESIGN_LOADED_EVENT() {
    return GetBaseEventId();
}
unsigned char CompareScene::SUBLAYERCOLORVIS_CHANGED_EVENT() {
    return GetBaseEventId() + 1;
}

qzk::ecad::CompareScene* CompareScene::_GetCompareKernelScene() const {
    return dynamic_cast<qzk::ecad::CompareScene*>(kernelScene.Get());
}

du::SmartPtr<qzk::EcadDesign> CompareScene::_GetDesign(bool second) const {
    du::SmartPtr<qzk::EcadDesign> design;
    if (qzk::ecad::CompareScene* compare = _GetCompareKernelScene()) {
        if (second) {
            compare->GetSecondDesign(design);
        } else {
            compare->GetFirstDesign(design);
        }
    }
    return design;
}

bool CompareScene::IsDesignLoaded() const {
    return designLoaded[0].load(std::memory_order_acquire) != kNoData &&
           designLoaded[1].load(std::memory_order_acquire) != kNoData;
}

void CompareScene::_StoreDesignData(bool second,
                                    du::SmartPtr<qzk::ecad::EcadDesignData> const& data) {
    int const index = second ? 1 : 0;
    designData[index] = data;
    unsigned char const kind = !data ? kNoData : data->IsOverlayData() ? kOverlayData : kOwnData;
    designLoaded[index].store(kind, std::memory_order_release);
}

bool CompareScene::_HasOwnDesignData(bool second) const {
    return designLoaded[second ? 1 : 0].load(std::memory_order_acquire) == kOwnData;
}

bool CompareScene::IsPreselectionFonted() const {
    return true;
}

void CompareScene::Init() {
    // A key that is missing leaves its colour black.
    dg::Color first(0.0f, 0.0f, 0.0f, 1.0f);
    dg::Color second(0.0f, 0.0f, 0.0f, 1.0f);
    dg::Color common(0.0f, 0.0f, 0.0f, 1.0f);
    du::SmartPtr<qzk::World> world = qzk::World::GetWorld();
    if (du::SmartPtr<qzk::Preferences> preferences = world ? world->GetPreferences() : nullptr) {
        preferences->GetIntUIAsColor(kFirstColorKey, first, nullptr);
        preferences->GetIntUIAsColor(kSecondColorKey, second, nullptr);
        preferences->GetIntUIAsColor(kCommonColorKey, common, nullptr);
    }
    if (qzk::ecad::CompareScene* compare = _GetCompareKernelScene()) {
        compare->SetFirstItemColor(first);
        compare->SetSecondItemColor(second);
        compare->SetCommonItemColor(common);
    }
    BaseScene::Init();
    LoadEcadDesign();
}

void CompareScene::LoadEcadDesign() {
    du::SmartPtr<qzk::Kernel> kernel = qzk::Kernel::GetKernel();
    dp::WriteLocker lock(GetRWLock());
    if (!kernelScene) {
        return;
    }
    du::SmartPtr<qzk::EcadDesign> const first = _GetDesign(false);
    du::SmartPtr<qzk::EcadDesign> const second = _GetDesign(true);
    if (first && second) {
        _LoadEcadDesign(first, false);
        _LoadEcadDesign(second, true);
        return;
    }
    // Opened from a saved comparison whose designs are still to come: wait for its entry. A
    // missing design with no open entry stays missing, and nobody is told.
    du::SmartPtr<qzk::AnnoSetTableEntry> entry = kernelScene->GetAnnoEntry();
    if (!entry || entry->complete.load(std::memory_order_acquire)) {
        return;
    }
    // A former wait is let go without giving its ticket back: its entry is the same one, and
    // the ticket stays open until the entry lets it go.
    if (waitEvent) {
        waitEvent->Cut();
    }
    waitEvent = du::MakeCounted<WaitForLoadEvent>(this, entry);
    Manage(kernel, waitEvent.Get());
    waitEvent->SetTicket(entry->AddLoadRequirement(waitEvent.Get()));
}

void CompareScene::_LoadEcadDesign(du::SmartPtr<qzk::EcadDesign> const& design, bool second) {
    if (du::DynamicCast<qzk::ecad::EcadDesignData>(design->GetEcadDesignData())) {
        // In memory already: taken over now, inside the caller's lock.
        OnDesignLoaded(second);
        return;
    }
    du::SmartPtr<qzk::Kernel> kernel = qzk::Kernel::GetKernel();
    du::SmartPtr<qzloader::Loader> loader = qzloader::Loader::GetLoader();
    if (!kernel || !loader) {
        return;
    }
    // A former event of this design keeps its link: should it still complete, the scene finds
    // it is neither of its two and passes it over.
    auto event = du::MakeCounted<EcadDesignLoaderEvent>(this);
    loaderEvent[second ? 1 : 0] = event;
    Manage(kernel, event.Get());
    loader->LoadEcadDesign(design, event.Get());
    // Set whatever the loader said: a refused load still counts as under way.
    designLoading[second ? 1 : 0] = true;
}

void CompareScene::OnDesignLoaded(qzloader::EcadDesignLoaderEvent* event) {
    if (event == nullptr) {
        return;
    }
    bool second = false;
    {
        dp::WriteLocker lock(GetRWLock());
        if (event == loaderEvent[0].Get()) {
            second = false;
        } else if (event == loaderEvent[1].Get()) {
            second = true;
        } else {
            return;
        }
        // The kernel holds the event for the duration of its completion.
        loaderEvent[second ? 1 : 0] = nullptr;
    }
    // The newer-file message comes ahead of the notice, outside the lock.
    InterpretLoadResult(second, event->GetResult());
    OnDesignLoaded(second);
}

void CompareScene::OnDesignLoaded(bool second) {
    dp::WriteLocker lock(GetRWLock());
    if (!kernelScene) {
        // Ended while the completion waited for the lock: nothing is left to fill or tell.
        return;
    }
    int const index = second ? 1 : 0;
    designLoading[index] = false;
    du::SmartPtr<qzk::EcadDesign> const design = _GetDesign(second);
    du::SmartPtr<qzk::ecad::EcadDesignData> data =
        design ? du::DynamicCast<qzk::ecad::EcadDesignData>(design->GetEcadDesignData()) : nullptr;
    if (data != designData[index]) {
        _StoreDesignData(second, data);
    }
    if (IsDesignLoaded()) {
        // The pair is complete: its colours are in place before anyone hears of it.
        ResetDrawOrder(false);
        LoadColorVisInfo(du::SmartPtr<qzk::Operation>());
    }
    if (qzk::ecad::CompareScene* compare = _GetCompareKernelScene()) {
        compare->FinishDesignLoad(second);
    }
    _PostEvent(ECAD_DESIGN_LOADED_EVENT(), second, static_cast<unsigned short>(0),
               du::Symbol::EMPTY);
}

void CompareScene::OnDesignLoadFailed(qzloader::EcadDesignLoaderEvent* event) {
    if (event == nullptr) {
        return;
    }
    unsigned short const error = event->GetErrorNumber();
    du::Symbol const text = event->GetErrorText();
    dp::WriteLocker lock(GetRWLock());
    if (!kernelScene) {
        return;
    }
    // An event that is neither of the two is told all the same; its flag then means nothing.
    bool second = false;
    if (event == loaderEvent[0].Get() || event == loaderEvent[1].Get()) {
        second = event == loaderEvent[1].Get();
        loaderEvent[second ? 1 : 0] = nullptr;
        designLoading[second ? 1 : 0] = false;
        InterpretLoadResult(second, event->GetResult());
    }
    // The design data stays as it was: the other design's load goes on unhindered.
    _PostEvent(ECAD_DESIGN_LOADED_EVENT(), second, error, text);
}

void CompareScene::InterpretLoadResult(bool second, long result) const {
    if (result != kNewerUnreadable && result != kNewerRead) {
        return;
    }
    // A success reports outside the write lock; the read lock keeps the scene's end apart.
    dp::ReadLocker lock(GetRWLock());
    du::SmartPtr<qzk::EcadDesign> const design = _GetDesign(second);
    if (!design || !kernelScene) {
        return;
    }
    if (result == kNewerUnreadable) {
        kernelScene->PostNewerFileError(design->GetURL());
    } else {
        kernelScene->PostNewerFileWarning(design->GetURL());
    }
}

void CompareScene::OnBranchLinkLoadComplete() {
    // The entry's ticket stays open until the loads have started.
    LoadEcadDesign();
    dp::WriteLocker lock(GetRWLock());
    _EndWait();
}

void CompareScene::_EndWait() {
    if (!waitEvent) {
        return;
    }
    du::SmartPtr<qzk::AnnoSetTableEntry> const entry = waitEvent->Entry();
    waitEvent->Cut();
    if (entry) {
        entry->CompleteLoadRequirement(waitEvent->Ticket());
    }
    waitEvent = nullptr;
}

void CompareScene::OnDestroyQzkScene() {
    // The kernel scene goes next; completions that come after this find their links cut.
    loaderEvent[0] = nullptr;
    loaderEvent[1] = nullptr;
    _EndWait();
    BaseScene::OnDestroyQzkScene();
}

} // namespace qzkapp::ecad
