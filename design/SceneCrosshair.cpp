// The crosshair of a design scene: which object it marks, on which sheet, and when it shows.
#include "design/Scene.h"

#include "IcmApiEcad.h"
#include "dp/ReadWriteLock.h"
#include "qzk/View.h"
#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/BaseScene.h"
#include "qzk/ecad/EcadDesignData.h"
#include "qzk/ecad/View.h"

namespace qzkapp::ecad {
namespace {

// The design's object types the crosshair cares about: a net stands for one of its children.
int const kNetType = 2;
int const kNetChildType = 11;

} // namespace

qzk::ecad::View* Scene::_GetMainView() const {
    if (!kernelScene) {
        return nullptr;
    }
    du::SmartPtr<qzk::View> const view = kernelScene->GetView(0);
    return dynamic_cast<qzk::ecad::View*>(view.Get());
}

bool Scene::_CrosshairShows(qzk::ecad::View& view) const {
    return crosshairObject != nullptr && selectCrossHair && crosshairSheet == view.GetCurrentPage();
}

void Scene::_SetCrossHairObject() {
    if (selectedItems.size() == 1) {
        SetCrosshairObject(selectedItems.begin()->object);
    } else {
        SetCrosshairObject(qzk::ecad::AppearanceItem::s_emptyAppItem.object);
    }
}

void Scene::SetCrosshairObject(void* object) {
    qzk::ecad::View* const view = _GetMainView();
    if (view == nullptr) {
        crosshairObject = object;
        return;
    }
    void* const child = NetToChildObject(object);
    crosshairSheet = GetCrossHairObjectSheet(child);
    view->SetCrosshairVisibility(child != nullptr && selectCrossHair &&
                                 crosshairSheet == view->GetCurrentPage());
    // A null object never reaches the view: it only hides the crosshair.
    if (child != nullptr && child != crosshairObject) {
        view->SetCrosshairObject(child);
    }
    crosshairObject = child;
}

unsigned int Scene::GetCrossHairObjectSheet(void* /*object*/) {
    // A board lies on the one sheet on view.
    qzk::ecad::View* const view = _GetMainView();
    return view != nullptr ? view->GetCurrentPage() : 0xFFFFFFFFu;
}

void* Scene::NetToChildObject(void* object) {
    qzk::ecad::View* const view = _GetMainView();
    IcmApiEcad* const icm = designData ? designData->GetIcmApiEcad() : nullptr;
    if (view == nullptr || icm == nullptr) {
        return object;
    }
    int type = 0;
    icm->GetObjectType(object, type);
    if (type != kNetType) {
        return object;
    }
    int count = 0;
    icm->GetChildCount(object, count, kNetChildType);
    int const childType = count != 0 ? kNetChildType : 0;
    // The child on the sheet on view wins; otherwise the last child stands for the net. The
    // count is tested after it is lowered, so a net that reports no children is left only by a
    // sheet match; should the design then run out of children too, the walk ends there rather
    // than start over from the first child for ever.
    void* child = nullptr;
    for (;;) {
        void* next = nullptr;
        void* owner = nullptr;
        icm->GetNextChild(object, childType, child, next, owner);
        if (next == nullptr) {
            break;
        }
        child = next;
        if (GetCrossHairObjectSheet(child) == view->GetCurrentPage()) {
            break;
        }
        if (--count == 0) {
            break;
        }
    }
    return child;
}

void Scene::SetSelectCrossHair(bool on) {
    if (on != selectCrossHair) {
        ToggleSelectCrossHair();
    }
}

void Scene::ToggleSelectCrossHair() {
    dp::WriteLocker lock(GetRWLock());
    selectCrossHair = !selectCrossHair;
    if (qzk::ecad::View* const view = _GetMainView()) {
        view->SetCrosshairVisibility(_CrosshairShows(*view));
    }
}

void Scene::SetCrosshairPosition(dg::DPoint2D const& position) {
    if (qzk::ecad::View* const view = _GetMainView()) {
        if (position.x != crosshairPosition.x || position.y != crosshairPosition.y) {
            view->SetCrosshairPosition(position);
        }
        // The user's wish alone, without the tests of object and sheet.
        view->SetCrosshairVisibility(selectCrossHair);
    }
    crosshairPosition = position;
}

} // namespace qzkapp::ecad
