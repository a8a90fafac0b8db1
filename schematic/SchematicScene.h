// The API scene of one schematic: a design scene with the schematic mix-in, around a kernel
// schematic scene. Kinds 73 and 77 of the factory both make it.
//
// It adds to the mix-in the lock, the kernel calls and the events: a sheet change posts the page
// and shows or hides the crosshair for the sheet now on view; every sublayer colour change
// reaches the kernel scene and posts. It hears the kernel through private observers of the
// kernel scene and of each view; the kernel owns those observers.
#pragma once

#include "component/ComponentExport.h"
#include "design/Scene.h"
#include "qzk/ClassType.h"
#include "qzk/Observable.h"
#include "qzk/ecad/AnnoCVInfo.h"
#include "qzk/ecad/GroupCVInfoSet.h"
#include "schematic/SchSceneHelper.h"

#include <vector>

namespace qzk {
class SelectionItem;
namespace ecad {
class SchematicScene;
class SchematicSceneObserver;
} // namespace ecad
} // namespace qzk

namespace qzkapp::ecad {

class SchematicSceneObserver;

class QZECAD_EXPORT SchematicScene : public Scene, public SchSceneHelper {
public:
    static qzk::ClassType const CLASS_TYPE;

    explicit SchematicScene(du::SmartPtr<qzk::ecad::Scene> const& kernelScene);
    ~SchematicScene() override;

    qzk::ClassType const& GetClassType() const override;

private:
    void _OnDestroy() override;

public:
    void Init() override;
    // Not locked; the kernel owns the view's observer. The new view starts fitted.
    void ViewCreated(du::SmartPtr<qzk::View> const& view) override;
    void LoadColorVisInfo(du::SmartPtr<qzk::Operation> const& op) override;
    void GetDefaultDrawOrder(std::vector<short>& out) const override;
    wchar_t const* GetLayerName(short layer) const override;

    void UpdateCurrentViewState(du::SmartPtr<qzk::ecad::BaseView> const& view,
                                unsigned int page) override;
    void PageNav(short page, du::SmartPtr<qzk::ecad::BaseView> const& view) override;
    // The holder's body under the lock: it reads the view states when it puts a picture back,
    // and a load that completes meanwhile resizes them.
    void PreviewPageNav(short page, du::SmartPtr<qzk::ecad::BaseView> const& view) override;

    void GetSublayerColorVisInfo(SublayerMap& out) const override;
    // Every call reaches the kernel scene and posts, whether the map changed or not.
    void SetSublayerColorVisInfo(SublayerMap const& map, du::SmartPtr<qzk::Operation> const& op,
                                 ChangeSource source) override;
    // Takes only the handles the scene has, and posts even when it took none.
    void ApplySublayerColorVisInfo(SublayerMap const& map, du::SmartPtr<qzk::Operation> const& op);

    // Groups, images and sublayers at once. Unlike a board's, it does not compare: groups and
    // sublayers always record their steps and post, images only when they differ.
    void SetFullColorVisInfo(qzk::ecad::GroupCVInfoSet const& groups,
                             std::vector<qzk::ecad::AnnoCVInfo> const& images,
                             SublayerMap const& sublayers, du::SmartPtr<qzk::Operation> const& op,
                             ChangeSource source);

    // Changes the kernel's selection on the host's behalf, and tells the scene of it even when
    // the kernel scene has no selection manager.
    void SetSelectedItems(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items);

    // An observer that registers while the load runs hears its end like everyone else;
    // otherwise it is brought up to date at once.
    bool RegisterObserver(qzkapp::ecad::SchematicSceneObserver& observer);
    bool UnregisterObserver(qzkapp::ecad::SchematicSceneObserver& observer);
    bool _IsLoadInProgress() const { return designLoading; }

    static unsigned char GetBaseEventId();

protected:
    // Sizes the sheets' view states to the design's sheets: surplus records go, the others stay.
    void OnDesignLoaded() override;

    // The sheet the kernel would show for the object; 0xFFFFFFFF without a view, a design or
    // an object.
    unsigned int GetCrossHairObjectSheet(void* object) override;
    unsigned int GetCurrentPage() const override;
    void SetLastPreviewOp(short page) override;
    // Not locked of its own: PageNav holds the lock when it posts.
    void PostPageChangedEvent() override;

    void _InitObserver(qzkapp::ecad::SchematicSceneObserver& observer);

    static unsigned char PAGE_CHANGED_EVENT();

    // The kernel keeps it alive too (ManageObject); its link is cut when the scene ends.
    du::SmartPtr<qzk::ecad::SchematicSceneObserver> sceneObserver;

private:
    friend class qzk::Observable::DefaultRegisterInitHelper<SchematicScene,
                                                            qzkapp::ecad::SchematicSceneObserver>;

    void SetSublayerColorVisInfoToQzkScene(SublayerMap const& map) const override;
    // The kernel scene as a schematic scene; null once the scene has ended.
    qzk::ecad::SchematicScene* _GetSchematicKernelScene() const;
};

} // namespace qzkapp::ecad
