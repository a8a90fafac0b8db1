// The root of the ECAD kernel scenes: what every board, schematic and compare scene shares. It
// keeps the looks the layer gives to items on three appearance layers (selection 0, highlight 1,
// group 2), the draw order, the overlays, the switches, and the link to the API scene.
//
// Appearance: a look written later on a layer replaces the earlier look of that item on that
// layer; ClearItemAppearance and ClearGroupAppearances remove looks. Writes are accepted also
// outside a Begin/EndAppearanceUpdate bracket (the bracket is counted, and can be made to refuse
// through the scene's inspector, so that a test can see the layer give up).
//
// The API scene: SetApiScene keeps a counted reference to it. The kernel only knows the API
// scene's class by name, so SetApiScene is a template whose body is compiled where the class is
// complete (the layer's own code), and there converts the pointer to the qzk::Observable that
// every API scene is. The scene keeps both the typed pointer (for GetApiScene) and the counted
// qzk::Observable reference (to keep it alive and to end it). When the kernel scene is destroyed
// (Destroy, or the inspector's DestroyScene), it first calls Destroy on the API scene, outside
// every kernel mutex and holding a reference of its own for the duration, then ends its views.
//
// Designs: a scene's design comes from its source's file path; designs are shared per path
// between live kernel scenes, so a second scene of a design finds it loaded. A design leaves the
// share when the last scene that uses it ends.
//
// Every operation the layer calls is journalled (receiver: GetObjectName()) before it acts. The
// scene's state is guarded by a mutex of its own, never held while it calls out or posts.
// Notices to the kernel scene observers (BaseSceneObserver and the concrete observers) travel as
// messages; they are posted only when something changed, except where an operation's comment
// says otherwise.
#pragma once

#include "dg/Color.h"
#include "dg/DMat33.h"
#include "dg/DPoint2D.h"
#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "du/Types.h"
#include "qzk/Scene2D.h"
#include "qzk/ecad/AnnoCVInfo.h"
#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/Overlay.h"
#include "qzk/ecad/OverlayAppearance.h"

#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

namespace qzkapp::ecad {
class BaseScene;
}

namespace qzref {
class BaseSceneInspector;
}

namespace qz2d::ecad {
class Design;
}

namespace dom {
class ObserverProxy;
}

namespace qzk {
class EcadDesign;
class ViewableSource;
class World;
} // namespace qzk

namespace qzk::ecad {

class EcadPCBData;

class BaseScene : public qzk::Scene2D {
    friend class qzref::BaseSceneInspector;

public:
    enum AppearanceLayer : int { SelectionLayer = 0, HighlightLayer = 1, GroupLayer = 2 };

    // The look of one item on one layer. fonted and excludePlanesCondFigures are false on the
    // layers whose calls don't carry them.
    struct Look {
        unsigned int color = 0;
        bool fonted = false;
        bool excludePlanesCondFigures = false;
        bool operator==(Look const&) const = default;
    };

    ~BaseScene() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    // Api is the layer's qzkapp::ecad::BaseScene; the default argument is only named here. A
    // null pointer lets the API scene go.
    template <class Api = qzkapp::ecad::BaseScene>
    void SetApiScene(std::type_identity_t<Api>* scene) {
        _SetApiScene(scene, scene == nullptr ? nullptr : static_cast<qzk::Observable*>(scene));
    }
    qzkapp::ecad::BaseScene* GetApiScene() const;

    // Counts a redraw request (GetViewsDirtyCount); the views draw nothing in this kernel.
    void SetViewsDirty() const;
    void SetDrawOrder(std::vector<short> const& order, bool flag, bool invert);
    void SetOverlapColor(bool on);
    void GetGroupOverlapColor(dg::Color& out) const;
    void SetHighlightOnlyVisible(bool onlyVisible);

    // A new overlay replaces one of the same id (the old one is removed first, with its notice).
    du::SmartPtr<Overlay> CreateOverlay(du::SmartPtr<EcadPCBData> const& board, uint64 id,
                                        bool visible, dg::Color const& color, unsigned int kind,
                                        dg::DMat33 const& matrix, dg::DPoint2D const& center,
                                        std::wstring const& name);
    du::SmartPtr<Overlay> CreateOverlay(du::SmartPtr<qz2d::ecad::Design> const& design, uint64 id,
                                        bool visible, dg::Color const& color, unsigned int kind,
                                        dg::DMat33 const& matrix, unsigned int parameter,
                                        std::string const& name, bool flag);
    // Null for an id that names no overlay of this scene.
    du::SmartPtr<Overlay> FindOverlay(uint64 const& id);
    // The overlay operations ignore an unknown id.
    void RemoveOverlay(uint64 const& id);
    void RenameOverlay(uint64 id, std::string const& name);
    // Counter-clockwise by degrees, about the overlay's centre.
    void RotateOverlay(uint64 const& id, double angle);
    void FlipHorzOverlay(uint64 const& id);
    void FlipVertOverlay(uint64 const& id);
    // Each entry's colour and visibility go to the overlay of its id; other entries are ignored.
    void OverlayColorVisChanged(std::vector<AnnoCVInfo> const& list);
    // Told to the kernel scene observers as OnNewerFileError / OnNewerFileWarning.
    void PostNewerFileError(du::Symbol const& url);
    void PostNewerFileWarning(du::Symbol const& url);

    // The invert argument of the last SetDrawOrder; read directly by the layer.
    bool invertLayers = false;

    virtual void SetFillShapes(bool fill);
    // false while refusal is switched on (SetRefuseAppearanceUpdate); then the bracket is not
    // opened and the layer must not call EndAppearanceUpdate.
    virtual bool BeginAppearanceUpdate();
    virtual void ClearItemAppearance(AppearanceItem const& item, bool highlightLayer);
    virtual void SetItemSelectionAppearance(AppearanceItem const& item, dg::Color const& color,
                                            bool fonted, bool excludePlanesCondFigures);
    virtual void SetItemHighlightAppearance(AppearanceItem const& item, dg::Color const& color,
                                            bool fonted);
    virtual void SetItemGroupAppearance(AppearanceItem const& item, dg::Color const& color);
    // Drops every look of the layer; a layer number other than 0, 1, 2 is ignored.
    virtual void ClearGroupAppearances(int layer);
    // Closes one bracket; an End with no open bracket is counted (GetUnbalancedEndCount).
    virtual void EndAppearanceUpdate();
    // Whether the item has a look on the layer.
    virtual bool GetItemAppearanceCount(AppearanceItem const& item, int layer);
    virtual void SetDefaultSelectionAppearance(dg::Color const& color, bool flag);
    // Journals the id it is given and leaves it as it is: this kernel has no overlay selection
    // of its own to report.
    virtual void GetSelectedOverlay(uint64& id);
    // index 0 the scene's (first) design, 1 a compare scene's second; null otherwise.
    virtual void GetEcadDesign(du::SmartPtr<qzk::EcadDesign>& out, int index) const;
    // Counts the views the host says it made (GetViewCreatedCount); always true.
    virtual bool OnViewCreated();
    // Stored as the scene's image colours (GetImageColorVis), and each entry's colour and
    // visibility given to the overlay of its id, as OverlayColorVisChanged does.
    virtual void ApplyImageColorVis(std::vector<AnnoCVInfo> const& list);
    // Scene: the design has been taken over; CompareScene: the first (false) or second (true).
    // Here they only journal.
    virtual void FinishDesignLoad();
    virtual void FinishDesignLoad(bool second);

    // Kernel side: told by an overlay of this scene.
    void _TellOverlayAppearance(du::SmartPtr<Overlay> const& overlay,
                                std::set<OverlayAppearance> const& on,
                                std::set<OverlayAppearance> const& off);

protected:
    // paths: the designs' file paths, index 0 first; an empty path is no design.
    BaseScene(du::SmartPtr<qzk::World> const& world, du::SmartPtr<AnnoSetTableEntry> const& entry,
              std::vector<du::Symbol> const& paths);

    // Ends the API scene, lets go of the overlays and views. Derived scenes that override it
    // call it.
    void _OnDestroy() override;
    void OnViewAdded(du::SmartPtr<qzk::View> const& view) override;
    void OnViewRemoved(du::SmartPtr<qzk::View> const& view) override;

    // Posts one notice to the kernel scene observers; push writes the payload after the id.
    void _PostNotice(unsigned char id, std::function<void(dom::ObserverProxy&)> push = nullptr);
    // The switches whose changes reach the observers as OnAppearanceChanged.
    enum class Switch {
        FillShapes,
        HighlightOnlyVisible,
        OverlapColor,
        IsolateOnlyVisible,
        ShowLogicalConnection
    };
    // The aspect that stands for a switch in this scene's appearance notices (PCBAppearance or,
    // with schematic set, SchematicAppearance); -1 when the scene tells no such aspect.
    virtual int _AppearanceAspect(Switch which, bool& schematic) const;
    // Posts the switch's OnAppearanceChanged when the scene has an aspect for it.
    void _TellSwitch(Switch which, bool on);

    // Registers a kernel scene observer with a proxy of its own; no init helper.
    bool _RegisterSceneObserver(qzk::Observer& observer);
    bool _UnregisterSceneObserver(qzk::Observer& observer);

    // The design of an index, not journalled.
    du::SmartPtr<qzk::EcadDesign> _GetDesign(int index) const;

    void _SetFilePath(int index, du::Symbol const& path);
    // The design of a path, shared with the other live scenes of that path; null for "".
    static du::SmartPtr<qzk::EcadDesign> _AcquireDesign(du::Symbol const& path);
    static void _ReleaseDesign(du::Symbol const& path);

    // Guards the state of this class and of the derived scenes.
    mutable std::mutex stateMutex_;

private:
    void _SetApiScene(qzkapp::ecad::BaseScene* scene, qzk::Observable* observable);
    void _SetLook(AppearanceItem const& item, int layer, Look const& look);
    du::SmartPtr<Overlay> _AddOverlay(du::SmartPtr<Overlay> const& overlay);
    du::SmartPtr<Overlay> _Find(uint64 id) const;

    qzkapp::ecad::BaseScene* apiScene_ = nullptr;
    du::SmartPtr<qzk::Observable> apiSceneHold_;
    std::map<AppearanceItem, Look> looks_[3];
    bool refuseAppearanceUpdate_ = false;
    int openAppearanceUpdates_ = 0;
    unsigned int unbalancedEnds_ = 0;
    std::vector<short> drawOrder_;
    bool drawOrderFlag_ = false;
    bool overlapColor_ = false;
    dg::Color groupOverlapColor_;
    bool highlightOnlyVisible_ = false;
    bool fillShapes_ = false;
    unsigned int defaultSelectionColor_ = 0;
    mutable unsigned int viewsDirty_ = 0;
    unsigned int viewsCreated_ = 0;
    std::vector<du::SmartPtr<Overlay>> overlays_;
    std::vector<AnnoCVInfo> imageColorVis_;
    // A scene made from a table entry learns its paths when the entry is complete.
    void _ResolveEntryPaths() const;

    mutable std::vector<du::Symbol> paths_;
    mutable std::vector<du::SmartPtr<qzk::EcadDesign>> designs_;
};

} // namespace qzk::ecad
