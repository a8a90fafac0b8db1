// The API scene of one board: a design scene with the board mix-in, around a kernel board scene.
//
// It adds to the mix-in the lock, the kernel calls and the events: every colour set change
// reaches the kernel scene and posts, and the two switches of what only visible objects get
// post when they change. It hears the kernel through private observers of the kernel scene and
// of each view; the kernel owns those observers.
#pragma once

#include "board/PCBSceneHelper.h"
#include "component/ComponentExport.h"
#include "design/Scene.h"
#include "du/Symbol.h"
#include "du/Types.h"
#include "qzk/ClassType.h"
#include "qzk/Observable.h"
#include "qzk/ecad/GerberPrefs.h"
#include "qzk/ecad/GroupCVInfoSet.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace dg {
class DMat33;
class DPoint2D;
} // namespace dg

namespace qzk::ecad {
class EcadPCBData;
class OverlayPrefs;
class PCBScene;
class PCBSceneObserver;
} // namespace qzk::ecad

namespace qzkapp::ecad {

class PCBSceneObserver;

class QZECAD_EXPORT PCBScene : public Scene, public PCBSceneHelper {
public:
    static qzk::ClassType const CLASS_TYPE;

    // What an overlay was made from, kept for whoever reloads or saves it.
    struct OverlayInfo {
        qzk::ecad::GerberPrefs gerberPrefs;
        du::Symbol type;
        bool flag = false;
    };

    explicit PCBScene(du::SmartPtr<qzk::ecad::Scene> const& kernelScene);
    ~PCBScene() override;

    qzk::ClassType const& GetClassType() const override;

private:
    void _OnDestroy() override;

public:
    void Init() override;
    void GetDefaultDrawOrder(std::vector<short>& out) const override;
    // Not locked, like the layer queries below: they answer the host's questions about a design
    // it has been told is loaded, after which the design data no longer changes. Asked during a
    // load they race with its completion.
    std::wstring GetSublayerLabel(short layer, short sublayer) override;
    void LoadColorVisInfo(du::SmartPtr<qzk::Operation> const& op) override;
    // Not locked; the kernel owns the view's observer.
    void ViewCreated(du::SmartPtr<qzk::View> const& view) override;
    bool GetIsolateOnlyVisible() const override;
    void SetIsolateOnlyVisible(bool value, ChangeSource source) override;
    bool GetHighlightOnlyVisible() const override;
    void SetHighlightOnlyVisible(bool value, ChangeSource source) override;

    void GetColorVisInfo(qzk::ecad::SublayerPCB_CVSet& out) const override;
    // Every call reaches the kernel scene and posts, whether the set changed or not.
    void SetColorVisInfo(qzk::ecad::SublayerPCB_CVSet const& set,
                         du::SmartPtr<qzk::Operation> const& op, ChangeSource source) override;
    // Applies a partial set: entries for sublayers that the scene has replace them, others are
    // ignored. The merge and the write are two critical sections.
    void ApplyColorVisInfo(qzk::ecad::SublayerPCB_CVSet const& set,
                           du::SmartPtr<qzk::Operation> const& op) override;
    // Not undoable, posts nothing.
    void ToggleShowLogicalConnection() override;
    // Not locked.
    short GetTopLayer() const override;
    short GetBottomLayer() const override;

    void GetDefaultColorVisInfo(qzk::ecad::SublayerPCB_CVSet& out, bool flag) const;
    // Not locked.
    short GetSublayerHandle(short layer, std::string const& name) const;
    // Changes the kernel's selection on the host's behalf, and tells the scene of it even when
    // the kernel scene has no selection manager.
    void SetSelectedItems(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items);

    // Isolation: every mutator records its step (also when nothing changes) and hands the
    // operation to the undo list; the kernel hears the whole set when it changed. No event: the
    // kernel tells its own observers.
    void Isolate(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                 du::SmartPtr<qzk::Operation> const& op) override;
    void AddToIsolated(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                       du::SmartPtr<qzk::Operation> const& op) override;
    void Deisolate(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                   du::SmartPtr<qzk::Operation> const& op) override;
    void ClearAllIsolated(du::SmartPtr<qzk::Operation> const& op) override;
    // Not locked: hands the kernel the present set once more.
    void ApplyIsolatedList() const override;
    using BaseScene::GetItems;
    using BaseScene::SetItems;
    void GetItems(qzk::ecad::ItemContainer<qzk::ecad::IsolateItem>& out) const override;
    // Records nothing; the way back for undo.
    void SetItems(qzk::ecad::ItemContainer<qzk::ecad::IsolateItem> const& items,
                  bool setViewsDirty) override;

    // Orientation: the step goes into op (the caller records); the first view turns. Flip and
    // rotation are read without a lock.
    bool GetFlip() const override;
    short GetRotation() const override;
    // With applyToView false the field changes and the event posts, but the view and the layer
    // order stay as they are.
    void SetFlip(bool flip, du::SmartPtr<qzk::Operation> const& op, bool applyToView) override;
    void ToggleFlip(du::SmartPtr<qzk::Operation> const& op) override;
    void SetRotation(short rotation, du::SmartPtr<qzk::Operation> const& op,
                     bool applyToView) override;
    void AddRotation(short delta, du::SmartPtr<qzk::Operation> const& op) override;

    // Overlays. An overlay's id is never 0, which means "none" in every result. The current
    // overlay is the first visible one, in order of creation; with all hidden there is none, and
    // the operations on it do nothing. Creating and removing an overlay is not undoable.
    //
    // Places the new overlay by the preferences, about the board data's centre, in the colour
    // and visibility the preferences give overlays.
    void OverlayCreated(du::SmartPtr<qzk::ecad::EcadPCBData> const& data, std::wstring const& name,
                        qzk::ecad::GerberPrefs const& gerberPrefs,
                        qzk::ecad::OverlayPrefs const& overlayPrefs, du::Symbol const& type,
                        bool flag);
    // A visible new overlay becomes the current one by hiding all the others.
    void OverlayCreated(du::SmartPtr<qzk::ecad::EcadPCBData> const& data, std::wstring const& name,
                        unsigned int color, bool visible, qzk::ecad::GerberPrefs const& gerberPrefs,
                        dg::DPoint2D const& center, dg::DMat33 const& matrix,
                        du::Symbol const& type, bool flag);
    void RemoveCurOverlay();
    void RemoveOverlay(uint64 const& id);
    // Listeners hear of the new name before the kernel does.
    void RenameCurOverlay(std::wstring const& name);
    // These change the kernel's overlay only: no event, and the read lock will do.
    void RotateCurOverlay(double angle);
    void FlipHorzCurOverlay();
    void FlipVertCurOverlay();
    uint64 GetCurOverlay() const;
    std::wstring GetCurOverlayName();
    // The first overlay of that exact name, or 0.
    uint64 GetOverlayByName(std::wstring const& name) const;
    // Adds to out, which is not cleared.
    void GetOverlayNames(std::set<std::wstring>& out) const;
    // Not locked.
    bool GetOverlayInfo(uint64 const& id, OverlayInfo& out) const;
    bool HasOverlay(uint64 const& id) const;
    void GetOverlayColorVisInfo(std::vector<qzk::ecad::AnnoCVInfo>& out) const override;
    void UpdateOverlayCVInfo(std::vector<qzk::ecad::AnnoCVInfo> const& list,
                             ChangeSource source) override;

    // All four colour families at once; records a step for, and posts the event of, only the
    // families that differ. A call that changes nothing records and posts nothing.
    void SetFullColorVisInfo(qzk::ecad::GroupCVInfoSet const& groups,
                             qzk::ecad::SublayerPCB_CVSet const& sublayers,
                             std::vector<qzk::ecad::AnnoCVInfo> const& overlays,
                             std::vector<qzk::ecad::AnnoCVInfo> const& images,
                             du::SmartPtr<qzk::Operation> const& op, ChangeSource source);

    // An observer that registers while the load runs hears its end like everyone else;
    // otherwise it is brought up to date at once.
    bool RegisterObserver(qzkapp::ecad::PCBSceneObserver& observer);
    bool UnregisterObserver(qzkapp::ecad::PCBSceneObserver& observer);
    bool _IsLoadInProgress() const { return designLoading; }

    static unsigned char GetBaseEventId();

protected:
    void _InitObserver(qzkapp::ecad::PCBSceneObserver& observer);

    static unsigned char HIGHLIGHTONLYVISIBLE_CHANGED_EVENT();
    static unsigned char OVERLAY_CHANGED_EVENT();
    static unsigned char ORIENTATION_CHANGED_EVENT();
    static unsigned char ROTATION_CHANGED_EVENT();
    static unsigned char ISOLATEONLYVISIBLE_CHANGED_EVENT();

    // The kernel keeps it alive too (ManageObject); its link is cut when the scene ends.
    du::SmartPtr<qzk::ecad::PCBSceneObserver> sceneObserver;
    bool highlightOnlyVisible;
    bool isolateOnlyVisible;
    // Under the same ids as the overlay list.
    std::map<uint64, OverlayInfo> overlayInfo;

private:
    uint64 _GetCurOverlay() const override;
    void _NotifyOverlayColorVisChanged(ChangeSource source) override;
    // With the write lock held.
    void _RemoveOverlay(std::vector<qzk::ecad::AnnoCVInfo>::iterator& entry);
    // The current overlay's entry, or the list's end.
    std::vector<qzk::ecad::AnnoCVInfo>::iterator _CurOverlayEntry();

    friend class qzk::Observable::DefaultRegisterInitHelper<PCBScene,
                                                            qzkapp::ecad::PCBSceneObserver>;
    template <class> friend class BoardSwitches;
    template <class> friend class IsolateOperations;
    template <class> friend class OrientationOperations;

    void _SetIsolatedToQzkScene() const;
    // What the shared isolate and orientation bodies ask of this scene.
    qzk::ecad::PCBScene* _IsolateKernelScene() const { return _GetPCBKernelScene(); }
    void _IsolateViewsDirty() const;
    void _InvertLayersForFlip(du::SmartPtr<qzk::Operation> const& op);

    // The kernel scene as a board scene; null once the scene has ended.
    qzk::ecad::PCBScene* _GetPCBKernelScene() const;
};

} // namespace qzkapp::ecad
