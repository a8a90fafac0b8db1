// The API scene over two designs at once: gets both loaded, in either order, in memory already
// or through the loader, takes each one's data over and tells observers of each outcome, one
// load notice per design, with a flag that says which design it is (false the first).
//
// The colours and draw order that depend on both designs are made once, when the later of the
// two arrives. A scene opened from a saved comparison whose designs are not known yet waits for
// the table entry to complete and then starts its loads.
//
// The loader's completions and the entry's reach the scene through SceneLinks, cut when the
// scene ends, so a completion that arrives late finds nothing to call.
//
// Beside its own drawing, every compare scene shows the image difference cells and grids a host
// hands it, as overlays of the kernel scene. The host picks the ids and keeps track of its cells;
// the scene remembers only the grids, under the host's grid number. None of these operations
// locks, posts or can be undone: a host keeps its calls to them apart. Once the scene has ended
// they reach no kernel scene and do nothing there.
#pragma once

#include "component/ComponentExport.h"
#include "dg/Color.h"
#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "du/Types.h"
#include "scene/BaseScene.h"

#include <atomic>
#include <map>
#include <string>

namespace qzk {
class EcadDesign;
namespace ecad {
class CompareScene;
class EcadDesignData;
} // namespace ecad
} // namespace qzk

namespace qzloader {
class EcadDesignLoaderEvent;
}

namespace qzkapp::ecad {

class WaitForLoadEvent;

class QZECAD_EXPORT CompareScene : public BaseScene {
public:
    ~CompareScene() override;

    void Init() override;
    // Both designs' data are there; not locked.
    bool IsDesignLoaded() const override;
    // A compare scene always preselects in the fonted look.
    bool IsPreselectionFonted() const override;
    // Starts or restarts the load of both designs; a design that failed may be loaded anew.
    virtual void LoadEcadDesign();

    // Set once that design's load has succeeded; not locked.
    du::SmartPtr<qzk::ecad::EcadDesignData> const& GetFirstDesignData() const {
        return designData[0];
    }
    du::SmartPtr<qzk::ecad::EcadDesignData> const& GetSecondDesignData() const {
        return designData[1];
    }
    // Read under the scene's lock by the register pattern: a new observer that comes while
    // either design loads hears of it by the notice instead of a replay.
    bool _IsLoadInProgress() const { return designLoading[0] || designLoading[1]; }

    // Image difference cells and grids.
    //
    // A cell or grid is a picture overlay with the given id, made in overlay mode 1 whichever
    // it is, its grid flag (kindOneFlag) telling which; a grid is also entered in the grid map
    // under gridNumber, unless the number is taken, in which case the map keeps the former id
    // and the new grid lives on unmapped. The grid colour isn't applied: the grid takes color.
    // What the parameter, the mode and the flag do to the drawing is the kernel's.
    void AddImageDiffCellOrGrid(uint64 id, du::SmartPtr<qz2d::ecad::Design> const& design,
                                dg::Color const& color, std::string const& name,
                                unsigned int parameter, bool isGrid, int gridNumber, bool visible);
    // Removes the overlay, cell or grid alike; the grid map keeps an entry for it. 0 is none.
    void RemoveImageCell(uint64 id);
    // Unlike the other cell operations, 0 is looked up like any id.
    void SetCellColor(uint64 id, dg::Color const& color);
    void SetImageDiffCellVisibility(uint64 id, bool visible);
    bool IsGridExist(int gridNumber) const;
    // Sets, despite its name, the grid's visibility. An unknown number is entered with the id
    // 0, so that IsGridExist says true for it from then on (RemoveImageGrids then asks the
    // kernel to remove the overlay 0).
    void ToggleImageGrid(int gridNumber, bool visible);
    // Hides every mapped grid; the map and the visibility state stay.
    void HideImageGrids();
    // Removes every mapped grid and empties the map.
    void RemoveImageGrids();
    // Stores the colour and gives it to every mapped grid.
    void SetImageGridColor(dg::Color const& color);
    dg::Color const& GetImageGridColor() const { return imageGridColor; }
    // A flag kept for the host; no overlay depends on it.
    bool GetGridVisibilityState() const { return gridVisibilityState; }
    void ToggleGridVisibilityState() { gridVisibilityState = !gridVisibilityState; }

protected:
    // highlightColor: the colour word new highlights take.
    CompareScene(du::SmartPtr<qzk::ecad::CompareScene> const& scene, unsigned int highlightColor);

    // Loads one design: takes it over at once when it is in memory, else hands it to the loader.
    virtual void _LoadEcadDesign(du::SmartPtr<qzk::EcadDesign> const& design, bool second);
    // Takes one loaded design over and posts its notice; on the later of the two, the draw
    // order and colours of the pair are made first, without undo.
    virtual void OnDesignLoaded(bool second);
    // The loader's success: which design it was, the newer-file message, then the take-over.
    void OnDesignLoaded(qzloader::EcadDesignLoaderEvent* event);
    virtual void OnDesignLoadFailed(qzloader::EcadDesignLoaderEvent* event);
    void OnDestroyQzkScene() override;

    // The kernel scene as a compare scene; null once the scene has ended.
    qzk::ecad::CompareScene* _GetCompareKernelScene() const;
    // The first (false) or second design as the kernel scene knows it; null when it doesn't.
    du::SmartPtr<qzk::EcadDesign> _GetDesign(bool second) const;
    // Stores one design's data, with the write lock held, and mirrors it for the unlocked readers.
    void _StoreDesignData(bool second, du::SmartPtr<qzk::ecad::EcadDesignData> const& data);
    // Not locked: whether that design's data is there and is a design of its own, not the
    // picture of an overlay.
    bool _HasOwnDesignData(bool second) const;

    static unsigned char GetNextEventId();
    static unsigned char ECAD_DESIGN_LOADED_EVENT();
    static unsigned char SUBLAYERCOLORVIS_CHANGED_EVENT();

    // Indexed by `second`.
    du::SmartPtr<qzk::ecad::EcadDesignData> designData[2];
    du::SmartPtr<qzloader::EcadDesignLoaderEvent> loaderEvent[2];
    bool designLoading[2] = {false, false};
    // Grid number to overlay id; unguarded, like the two fields beside it.
    std::map<int, uint64> imageGridMap;
    dg::Color imageGridColor;
    bool gridVisibilityState = true;
    du::SmartPtr<WaitForLoadEvent> waitEvent;

private:
    friend class CompareLoadCompletion;

    static unsigned char GetBaseEventId();

    void InterpretLoadResult(bool second, long result) const;
    void OnBranchLinkLoadComplete();
    // Gives the entry's ticket back and lets the wait go; nothing when there is none.
    void _EndWait();

    // Mirror each designData for the unlocked readers.
    enum : unsigned char { kNoData, kOwnData, kOverlayData };
    std::atomic<unsigned char> designLoaded[2] = {kNoData, kNoData};
};

} // namespace qzkapp::ecad
