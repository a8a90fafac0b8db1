// The API scene that compares a board with a schematic: a compare scene with both mix-ins, the
// board's (colour set, isolation, orientation) and the schematic's (sublayer map, sheets),
// around a kernel board-against-schematic compare scene. The two designs may come in either
// order.
//
// Which design is the board is known in Init, from the kernel's word on the first design's
// source, before either has loaded; the board operations and the schematic operations read the
// design of their side by it. GetPCBData and GetSchData instead ask the loaded data themselves.
// A scene made from a saved comparison whose entry is not complete at Init has no first source
// yet, and takes the board to be the second design.
//
// The scene keeps two draw orders, one per side, with a family of operations parallel to the
// single list of every other scene (which plays no part here); each side's changes reach the
// kernel and the observers apart. Isolation redraws only the board's views.
//
// Left to the implementer, decided here:
// - The kernel's flag of SetPCBDrawOrder is false for previews and for the lists that
//   GetDefaultDrawOrder makes, true for moves, resets, inversions and applied orders.
// - IsSchematicData is a virtual query of the kernel's design data.
#pragma once

#include "board/PCBSceneHelper.h"
#include "compare/CompareScene.h"
#include "component/ComponentExport.h"
#include "du/Types.h"
#include "qzk/ClassType.h"
#include "qzk/Observable.h"
#include "qzk/ecad/AnnoCVInfo.h"
#include "qzk/ecad/GroupCVInfoSet.h"
#include "schematic/SchSceneHelper.h"

#include <string>
#include <vector>

namespace qzk {
class SelectionItem;
namespace ecad {
class PCBSchCompareScene;
class PCBSchCompareSceneObserver;
} // namespace ecad
} // namespace qzk

namespace qzkapp::ecad {

class PCBSchCompareSceneObserver;

class QZECAD_EXPORT PCBSchCompareScene : public CompareScene,
                                         public PCBSceneHelper,
                                         public SchSceneHelper {
public:
    static qzk::ClassType const CLASS_TYPE;

    explicit PCBSchCompareScene(du::SmartPtr<qzk::ecad::PCBSchCompareScene> const& kernelScene);
    ~PCBSchCompareScene() override;

    qzk::ClassType const& GetClassType() const override;

private:
    void _OnDestroy() override;

public:
    void Init() override;
    // Not locked; a board view and a schematic view each get their own observer, and the
    // kernel owns it. A new view is not fitted.
    void ViewCreated(du::SmartPtr<qzk::View> const& view) override;

    // The loaded design that is (or isn't) schematic data, the first one looked at first; an
    // empty pointer while there is none. Not locked.
    du::SmartPtr<qzk::ecad::EcadDesignData> const& GetPCBData() const;
    du::SmartPtr<qzk::ecad::EcadDesignData> const& GetSchData() const;

    // Both sides' default colours, without comparing them with the present ones.
    void LoadColorVisInfo(du::SmartPtr<qzk::Operation> const& op) override;
    void LoadPCBColorVisInfo(du::SmartPtr<qzk::Operation> const& op, bool loadBase);
    // Posts only when the schematic side holds a schematic.
    void LoadSchematicColorVisInfo(du::SmartPtr<qzk::Operation> const& op, bool loadBase);

    // The board's colour set: every call reaches the kernel and posts the board's event, equal
    // set or not.
    void GetColorVisInfo(qzk::ecad::SublayerPCB_CVSet& out) const override;
    void SetColorVisInfo(qzk::ecad::SublayerPCB_CVSet const& set,
                         du::SmartPtr<qzk::Operation> const& op, ChangeSource source) override;
    // Entries for sublayers the board has replace them, others are ignored. The merge and the
    // write are two critical sections.
    void ApplyColorVisInfo(qzk::ecad::SublayerPCB_CVSet const& set,
                           du::SmartPtr<qzk::Operation> const& op) override;
    void GetDefaultColorVisInfo(qzk::ecad::SublayerPCB_CVSet& out, bool flag) const;

    // The schematic's sublayer map: every call reaches the kernel and posts the schematic's
    // event, equal map or not.
    void GetSublayerColorVisInfo(SublayerMap& out) const override;
    void SetSublayerColorVisInfo(SublayerMap const& map, du::SmartPtr<qzk::Operation> const& op,
                                 ChangeSource source) override;
    // Takes only the handles the scene has, and posts even when it took none. Not locked.
    void ApplySublayerColorVisInfo(SublayerMap const& map, du::SmartPtr<qzk::Operation> const& op);

    // The board's family alone: groups, overlays and images are left as they are.
    void SetFullColorVisInfo(qzk::ecad::GroupCVInfoSet const& groups,
                             qzk::ecad::SublayerPCB_CVSet const& sublayers,
                             std::vector<qzk::ecad::AnnoCVInfo> const& overlays,
                             std::vector<qzk::ecad::AnnoCVInfo> const& images,
                             du::SmartPtr<qzk::Operation> const& op, ChangeSource source);
    // The schematic's family alone: groups and images are left as they are.
    void SetFullColorVisInfo(qzk::ecad::GroupCVInfoSet const& groups,
                             std::vector<qzk::ecad::AnnoCVInfo> const& images,
                             SublayerMap const& sublayers, du::SmartPtr<qzk::Operation> const& op,
                             ChangeSource source);

    // The schematic's layer names; the board's labels, handles and outer layers. Only the name
    // is locked.
    wchar_t const* GetLayerName(short layer) const override;
    std::wstring GetSublayerLabel(short layer, short sublayer) override;
    short GetSublayerHandle(short layer, std::string const& name) const;
    short GetTopLayer() const override;
    short GetBottomLayer() const override;

    // Not undoable, posts nothing.
    void ToggleShowLogicalConnection() override;
    bool GetHighlightOnlyVisible() const override;
    bool GetIsolateOnlyVisible() const override;
    void SetHighlightOnlyVisible(bool value, ChangeSource source) override;
    void SetIsolateOnlyVisible(bool value, ChangeSource source) override;
    // Changes the kernel's selection on the host's behalf, and tells the scene of it.
    void SetSelectedItems(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items);

    // Sheets of the schematic: as on a schematic scene, but a sheet change leaves the crosshair
    // alone.
    void PageNav(short page, du::SmartPtr<qzk::ecad::BaseView> const& view) override;
    void UpdateCurrentViewState(du::SmartPtr<qzk::ecad::BaseView> const& view,
                                unsigned int page) override;

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
    // A flip inverts the board's list without an undo step of its own: undoing the flip flips
    // back, which inverts it again.
    bool GetFlip() const override;
    short GetRotation() const override;
    void SetFlip(bool flip, du::SmartPtr<qzk::Operation> const& op, bool applyToView) override;
    void ToggleFlip(du::SmartPtr<qzk::Operation> const& op) override;
    void SetRotation(short rotation, du::SmartPtr<qzk::Operation> const& op,
                     bool applyToView) override;
    void AddRotation(short delta, du::SmartPtr<qzk::Operation> const& op) override;

    // The two draw orders. In every operation `pcb` chooses the board's list, otherwise the
    // schematic's; the schematic's list has no inversion.
    void GetPCBDrawOrder(std::vector<short>& out) const;
    void GetSchDrawOrder(std::vector<short>& out) const;
    void GetPCBDefaultDrawOrder(std::vector<short>& out) const;
    void GetSchDefaultDrawOrder(std::vector<short>& out) const;
    // Both default lists straight into the two lists and the kernel, out untouched: this is how
    // the reset that follows a load reaches them. Writes the lists under the read lock.
    void GetDefaultDrawOrder(std::vector<short>& out) const override;
    // As the single list's move: index counts in the list without the layer.
    void DrawOrderMoveLayer(bool pcb, short layer, uint64 index, bool undo);
    // Changes only what the kernel shows: a layer on top (greater than 0), the real list back
    // (0) or the default list (lower than 0).
    void PreviewDrawOrderTopLayer(bool pcb, short layer);
    // Always makes an undo entry, also when a redo of a reset resets again.
    void ResetPCBSchDrawOrder(bool pcb);
    // The caller records op.
    void ApplyDrawOrder(bool pcb, std::vector<short> const& order, bool invert,
                        du::SmartPtr<qzk::Operation> const& op);
    // Reverses the board's list; the caller records op.
    void PCBSchDrawOrderInvertLayers(du::SmartPtr<qzk::Operation> const& op);
    void SetPCBDrawOrder(std::vector<short> const& order, bool flag, bool invert);
    void SetSchDrawOrder(std::vector<short> const& order);

    // An observer that registers while either design loads hears of it by the notice;
    // otherwise it is brought up to date at once.
    bool RegisterObserver(qzkapp::ecad::PCBSchCompareSceneObserver& observer);
    bool UnregisterObserver(qzkapp::ecad::PCBSchCompareSceneObserver& observer);

    // Whether the first design is the board; set in Init.
    bool IsFirstBoard() const { return firstIsBoard; }

    static unsigned char GetBaseEventId();

protected:
    // A schematic that arrives widens the sheets' view states to its sheets; they never shrink.
    void OnDesignLoaded(bool second) override;

    unsigned int GetCurrentPage() const override;
    void SetLastPreviewOp(short page) override;
    // Not locked of its own: PageNav holds the lock when it posts.
    void PostPageChangedEvent() override;

    void _InitObserver(qzkapp::ecad::PCBSchCompareSceneObserver& observer);

    static unsigned char HIGHLIGHTONLYVISIBLE_CHANGED_EVENT();
    static unsigned char ORIENTATION_CHANGED_EVENT();
    static unsigned char ROTATION_CHANGED_EVENT();
    static unsigned char PAGE_CHANGED_EVENT();
    static unsigned char PCB_SUBLAYERCOLORVIS_CHANGED_EVENT();
    static unsigned char SCH_SUBLAYERCOLORVIS_CHANGED_EVENT();
    static unsigned char PCB_DRAWORDER_CHANGED_EVENT();
    static unsigned char SCH_DRAWORDER_CHANGED_EVENT();
    static unsigned char ISOLATEONLYVISIBLE_CHANGED_EVENT();

    bool firstIsBoard;
    // The kernel keeps it alive too (ManageObject); its link is cut when the scene ends.
    du::SmartPtr<qzk::ecad::PCBSchCompareSceneObserver> sceneObserver;
    bool highlightOnlyVisible;
    bool isolateOnlyVisible;
    // Mutable: GetDefaultDrawOrder, const for the base's reset, fills them.
    mutable std::vector<short> pcbDrawOrder;
    mutable std::vector<short> schDrawOrder;

private:
    friend class qzk::Observable::DefaultRegisterInitHelper<
        PCBSchCompareScene, qzkapp::ecad::PCBSchCompareSceneObserver>;
    template <class> friend class BoardSwitches;
    template <class> friend class IsolateOperations;
    template <class> friend class OrientationOperations;

    void SetSublayerColorVisInfoToQzkScene(SublayerMap const& map) const override;

    // The designs the board and the schematic operations read, by firstIsBoard.
    du::SmartPtr<qzk::ecad::EcadDesignData> const& _BoardDesign() const;
    du::SmartPtr<qzk::ecad::EcadDesignData> const& _SchematicDesign() const;
    // The loaded design whose IsSchematicData is schematic, the first one first.
    du::SmartPtr<qzk::ecad::EcadDesignData> const& _LoadedData(bool schematic) const;

    // What the shared isolate and orientation bodies ask of this scene.
    qzk::ecad::PCBSchCompareScene* _IsolateKernelScene() const { return _GetPCBSchKernelScene(); }
    void _IsolateViewsDirty() const;
    void _InvertLayersForFlip(du::SmartPtr<qzk::Operation> const& op);

    // The kernel scene as a board-against-schematic compare scene; null once the scene has
    // ended.
    qzk::ecad::PCBSchCompareScene* _GetPCBSchKernelScene() const;

    // What GetPCBData and GetSchData refer to while there is no such design.
    du::SmartPtr<qzk::ecad::EcadDesignData> noData;
};

} // namespace qzkapp::ecad
