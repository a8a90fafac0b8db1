#include "design/Scene.h"

#include "dp/ReadWriteLock.h"
#include "qzk/AnnoSet.h"
#include "qzk/AnnotationSetObserver.h"
#include "qzk/EcadDesign.h"
#include "qzk/Kernel.h"
#include "qzk/ecad/EcadDesignData.h"
#include "qzk/ecad/ImageAnnotation.h"
#include "qzk/ecad/Scene.h"
#include "qzloader/EcadDesignLoaderEvent.h"
#include "qzloader/Loader.h"

#include <atomic>

namespace qzkapp::ecad {
namespace {

// The completion of the scene's load. The kernel owns it and delivers OnCompleted on the thread
// it chooses; the scene may have ended by then, and its link is cut when it does. A second load
// leaves the first event linked: should it still complete, the scene hears it.
class EcadDesignLoaderEvent : public qzloader::EcadDesignLoaderEvent {
public:
    explicit EcadDesignLoaderEvent(Scene* scene) : scene_(scene) {}
    ~EcadDesignLoaderEvent() override { DetachFromMessageLoop(); }

private:
    // The scene shows no progress of its own.
    void OnProgress(unsigned char /*percent*/) override {}

    void OnCompleted(int status) override;

    SceneLink<Scene> scene_;
};

// Follows the kernel scene's annotation set on the scene's behalf: images come, change and go.
// The scene unregisters it and cuts its link when it ends. Annotations that are no images are
// passed over.
class AnnotationSetObserver : public qzk::AnnotationSetObserver {
public:
    explicit AnnotationSetObserver(Scene* scene) : scene_(scene) {}
    ~AnnotationSetObserver() override { DetachFromMessageLoop(); }

    // The scene ends the tie itself, in OnDestroyQzkScene.
    void DetachObserver() override {}

private:
    void OnAnnotationAdded(du::SmartPtr<qzk::Annotation> const& annotation,
                           int64 /*position*/) override {
        if (auto image = du::DynamicCast<qzk::ecad::ImageAnnotation>(annotation)) {
            scene_.Call([&](Scene& scene) { scene.ImageCreated(image); });
        }
    }

    void OnAnnotationRemoved(du::SmartPtr<qzk::Annotation> const& annotation) override {
        if (auto image = du::DynamicCast<qzk::ecad::ImageAnnotation>(annotation)) {
            scene_.Call([&](Scene& scene) { scene.RemoveImage(image->Id()); });
        }
    }

    // A change that is not in place (a new picture or kind) takes the image out and puts it
    // in again, behind all others, with a new overlay.
    void OnAnnotationChanged(du::SmartPtr<qzk::Annotation> const& annotation,
                             bool inPlace) override {
        if (!inPlace) {
            OnAnnotationRemoved(annotation);
            OnAnnotationAdded(annotation, qzk::AnnoSet::POSITION_LAST);
            return;
        }
        if (auto image = du::DynamicCast<qzk::ecad::ImageAnnotation>(annotation)) {
            scene_.Call([&](Scene& scene) { scene.ImageModified(image); });
        }
    }

    SceneLink<Scene> scene_;
};

// The loader's results that tell of a file written by a newer version; the host hears of them
// through the kernel scene, whether the load then succeeded or not.
long const kNewerUnreadable = -8;
long const kNewerRead = 3;

void ReportNewerFile(qzk::ecad::BaseScene& kernelScene, long result) {
    if (result != kNewerUnreadable && result != kNewerRead) {
        return;
    }
    du::SmartPtr<qzk::EcadDesign> design;
    kernelScene.GetEcadDesign(design, 0);
    if (!design) {
        return;
    }
    if (result == kNewerUnreadable) {
        kernelScene.PostNewerFileError(design->GetURL());
    } else {
        kernelScene.PostNewerFileWarning(design->GetURL());
    }
}

// The kernel scene a Scene is built on is always an ECAD scene of one design.
qzk::ecad::Scene& DesignScene(du::SmartPtr<qzk::ecad::BaseScene> const& scene) {
    return static_cast<qzk::ecad::Scene&>(*scene);
}

} // namespace

// Defined behind Scene, whose protected handlers it calls as the load's owner.
class SceneLoadCompletion {
public:
    static void Complete(Scene& scene, int status, unsigned short number, du::Symbol const& text) {
        if (status == 0) {
            scene.OnDesignLoaded();
        } else {
            scene.OnDesignLoadFailed(number, text);
        }
    }
};

namespace {

void EcadDesignLoaderEvent::OnCompleted(int status) {
    scene_.Call([&](Scene& scene) {
        SceneLoadCompletion::Complete(scene, status, GetErrorNumber(), GetErrorText());
    });
}

} // namespace

Scene::Scene(du::SmartPtr<qzk::ecad::Scene> const& scene, unsigned int highlightColor)
    : BaseScene(du::SmartPtr<qzk::ecad::BaseScene>(scene), highlightColor), designLoading(false),
      loadError(0), compareAreasImageId(0), selectCrossHair(false), crosshairObject(nullptr),
      crosshairPosition(0.0, 0.0), crosshairSheet(0xFFFFFFFFu) {
    if (kernelScene) {
        kernelScene->SetOverlapColor(overlapColor);
    }
}

// The loader event's link was cut with the scene's others; the event itself is the kernel's.
Scene::~Scene() = default;

unsigned char Scene::GetBaseEventId() {
    return BaseScene::GetNextEventId();
}
unsigned char Scene::GetNextEventId() {
    return GetBaseEventId() + 3;
}
unsigned char Scene::ECAD_DESIGN_LOADED_EVENT() {
    return GetBaseEventId();
}
unsigned char Scene::SUBLAYERCOLORVIS_CHANGED_EVENT() {
    return GetBaseEventId() + 1;
}
unsigned char Scene::IMAGE_CHANGED_EVENT() {
    return GetBaseEventId() + 2;
}

void Scene::Init() {
    BaseScene::Init();
    du::SmartPtr<qzk::Kernel> kernel = qzk::Kernel::GetKernel();
    dp::WriteLocker lock(GetRWLock());
    DesignScene(kernelScene).ClearDesignLoadedFlag();
    LoadEcadDesign();

    // Followed only now: the load is under way, or even over, before images are heard of.
    du::SmartPtr<qzk::AnnoSet> annoSet;
    kernelScene->GetAnnoSet(annoSet);
    if (annoSet) {
        annotationSetObserver = du::MakeCounted<AnnotationSetObserver>(this);
        if (kernel) {
            kernel->ManageObject(du::SmartPtr<dom::ManagedObject>(annotationSetObserver.Get()));
        }
        annoSet->RegisterObserver(*annotationSetObserver);
    }
}

void Scene::LoadEcadDesign() {
    du::SmartPtr<qzk::Kernel> kernel = qzk::Kernel::GetKernel();
    dp::WriteLocker lock(GetRWLock());
    du::SmartPtr<qzk::EcadDesign> design;
    kernelScene->GetEcadDesign(design, 0);
    if (!design) {
        return;
    }
    if (du::DynamicCast<qzk::ecad::EcadDesignData>(design->GetEcadDesignData())) {
        // In memory already: taken over now, inside this call.
        OnDesignLoaded();
        return;
    }
    du::SmartPtr<qzloader::Loader> loader = qzloader::Loader::GetLoader();
    if (!kernel || !loader) {
        return;
    }
    // A former event keeps its link: should it still complete, the scene hears it.
    loaderEvent = du::MakeCounted<EcadDesignLoaderEvent>(this);
    kernel->ManageObject(du::SmartPtr<dom::ManagedObject>(loaderEvent.Get()));
    loader->LoadEcadDesign(design, loaderEvent.Get());
    designLoading = true;
}

void Scene::OnDesignLoaded() {
    dp::WriteLocker lock(GetRWLock());
    if (!kernelScene) {
        // Ended while the completion waited for the lock: nothing is left to fill or tell.
        return;
    }
    designLoading = false;
    loadError = 0;
    loadErrorText = du::Symbol::EMPTY;
    du::SmartPtr<qzk::EcadDesign> design;
    kernelScene->GetEcadDesign(design, 0);
    if (loaderEvent) {
        ReportNewerFile(*kernelScene, loaderEvent->GetResult());
    }
    designData =
        design ? du::DynamicCast<qzk::ecad::EcadDesignData>(design->GetEcadDesignData()) : nullptr;
    designLoaded.store(static_cast<bool>(designData), std::memory_order_release);
    loaderEvent = nullptr;
    // Observers hear of the design before the draw order and colours that follow from it.
    _PostEvent(ECAD_DESIGN_LOADED_EVENT(), static_cast<unsigned short>(0), du::Symbol::EMPTY);
    ResetDrawOrder(false);
    LoadColorVisInfo(du::SmartPtr<qzk::Operation>());
    DesignScene(kernelScene).FinishDesignLoad();
}

void Scene::OnDesignLoadFailed(unsigned short error, du::Symbol const& text) {
    dp::WriteLocker lock(GetRWLock());
    if (!kernelScene) {
        return;
    }
    designLoading = false;
    loadError = error;
    loadErrorText = text;
    if (loaderEvent) {
        ReportNewerFile(*kernelScene, loaderEvent->GetResult());
    }
    loaderEvent = nullptr;
    // designData is left alone: a scene that had no design keeps none.
    _PostEvent(ECAD_DESIGN_LOADED_EVENT(), error, text);
}

void Scene::OnDestroyQzkScene() {
    if (annotationSetObserver) {
        annotationSetObserver->Unregister();
        annotationSetObserver = nullptr;
    }
    // The kernel scene goes next; a load that completes after this finds the link cut.
    loaderEvent = nullptr;
    BaseScene::OnDestroyQzkScene();
}

bool Scene::IsDesignLoaded() const {
    // Unlocked, so that it can be asked from anywhere; the flag is published after designData.
    return designLoaded.load(std::memory_order_acquire);
}

IcmApiEcad* Scene::GetIcmApiEcad() const {
    // The completion writes designData under the lock, possibly on another thread.
    dp::ReadLocker lock(GetRWLock());
    return designData ? designData->GetIcmApiEcad() : nullptr;
}

} // namespace qzkapp::ecad
