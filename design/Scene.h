// The API scene of one design (a board or a schematic): gets the design loaded and keeps the
// outcome, so that an observer that comes after the load still learns how it ended.
//
// The load starts in Init. A design that is in memory already is taken over at once, inside
// Init; otherwise the kernel's loader reads it and its completion event calls back into the
// scene through a SceneLink, cut when the scene ends, so a completion that arrives late finds
// nothing to call.
#pragma once

#include "component/ComponentExport.h"
#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "du/Types.h"
#include "scene/BaseScene.h"

#include <atomic>
#include <vector>

namespace qzk {
class AnnotationSetObserver;
namespace ecad {
class EcadDesignData;
class Scene;
} // namespace ecad
} // namespace qzk

namespace qzloader {
class EcadDesignLoaderEvent;
}

namespace qzkapp::ecad {

class QZECAD_EXPORT Scene : public BaseScene {
public:
    ~Scene() override;

    void Init() override;
    bool IsDesignLoaded() const override;
    IcmApiEcad* GetIcmApiEcad() const override;

protected:
    void OnDestroyQzkScene() override;

public:
    virtual void LoadEcadDesign();

protected:
    virtual void OnDesignLoaded();
    virtual void OnDesignLoadFailed(unsigned short error, du::Symbol const& text);

public:
    // Set once the load has succeeded; not locked.
    du::SmartPtr<qzk::ecad::EcadDesignData> const& GetDesignData() const { return designData; }

protected:
    Scene(du::SmartPtr<qzk::ecad::Scene> const& scene, unsigned int highlightColor);

    static unsigned char GetNextEventId();
    static unsigned char ECAD_DESIGN_LOADED_EVENT();
    static unsigned char SUBLAYERCOLORVIS_CHANGED_EVENT();
    static unsigned char IMAGE_CHANGED_EVENT();

    du::SmartPtr<qzk::ecad::EcadDesignData> designData;
    bool designLoading;
    unsigned short loadError;
    du::Symbol loadErrorText;
    // The crosshair: whether the user wants it on the selected object, the object it marks (the
    // design owns it) and the sheet that object lies on (0xFFFFFFFF: none known).
    bool selectCrossHair;
    void* crosshairObject;
    unsigned int crosshairSheet;
    du::SmartPtr<qzloader::EcadDesignLoaderEvent> loaderEvent;
    du::SmartPtr<qzk::AnnotationSetObserver> annotationSetObserver;

private:
    // Mirrors whether designData is set, for the unlocked IsDesignLoaded.
    std::atomic<bool> designLoaded{false};

    friend class SceneLoadCompletion;

    static unsigned char GetBaseEventId();
};

} // namespace qzkapp::ecad
