// The API scene that compares a board with a Gerber overlay: a compare scene with the board
// mix-in, around a kernel board-against-overlay compare scene.
//
// Of the two designs one is the board and the other a Gerber design, in either order. The board
// loads as any compare design does. The Gerber design is read by an overlay load of this scene's
// own and, once there, is no design of its own but an overlay over the board: the first entry of
// the mix-in's overlay list, "the overlay" below. So the scene counts as loaded as soon as the
// board is there, overlay or not, and the board's colours and draw order are made then. An
// overlay that arrives later brings its colour with it; one that arrived earlier is shown and
// recoloured when the board comes.
//
// The whole board takes one of the kernel's compare colours and the overlay the other: the side
// each design stands on decides which. The overlay's arrival is told as an overlay change from
// the overlay load, without a load notice; a failed overlay load is told by the load notice with
// the loader's number and text, and the board stays shown.
//
// Left to the implementer: the overlay load's base is given an empty path and an empty type
// symbol, which it only carries; the loader reads the Gerber design from the design's own path.
// The overlay's name is the catalogue's text for "LayerOverlay", the same for every overlay of
// this scene class.
#pragma once

#include "board/PCBSceneHelper.h"
#include "compare/CompareScene.h"
#include "component/ComponentExport.h"
#include "qzk/ClassType.h"
#include "qzk/Observable.h"
#include "qzk/ecad/GerberPrefs.h"
#include "qzk/ecad/GroupCVInfoSet.h"

#include <string>
#include <vector>

namespace dg {
class Color;
class DMat33;
class DPoint2D;
} // namespace dg

namespace qzk::ecad {
class EcadPCBData;
class OverlayLoaderEvent;
class PCBOvlCompareScene;
class PCBOvlCompareSceneObserver;
} // namespace qzk::ecad

namespace qzkapp::ecad {

class PCBOvlCompareSceneObserver;

class QZECAD_EXPORT PCBOvlCompareScene : public CompareScene, public PCBSceneHelper {
public:
    static qzk::ClassType const CLASS_TYPE;

    explicit PCBOvlCompareScene(du::SmartPtr<qzk::ecad::PCBOvlCompareScene> const& kernelScene);
    ~PCBOvlCompareScene() override;

    qzk::ClassType const& GetClassType() const override;

    void Init() override;
    // Not locked; the kernel owns the view's observer.
    void ViewCreated(du::SmartPtr<qzk::View> const& view) override;

private:
    void _OnDestroy() override;

public:
    // The board is there, whichever side it stands on; the overlay doesn't count. Not locked.
    bool IsDesignLoaded() const override;
    // The board's data, or null before it is there.
    du::SmartPtr<qzk::ecad::EcadDesignData> const& GetPCBData() const;

    // The board's layers; not locked, like the board scene's.
    short GetTopLayer() const override;
    short GetBottomLayer() const override;
    short GetSublayerHandle(short layer, std::string const& name) const;
    std::wstring GetSublayerLabel(short layer, short sublayer) override;
    void GetDefaultDrawOrder(std::vector<short>& out) const override;

    void GetColorVisInfo(qzk::ecad::SublayerPCB_CVSet& out) const override;
    // Every call reaches the kernel scene and posts, whether the set changed or not.
    void SetColorVisInfo(qzk::ecad::SublayerPCB_CVSet const& set,
                         du::SmartPtr<qzk::Operation> const& op, ChangeSource source) override;
    // Applies a partial set: entries for sublayers that the scene has replace them, others are
    // ignored. The merge and the write are two critical sections.
    void ApplyColorVisInfo(qzk::ecad::SublayerPCB_CVSet const& set,
                           du::SmartPtr<qzk::Operation> const& op) override;
    void GetOverlayColorVisInfo(std::vector<qzk::ecad::AnnoCVInfo>& out) const override;
    void UpdateOverlayCVInfo(std::vector<qzk::ecad::AnnoCVInfo> const& list,
                             ChangeSource source) override;

private:
    void _NotifyOverlayColorVisChanged(ChangeSource source) override;

public:
    // Those of the last overlay made.
    void GetGerberPrefs(qzk::ecad::GerberPrefs& out) const;
    // Removes the overlay and loads the Gerber design anew, under the preferences' placing and
    // shown; a load of the same design still under way is cancelled. Without a Gerber design
    // the overlay is gone and nothing loads.
    void LoadOverlay();
    // The same, read under prefs and placed at point by matrix, shown or not.
    void LoadOverlay(qzk::ecad::GerberPrefs const& prefs, dg::DMat33 const& matrix,
                     dg::DPoint2D const& point, bool visible);
    // Makes the overlay in the kernel and appends its entry; not undoable, and it hides no other
    // overlay. Null data does nothing at all.
    void OverlayCreated(du::SmartPtr<qzk::ecad::EcadPCBData> const& data, dg::Color const& color,
                        bool visible, qzk::ecad::GerberPrefs const& prefs,
                        dg::DPoint2D const& center, dg::DMat33 const& matrix);

protected:
    // The overlay load's success: the Gerber design's data is taken over, under the lock, and
    // made the overlay, outside it. An event that is neither of the scene's does nothing.
    void OnOverlayLoaded(qzk::ecad::OverlayLoaderEvent* event);

public:
    // These change the kernel's overlay only: no event, and the read lock will do. Nothing
    // without an overlay.
    void RotateOverlay(double angle);
    void FlipHorzOverlay();
    void FlipVertOverlay();

    // The board's default sublayers in its compare colour, and the overlay shown in the other;
    // with op, the former sublayers and overlay list are recorded, changed or not. The kernel
    // keeps the colours it has: they go to it with the next change of the set.
    void LoadColorVisInfo(du::SmartPtr<qzk::Operation> const& op) override;
    // The kernel's compare colours changed: the board's and the overlay's entries take them.
    // Neither the kernel nor the observers hear of it, and there is no undo.
    void SetColorInfo();
    // Sublayers and overlays at once; records a step for, and posts the event of, only the
    // families that differ. groups and images are not used: this scene changes neither.
    void SetFullColorVisInfo(qzk::ecad::GroupCVInfoSet const& groups,
                             qzk::ecad::SublayerPCB_CVSet const& sublayers,
                             std::vector<qzk::ecad::AnnoCVInfo> const& overlays,
                             std::vector<qzk::ecad::AnnoCVInfo> const& images,
                             du::SmartPtr<qzk::Operation> const& op, ChangeSource source);

    // Not undoable, posts nothing.
    void ToggleShowLogicalConnection() override;
    bool GetHighlightOnlyVisible() const override;
    void SetHighlightOnlyVisible(bool value, ChangeSource source) override;
    bool GetIsolateOnlyVisible() const override;
    void SetIsolateOnlyVisible(bool value, ChangeSource source) override;

    // Isolation and orientation behave as on a board scene (PCBScene.h).
    void Isolate(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                 du::SmartPtr<qzk::Operation> const& op) override;
    void AddToIsolated(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                       du::SmartPtr<qzk::Operation> const& op) override;
    void Deisolate(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                   du::SmartPtr<qzk::Operation> const& op) override;
    void ClearAllIsolated(du::SmartPtr<qzk::Operation> const& op) override;
    void ApplyIsolatedList() const override;
    using BaseScene::GetItems;
    using BaseScene::SetItems;
    void GetItems(qzk::ecad::ItemContainer<qzk::ecad::IsolateItem>& out) const override;
    void SetItems(qzk::ecad::ItemContainer<qzk::ecad::IsolateItem> const& items,
                  bool setViewsDirty) override;
    bool GetFlip() const override;
    short GetRotation() const override;
    void SetFlip(bool flip, du::SmartPtr<qzk::Operation> const& op, bool applyToView) override;
    void ToggleFlip(du::SmartPtr<qzk::Operation> const& op) override;
    void SetRotation(short rotation, du::SmartPtr<qzk::Operation> const& op,
                     bool applyToView) override;
    void AddRotation(short delta, du::SmartPtr<qzk::Operation> const& op) override;

    // An observer that registers while a design or the overlay loads hears of it by the notice
    // or the overlay change; otherwise it is brought up to date at once, when both the board
    // and the overlay are there.
    bool RegisterObserver(qzkapp::ecad::PCBOvlCompareSceneObserver& observer);
    bool UnregisterObserver(qzkapp::ecad::PCBOvlCompareSceneObserver& observer);

    static unsigned char GetBaseEventId();

protected:
    // A Gerber design goes to the overlay load, unless the scene was opened from a saved
    // comparison, whose host asks for it with LoadOverlay.
    void _LoadEcadDesign(du::SmartPtr<qzk::EcadDesign> const& design, bool second) override;
    void _InitObserver(qzkapp::ecad::PCBOvlCompareSceneObserver& observer);

    static unsigned char HIGHLIGHTONLYVISIBLE_CHANGED_EVENT();
    static unsigned char OVERLAY_CHANGED_EVENT();
    static unsigned char ORIENTATION_CHANGED_EVENT();
    static unsigned char ROTATION_CHANGED_EVENT();
    static unsigned char ISOLATEONLYVISIBLE_CHANGED_EVENT();

    // The kernel keeps it alive too (ManageObject); its link is cut when the scene ends.
    du::SmartPtr<qzk::ecad::PCBOvlCompareSceneObserver> sceneObserver;
    bool highlightOnlyVisible;
    bool isolateOnlyVisible;
    qzk::ecad::GerberPrefs gerberPrefs;

private:
    friend class qzk::Observable::DefaultRegisterInitHelper<
        PCBOvlCompareScene, qzkapp::ecad::PCBOvlCompareSceneObserver>;
    friend class OverlayLoadCompletion;
    template <class> friend class BoardSwitches;
    template <class> friend class IsolateOperations;
    template <class> friend class OrientationOperations;

    // Whether the board is the first design; not locked.
    bool _IsFirstPCB() const;
    du::SmartPtr<qzk::ecad::EcadDesignData> const& _GetPCBData() const;
    // With the write lock held: takes the overlay away, telling the observers while its entry
    // is still in the list.
    void _RemoveOverlay();
    // Starts the overlay load of design; prefs null: the preferences' Gerber reading and
    // placing, shown, whatever matrix, point and visible say.
    void _LoadOverlay(du::SmartPtr<qzk::EcadDesign> const& design, bool second,
                      qzk::ecad::GerberPrefs const* prefs, dg::DMat33 const& matrix,
                      dg::DPoint2D const& point, bool visible);
    // With the write lock held: the board's entries and the overlay's take the compare colours.
    void _SetColorInfo();
    // With the write lock held: the sublayer set to the kernel and the event.
    void _PushSublayers(unsigned int source);

    // What the shared isolate and orientation bodies ask of this scene.
    qzk::ecad::PCBOvlCompareScene* _IsolateKernelScene() const { return _GetOvlKernelScene(); }
    void _IsolateViewsDirty() const;
    void _InvertLayersForFlip(du::SmartPtr<qzk::Operation> const& op);

    // The kernel scene as a board-against-overlay compare scene; null once the scene has ended.
    qzk::ecad::PCBOvlCompareScene* _GetOvlKernelScene() const;
};

} // namespace qzkapp::ecad
