// The scene's selection channels: selection, preselection and associated items, and their looks.
#include "scene/BaseScene.h"

#include "qzk/Annotation.h"
#include "qzk/ObjectSelectionItem.h"
#include "qzk/SelectionItem.h"
#include "qzk/SelectionManager.h"
#include "qzk/View.h"
#include "qzk/ecad/BaseScene.h"
#include "qzk/ecad/Overlay.h"
#include "qzk/ecad/OverlaySelectionItem.h"
#include "qzk/ecad/PCBScene.h"
#include "scene/AppearanceUpdate.h"
#include "scene/EcadItemKinds.h"
#include "scene/SelectionChannels.h"

namespace qzkapp::ecad {

void BaseScene::_SetSelectedItems(ItemList const& items) {
    dp::WriteLocker lock(GetRWLock());
    if (!kernelScene) {
        return;
    }
    du::SmartPtr<qzk::SelectionManager> selectionManager;
    kernelScene->GetSelectionManager(selectionManager);
    if (selectionManager) {
        selectionManager->ApplyItems(kSelectionChannel, items, qzk::SelectionManager::replace);
    }
    OnSelectionChanged(kSelectionChannel, true, ItemList(), items);
}

void BaseScene::OnSelectionChanged(unsigned int channel, bool clear, ItemList const& removed,
                                   ItemList const& added) {
    dp::WriteLocker lock(GetRWLock());
    if (!kernelScene) {
        // Ended while the notice was on its way.
        return;
    }
    switch (channel) {
    case kSelectionChannel:
        _HandleSelectionChanged(clear, removed, added);
        break;
    case kPreselectionChannel:
        _HandlePreSelectionChanged(clear, removed, added);
        break;
    case kAssociatedChannel:
        _HandleAssocHlightChanged(clear, removed, added);
        break;
    default:
        break;
    }
}

void BaseScene::_RewriteSelectionLooks() {
    for (qzk::ecad::AppearanceItem const& entry : selectedItems) {
        kernelScene->SetItemSelectionAppearance(entry, GetSelectionColor(entry), false, false);
    }
}

void BaseScene::_RewriteStoredHighlightLooks() {
    for (qzk::ecad::HighlightItem const& entry : highlights) {
        kernelScene->SetItemHighlightAppearance(entry, dg::Color(entry.color, true), entry.fonted);
    }
}

void BaseScene::_RewriteAssociatedLooks() {
    for (qzk::ecad::AppearanceItem const& entry : associatedItems) {
        kernelScene->SetItemHighlightAppearance(entry, secondaryColor, false);
    }
}

void BaseScene::_HandleSelectionChanged(bool clear, ItemList const& removed,
                                        ItemList const& added) {
    {
        AppearanceUpdate update(*kernelScene);
        if (!update) {
            return;
        }
        if (clear) {
            _ClearSelected();
        }
        if (uint64 overlay = _GetCurOverlay(); overlay != 0) {
            kernelScene->GetSelectedOverlay(overlay);
        }
        for (du::SmartPtr<qzk::SelectionItem> const& item : removed) {
            if (auto ecad = AsEcadItem(item)) {
                qzk::ecad::AppearanceItem appearance(ecad);
                kernelScene->ClearItemAppearance(appearance, false);
                selectedItems.erase(appearance);
            } else if (auto object = du::DynamicCast<qzk::ObjectSelectionItem>(item)) {
                if (auto annotation = du::DynamicCast<qzk::Annotation>(object->GetObject())) {
                    _SetAnnotationSelected(annotation, false);
                }
            } else {
                _DeselectOverlayItem(item);
            }
        }
        for (du::SmartPtr<qzk::SelectionItem> const& item : added) {
            if (auto ecad = AsEcadItem(item)) {
                selectedItems.insert(qzk::ecad::AppearanceItem(ecad));
            } else if (auto object = du::DynamicCast<qzk::ObjectSelectionItem>(item)) {
                if (auto annotation = du::DynamicCast<qzk::Annotation>(object->GetObject())) {
                    _SetAnnotationSelected(annotation, true);
                }
            } else {
                _SelectOverlayItem(item);
            }
        }
        // Every selected entry, old and new: a removal may have wiped a look the layer shares.
        _RewriteSelectionLooks();
    }
    _SetCrossHairObject();
}

void BaseScene::_ClearLooks(std::set<qzk::ecad::AppearanceItem>& items, bool highlightLayer) {
    for (qzk::ecad::AppearanceItem const& entry : items) {
        kernelScene->ClearItemAppearance(entry, highlightLayer);
    }
    items.clear();
}

void BaseScene::_ClearSelected() {
    _ClearLooks(selectedItems, false);
    if (!selectedAnnotations.empty()) {
        // Always view 0, even for an annotation that was selected in view 1.
        du::SmartPtr<qzk::View> view = kernelScene->GetView(0);
        du::SmartPtr<qzk::Scene> scene(kernelScene);
        for (du::SmartPtr<qzk::Annotation> const& annotation : selectedAnnotations) {
            annotation->SetSelected(false, view);
            annotation->OnDeselectedInScene(scene);
        }
        selectedAnnotations.clear();
    }
    if (!selectedOverlays.empty()) {
        for (auto const& [id, overlay] : selectedOverlays) {
            overlay->ClearSelection();
        }
        selectedOverlays.clear();
    }
}

void BaseScene::_HandlePreSelectionChanged(bool clear, ItemList const& removed,
                                           ItemList const& added) {
    AppearanceUpdate update(*kernelScene);
    if (!update) {
        return;
    }
    if (clear) {
        _ClearLooks(preselectedItems, false);
        kernelScene->SetDefaultSelectionAppearance(
            GetSelectionColor(qzk::ecad::AppearanceItem::s_emptyAppItem), false);
        _RewriteSelectionLooks();
    }
    if (!removed.empty()) {
        for (du::SmartPtr<qzk::SelectionItem> const& item : removed) {
            bool matched = false;
            auto ecad = EcadItemOrParent(item, matched);
            if (matched) {
                qzk::ecad::AppearanceItem appearance(ecad);
                preselectedItems.erase(appearance);
                kernelScene->ClearItemAppearance(appearance, false);
            } else if (auto overlayItem = du::DynamicCast<qzk::ecad::OverlaySelectionItem>(item)) {
                // Drops the overlay's whole selection, a real one too; selectedOverlays keeps it.
                overlayItem->GetOverlay()->ClearSelection();
            }
        }
        // The clears wiped the shared selection layer: selected objects get their look back.
        _RewriteSelectionLooks();
    }
    if (added.empty()) {
        return;
    }
    bool const exclude = GetExcludePlanesCondFigures();
    for (du::SmartPtr<qzk::SelectionItem> const& item : added) {
        bool matched = false;
        auto ecad = EcadItemOrParent(item, matched);
        if (matched) {
            qzk::ecad::AppearanceItem appearance(ecad);
            preselectedItems.insert(appearance);
            if (preselectionHighlighting) {
                kernelScene->SetItemSelectionAppearance(
                    appearance, GetPreselectionColor(appearance), IsPreselectionFonted(), exclude);
            }
        } else if (auto overlayItem = du::DynamicCast<qzk::ecad::OverlaySelectionItem>(item)) {
            if (preselectionHighlighting) {
                overlayItem->GetOverlay()->PreSelect(
                    overlayItem, GetPreselectionColor(qzk::ecad::AppearanceItem::s_emptyAppItem),
                    IsPreselectionFonted());
            }
        }
    }
}

void BaseScene::_HandleAssocHlightChanged(bool clear, ItemList const& removed,
                                          ItemList const& added) {
    AppearanceUpdate update(*kernelScene);
    if (!update) {
        return;
    }
    if (clear) {
        _ClearLooks(associatedItems, true);
    } else {
        for (du::SmartPtr<qzk::SelectionItem> const& item : removed) {
            bool matched = false;
            auto ecad = EcadItemOrParent(item, matched);
            if (matched) {
                qzk::ecad::AppearanceItem appearance(ecad);
                kernelScene->ClearItemAppearance(appearance, true);
                associatedItems.erase(appearance);
            }
        }
    }
    if (!highlights.empty()) {
        // The scene's present colour, not each item's stored one: the clears above may have
        // wiped highlighted objects, and they come back as the scene shows highlights now.
        dg::Color const color(highlightColor, true);
        for (qzk::ecad::HighlightItem const& entry : highlights) {
            kernelScene->SetItemHighlightAppearance(entry, color, highlightFonted);
        }
    }
    if (added.empty()) {
        return;
    }
    for (du::SmartPtr<qzk::SelectionItem> const& item : added) {
        bool matched = false;
        auto ecad = EcadItemOrParent(item, matched);
        if (matched) {
            qzk::ecad::AppearanceItem appearance(ecad);
            kernelScene->SetItemHighlightAppearance(appearance, secondaryColor, false);
            associatedItems.insert(appearance);
        }
    }
}

void BaseScene::_SetAnnotationSelected(du::SmartPtr<qzk::Annotation> const& annotation,
                                       bool selected) {
    du::SmartPtr<qzk::View> view;
    if (!annotation->hasViewClass) {
        view = kernelScene->GetView(0);
    } else {
        unsigned int const classId = annotation->GetViewClassId();
        for (unsigned int index : {0u, 1u}) {
            du::SmartPtr<qzk::View> candidate = kernelScene->GetView(index);
            if (candidate && candidate->GetClassType().GetId() == classId) {
                view = candidate;
                break;
            }
        }
    }
    if (!view) {
        return;
    }
    annotation->SetSelected(selected, view);
    du::SmartPtr<qzk::Scene> scene(kernelScene);
    if (selected) {
        annotation->OnSelectedInScene(scene);
        selectedAnnotations.insert(annotation);
    } else {
        annotation->OnDeselectedInScene(scene);
        selectedAnnotations.erase(annotation);
    }
}

void BaseScene::_SelectOverlayItem(du::SmartPtr<qzk::SelectionItem> const& item) {
    auto overlayItem = du::DynamicCast<qzk::ecad::OverlaySelectionItem>(item);
    if (!overlayItem) {
        return;
    }
    du::SmartPtr<qzk::ecad::Overlay> overlay = overlayItem->GetOverlay();
    if (overlay->overlayKind != 2) {
        // Board overlays keep their selection to themselves.
        overlay->Select(overlayItem);
        return;
    }
    overlay->Select(overlayItem, GetSelectionColor(qzk::ecad::AppearanceItem::s_emptyAppItem),
                    false);
    selectedOverlays[overlay->GetId()] = overlay;
}

void BaseScene::_DeselectOverlayItem(du::SmartPtr<qzk::SelectionItem> const& item) {
    auto overlayItem = du::DynamicCast<qzk::ecad::OverlaySelectionItem>(item);
    if (!overlayItem) {
        return;
    }
    du::SmartPtr<qzk::ecad::Overlay> overlay = overlayItem->GetOverlay();
    overlay->ClearSelection();
    selectedOverlays.erase(overlay->GetId());
}

void BaseScene::_OnSelectionColorChanged(bool preselection, bool selection, bool associated) {
    dp::WriteLocker lock(GetRWLock());
    du::SmartPtr<qzk::ecad::BaseScene> scene = kernelScene;
    if (!scene) {
        return;
    }
    // The one caller that goes on when the bracket is refused.
    AppearanceUpdate update(*scene, AppearanceUpdate::Refused::CloseAnyway);
    if (selection) {
        _RewriteSelectionLooks();
    }
    if (preselection && preselectionHighlighting) {
        for (qzk::ecad::AppearanceItem const& entry : preselectedItems) {
            scene->SetItemSelectionAppearance(entry, GetPreselectionColor(entry),
                                              IsPreselectionFonted(), false);
        }
    }
    if (associated && dynamic_cast<qzk::ecad::PCBScene*>(scene.Get()) != nullptr) {
        _RewriteAssociatedLooks();
    }
}

} // namespace qzkapp::ecad
