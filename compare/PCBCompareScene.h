// The API scene that shows two boards as one: a compare scene with the board mix-in, around a
// kernel board compare scene.
//
// Its colours are not a sublayer set but a list of merged rows (BoardCompareMerge.h), each with
// the three compare colours and a show mode; the helper's own sublayer set stays empty. The rows
// are made when the later design arrives, in the scheme the environment names
// (CompareColorScheme.h), and follow the kernel's compare colours when the user changes them.
// Isolation and orientation are the board scene's.
#pragma once

#include "board/PCBSceneHelper.h"
#include "compare/CompareScene.h"
#include "component/ComponentExport.h"
#include "qzk/ClassType.h"
#include "qzk/Observable.h"
#include "qzk/ecad/CompareColorVis.h"
#include "qzk/ecad/CompareColorVisPtrVec.h"
#include "qzk/ecad/GroupCVInfoSet.h"

#include <string>
#include <vector>

namespace qzk::ecad {
class PCBCompareScene;
class PCBCompareSceneObserver;
} // namespace qzk::ecad

namespace qzkapp::ecad {

class PCBCompareSceneObserver;

class QZECAD_EXPORT PCBCompareScene : public CompareScene, public PCBSceneHelper {
public:
    static qzk::ClassType const CLASS_TYPE;

    explicit PCBCompareScene(du::SmartPtr<qzk::ecad::PCBCompareScene> const& kernelScene);
    ~PCBCompareScene() override;

    qzk::ClassType const& GetClassType() const override;

private:
    void _OnDestroy() override;

public:
    void Init() override;
    // Not locked; the kernel owns the view's observer.
    void ViewCreated(du::SmartPtr<qzk::View> const& view) override;
    // The rows of the scheme the environment names, without comparing them with the present.
    void LoadColorVisInfo(du::SmartPtr<qzk::Operation> const& op) override;
    void GetDefaultDrawOrder(std::vector<short>& out) const override;

    // The rows, as a list of the caller's own.
    void GetColorVisInfo(qzk::ecad::CompareColorVisPtrVec& out) const;
    // Replaces the rows: every call reaches the kernel and posts, equal rows or not.
    void SetColorVisInfo(qzk::ecad::CompareColorVisPtrVec const& rows,
                         du::SmartPtr<qzk::Operation> const& op, ChangeSource source);
    // Groups and rows at once; records a step for, and posts the event of, only the families
    // that differ. A call that changes nothing records and posts nothing.
    void SetColorVisInfo(qzk::ecad::GroupCVInfoSet const& groups,
                         qzk::ecad::CompareColorVisPtrVec const& rows,
                         du::SmartPtr<qzk::Operation> const& op, ChangeSource source);
    // The given rows alone are kept; nothing is combined with the present ones.
    void ApplyColorVisInfo(qzk::ecad::CompareColorVisPtrVec const& rows,
                           du::SmartPtr<qzk::Operation> const& op);
    // The kernel's compare colours changed: they go into every row, whatever scheme made it;
    // rows that showed a sublayer's own colour lose it. No undo.
    void SetColorInfo();
    // The two fixed schemes, apart from the preferences. Before both designs are there they
    // leave no rows.
    void UseRedBlueDimDefault(du::SmartPtr<qzk::Operation> const& op, ChangeSource source);
    void UseRedBlueGreenDefault(du::SmartPtr<qzk::Operation> const& op, ChangeSource source);

    // Appends the merged rows of the two boards to out and sorts it; nothing before both are
    // there. A colour of 0xFFFFFFFF stands for each row's own sublayer colour. Not locked.
    void GetHardcodedDefault(qzk::ecad::CompareColorVisPtrVec& out, unsigned int firstColor,
                             unsigned int secondColor, unsigned int commonColor,
                             qzk::ecad::CompareColorVis::ShowMode mode, bool flag) const;
    // Either board by `second`; not locked. 4 and 0 where the design is no board.
    short GetTopLayer(bool second) const;
    short GetBottomLayer(bool second) const;
    std::wstring GetSublayerLabel(short layer, short sublayer, bool second);
    using BaseScene::GetSublayerLabel;
    using PCBSceneHelper::GetBottomLayer;
    using PCBSceneHelper::GetTopLayer;

    // The helper's sublayer set has no place in a compare: these do nothing.
    void GetColorVisInfo(qzk::ecad::SublayerPCB_CVSet& out) const override;
    void SetColorVisInfo(qzk::ecad::SublayerPCB_CVSet const& set,
                         du::SmartPtr<qzk::Operation> const& op, ChangeSource source) override;
    void ApplyColorVisInfo(qzk::ecad::SublayerPCB_CVSet const& set,
                           du::SmartPtr<qzk::Operation> const& op) override;

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

    // An observer that registers while either design loads hears of it by the notice;
    // otherwise it is brought up to date at once.
    bool RegisterObserver(qzkapp::ecad::PCBCompareSceneObserver& observer);
    bool UnregisterObserver(qzkapp::ecad::PCBCompareSceneObserver& observer);

    static unsigned char GetBaseEventId();

protected:
    void _InitObserver(qzkapp::ecad::PCBCompareSceneObserver& observer);

    static unsigned char ORIENTATION_CHANGED_EVENT();
    static unsigned char ROTATION_CHANGED_EVENT();
    static unsigned char HIGHLIGHTONLYVISIBLE_CHANGED_EVENT();
    static unsigned char ISOLATEONLYVISIBLE_CHANGED_EVENT();

    // The kernel keeps it alive too (ManageObject); its link is cut when the scene ends.
    du::SmartPtr<qzk::ecad::PCBCompareSceneObserver> sceneObserver;
    qzk::ecad::CompareColorVisPtrVec compareColors;
    bool highlightOnlyVisible;
    bool isolateOnlyVisible;

private:
    friend class qzk::Observable::DefaultRegisterInitHelper<PCBCompareScene,
                                                            qzkapp::ecad::PCBCompareSceneObserver>;
    template <class> friend class BoardSwitches;
    template <class> friend class IsolateOperations;
    template <class> friend class OrientationOperations;

    // What the shared isolate and orientation bodies ask of this scene.
    qzk::ecad::PCBCompareScene* _IsolateKernelScene() const { return _GetPCBCompareKernelScene(); }
    void _IsolateViewsDirty() const;
    void _InvertLayersForFlip(du::SmartPtr<qzk::Operation> const& op);

    // With the write lock held: the rows to the kernel and the event.
    void _PushRows(unsigned int source);
    // The kernel scene as a board compare scene; null once the scene has ended.
    qzk::ecad::PCBCompareScene* _GetPCBCompareKernelScene() const;
};

} // namespace qzkapp::ecad
