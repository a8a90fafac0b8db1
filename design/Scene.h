// The API scene of one design (a board or a schematic): gets the design loaded and keeps the
// outcome, so that an observer that comes after the load still learns how it ended.
//
// The load starts in Init. A design that is in memory already is taken over at once, inside
// Init; otherwise the kernel's loader reads it and its completion event calls back into the
// scene through a SceneLink, cut when the scene ends, so a completion that arrives late finds
// nothing to call.
#pragma once

#include "component/ComponentExport.h"
#include "dg/DPoint2D.h"
#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "du/Types.h"
#include "qzk/ecad/AnnoCVInfo.h"
#include "scene/BaseScene.h"

#include <atomic>
#include <string>
#include <vector>

namespace qzk {
class AnnotationSetObserver;
namespace ecad {
class EcadDesignData;
class ImageAnnotation;
class Scene;
class View;
} // namespace ecad
} // namespace qzk

namespace qzloader {
class EcadDesignLoaderEvent;
}

namespace qzkapp::ecad {

class AdditiveRandom;

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

    // Images and compare areas. The scene follows the kernel scene's annotation set: each image
    // with a picture is shown as an overlay and has a colour row; all area images share one row,
    // labelled by the catalogue, whose colour the first of them sets. An image id of 0 is
    // replaced by a random one. Every change posts IMAGE_CHANGED_EVENT, except the removal of an
    // area image that is not the last.
    void ImageCreated(du::SmartPtr<qzk::ecad::ImageAnnotation> const& image);
    void AreaImageCreated(du::SmartPtr<qzk::ecad::ImageAnnotation> const& image);
    void ImageModified(du::SmartPtr<qzk::ecad::ImageAnnotation> const& image);
    void RemoveImage(uint64 id);
    // Renames the row only; the kernel keeps the overlay's name.
    void RenameImage(uint64 id, std::wstring const& name);
    void GetImageColorVisInfo(std::vector<qzk::ecad::AnnoCVInfo>& out) const;
    // The host's colour panel: rows matched by position with the present ones reach the images
    // themselves (no undo of their own), the shared row reaches every area image. Takes no lock:
    // called on the host's thread, or under the lock of a caller that changes more.
    void SetImageColorVisInfo(std::vector<qzk::ecad::AnnoCVInfo> const& rows, ChangeSource source);
    // The way back for undo: the rows and the kernel's overlays, not the images.
    void UpdateImageCVInfo(std::vector<qzk::ecad::AnnoCVInfo> const& rows, ChangeSource source);
    // 0 while there is no area image. Not locked.
    uint64 GetCompareAreasImageId() const { return compareAreasImageId; }

    // The crosshair over the selected object, drawn by the main view (view 0).
    bool GetSelectCrossHair() const { return selectCrossHair; }
    void SetSelectCrossHair(bool on);
    void ToggleSelectCrossHair();
    // Shows the crosshair whenever the user wants one, object or not.
    void SetCrosshairPosition(dg::DPoint2D const& position);
    // A net stands for one of its children, the one on the sheet on view if any. A null object
    // only hides the crosshair; the view keeps the last object it was given.
    virtual void SetCrosshairObject(void* object);

protected:
    Scene(du::SmartPtr<qzk::ecad::Scene> const& scene, unsigned int highlightColor);

    // The sheet the object lies on; on a board, whatever sheet is on view.
    virtual unsigned int GetCrossHairObjectSheet(void* object);
    void* NetToChildObject(void* object);
    void _SetCrossHairObject() override;
    // An id for an image that came without one. Plain images, area images and board overlays
    // draw from sources seeded alike from the clock, so their draws can meet: an id that a row,
    // an area image or an overlay of the kernel scene has already is drawn again, as 0 is where
    // nonZero asks.
    uint64 _DrawFreeImageId(AdditiveRandom const& random, bool nonZero) const;
    // View 0 as an ECAD view; null when there is none.
    qzk::ecad::View* _GetMainView() const;
    // Whether the crosshair is to show for the present object, flag and sheet on view.
    bool _CrosshairShows(qzk::ecad::View& view) const;

    static unsigned char GetNextEventId();
    static unsigned char ECAD_DESIGN_LOADED_EVENT();
    static unsigned char SUBLAYERCOLORVIS_CHANGED_EVENT();
    static unsigned char IMAGE_CHANGED_EVENT();

    du::SmartPtr<qzk::ecad::EcadDesignData> designData;
    bool designLoading;
    unsigned short loadError;
    du::Symbol loadErrorText;
    // One row per plain image in order of creation, and at most one for all area images.
    std::vector<qzk::ecad::AnnoCVInfo> imageCV;
    std::vector<uint64> areaImageIds;
    uint64 compareAreasImageId;
    // The crosshair: whether the user wants it on the selected object, the object it marks (the
    // design owns it) and the sheet that object lies on (0xFFFFFFFF: none known).
    bool selectCrossHair;
    void* crosshairObject;
    dg::DPoint2D crosshairPosition;
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
