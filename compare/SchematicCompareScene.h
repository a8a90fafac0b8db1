// The API scene that shows two schematics side by side: a compare scene with sheet navigation,
// around a kernel schematic compare scene. Kind 161 of the factory makes it.
//
// Its colours are one compare record per sublayer handle, over the union of the handles both
// designs name: a schematic's handles are fixed, so nothing has to be merged. The records are
// shared, not cloned: a map handed out by GetSublayerColorVisInfo, and the map an undo step
// keeps, hold the very records the scene holds, so SetColorInfo (the user changed the kernel's
// three compare colours) changes them too. There is one colour scheme; the environment's
// board compare scheme has no say here.
//
// Sheet navigation is SheetViewStateHolder's with this scene's lock and page event. The view
// states appear once both designs are there, as many as the kernel's page list counts, and
// the list only grows.
#pragma once

#include "compare/CompareScene.h"
#include "component/ComponentExport.h"
#include "qzk/ClassType.h"
#include "qzk/Observable.h"
#include "qzk/ecad/CompareColorVis.h"
#include "qzk/ecad/GroupCVInfoSet.h"
#include "schematic/SheetViewStateHolder.h"

#include <map>
#include <string>
#include <vector>

namespace qzk::ecad {
class SchematicCompareScene;
class SchematicCompareSceneObserver;
} // namespace qzk::ecad

namespace qzkapp::ecad {

class SchematicCompareSceneObserver;

class QZECAD_EXPORT SchematicCompareScene : public CompareScene, public SheetViewStateHolder {
public:
    using CompareMap = std::map<short, du::SmartPtr<qzk::ecad::CompareColorVis>>;

    static qzk::ClassType const CLASS_TYPE;

    explicit SchematicCompareScene(du::SmartPtr<qzk::ecad::SchematicCompareScene> const& scene);
    ~SchematicCompareScene() override;

    qzk::ClassType const& GetClassType() const override;

private:
    void _OnDestroy() override;

public:
    void Init() override;
    // Not locked; the kernel owns the view's observer. The new view starts fitted.
    void ViewCreated(du::SmartPtr<qzk::View> const& view) override;
    // A record for every handle either design names, in the kernel's three compare colours.
    // Nothing at all, not even the event, unless both designs are schematics. A record is shown
    // unless the kernel's default visibility, asked as for layer 1, has a rule against the
    // handle; what the page list is beyond its count, and what a visibility rule means, is the
    // kernel's.
    void LoadColorVisInfo(du::SmartPtr<qzk::Operation> const& op) override;

protected:
    // On the later design: the base's take-over and notice, then the view states grown to the
    // kernel's page count.
    void OnDesignLoaded(bool second) override;

public:
    // The table's handles that have content in the first design, or else in the second, in the
    // table's order. Meant for a complete pair; a missing design counts as having nothing.
    void GetDefaultDrawOrder(std::vector<short>& out) const override;
    unsigned int GetNumSheets() const;
    // The chosen design's own name for the handle; empty when that design lacks it or is no
    // schematic. Not locked.
    std::wstring GetSublayerLabel(short sublayer, bool second);
    using BaseScene::GetSublayerLabel;

    // Copies the scene's map: the records themselves are shared.
    void GetSublayerColorVisInfo(CompareMap& out) const;
    // Replaces the map; every call reaches the kernel and posts.
    void SetSublayerColorVisInfo(CompareMap const& colors, du::SmartPtr<qzk::Operation> const& op,
                                 ChangeSource source);
    // Groups and records at once. Unlike the board compare's it compares nothing: every call
    // records both steps, reaches the kernel and posts both events.
    void SetSublayerColorVisInfo(qzk::ecad::GroupCVInfoSet const& groups, CompareMap const& colors,
                                 du::SmartPtr<qzk::Operation> const& op, ChangeSource source);
    // Records a step of its own and then calls SetSublayerColorVisInfo, which records another
    // of the same map: undoing the operation posts twice. Kept so on purpose.
    void ApplySublayerColorVisInfo(CompareMap const& colors,
                                   du::SmartPtr<qzk::Operation> const& op);
    // The kernel's compare colours changed: they go into every record. No undo.
    void SetColorInfo();

    void PageNav(short page, du::SmartPtr<qzk::ecad::BaseView> const& view) override;
    void UpdateCurrentViewState(du::SmartPtr<qzk::ecad::BaseView> const& view,
                                unsigned int page) override;
    // The holder's body under the lock, as on a schematic scene: it reads the view states when
    // it puts a picture back, and the later design's load grows them meanwhile.
    void PreviewPageNav(short page, du::SmartPtr<qzk::ecad::BaseView> const& view) override;

    // An observer that registers while either design loads hears of it by the notice;
    // otherwise it is brought up to date at once.
    bool RegisterObserver(qzkapp::ecad::SchematicCompareSceneObserver& observer);
    bool UnregisterObserver(qzkapp::ecad::SchematicCompareSceneObserver& observer);

    static unsigned char GetBaseEventId();

protected:
    unsigned int GetCurrentPage() const override;
    void SetLastPreviewOp(short page) override;
    // Not locked of its own: PageNav holds the lock when it posts.
    void PostPageChangedEvent() override;

    void _InitObserver(qzkapp::ecad::SchematicCompareSceneObserver& observer);

    static unsigned char PAGE_CHANGED_EVENT();

    // The kernel keeps it alive too (ManageObject); its link is cut when the scene ends.
    du::SmartPtr<qzk::ecad::SchematicCompareSceneObserver> sceneObserver;
    CompareMap compareColors;

private:
    friend class qzk::Observable::DefaultRegisterInitHelper<
        SchematicCompareScene, qzkapp::ecad::SchematicCompareSceneObserver>;

    // With the write lock held: the map to the kernel and the event.
    void _PushColors(unsigned int source);
    // Replaces the map's entries by those of colors.
    void _ReplaceColors(CompareMap const& colors);
    // The kernel scene as a schematic compare scene; null once the scene has ended.
    qzk::ecad::SchematicCompareScene* _GetSchematicCompareKernelScene() const;
};

} // namespace qzkapp::ecad
