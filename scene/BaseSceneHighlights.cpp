// Highlights: the set, its looks, its undo step and its event.
#include "scene/BaseScene.h"

#include "qzk/Operation.h"
#include "qzk/Scene.h"
#include "qzk/ecad/BaseScene.h"
#include "scene/AppearanceUpdate.h"
#include "scene/EcadItemKinds.h"
#include "scene/ItemsApearnceOperationStep.h"
#include "scene/StepRecording.h"

namespace qzkapp::ecad {

using HighlightContainer = qzk::ecad::ItemContainer<qzk::ecad::HighlightItem>;
using HighlightStep = ItemsApearnceOperationStep<HighlightContainer>;

int BaseScene::_AddToHighlights(ItemList const& items) {
    dg::Color const color(highlightColor, true);
    du::SmartPtr<qzk::Scene> scene(kernelScene);
    int count = 0;
    for (du::SmartPtr<qzk::SelectionItem> const& entry : items) {
        auto ecad = Highlightable(entry);
        if (!ecad) {
            continue;
        }
        qzk::ecad::AppearanceItem appearance(ecad);
        // A present entry keeps its old name, colour and flag; the look still takes the present
        // colour, and the item counts.
        highlights.insert(qzk::ecad::HighlightItem(appearance, du::Symbol(ecad->GetName(scene)),
                                                   highlightColor, highlightFonted));
        kernelScene->SetItemHighlightAppearance(appearance, color, highlightFonted);
        ++count;
    }
    return count;
}

int BaseScene::_ClearHighlights() {
    int count = 0;
    for (qzk::ecad::HighlightItem const& entry : highlights) {
        kernelScene->ClearItemAppearance(entry, true);
        ++count;
    }
    highlights.clear();
    return count;
}

void BaseScene::_RemoveHighlightItem(qzk::ecad::HighlightItem const& item) {
    highlights.erase(item);
    kernelScene->ClearItemAppearance(item, true);
}

void BaseScene::_RecordHighlights(du::SmartPtr<qzk::Operation> const& op) {
    if (!op) {
        return;
    }
    HighlightContainer before;
    GetHighlights(before);
    AddStepAndRecord<HighlightStep>(op, this, before);
}

void BaseScene::Highlight(ItemList const& items, du::SmartPtr<qzk::Operation> const& op) {
    _HighlightItems(items, op, true);
}

void BaseScene::AddToHighlights(ItemList const& items, du::SmartPtr<qzk::Operation> const& op) {
    _HighlightItems(items, op, false);
}

void BaseScene::_HighlightItems(ItemList const& items, du::SmartPtr<qzk::Operation> const& op,
                                bool replace) {
    // An empty list changes nothing: ClearHighlights is the way to empty the set.
    if (items.empty()) {
        return;
    }
    dp::WriteLocker lock(GetRWLock());
    int cleared = 0;
    int added = 0;
    {
        AppearanceUpdate update(*kernelScene);
        if (!update) {
            return;
        }
        _RecordHighlights(op);
        cleared = replace ? _ClearHighlights() : 0;
        added = _AddToHighlights(items);
        // Unlike the other highlight operations, the associated looks are not written again.
    }
    if (cleared != 0 || added != 0) {
        _PostHighlightCount(static_cast<unsigned int>(highlights.size()), true);
    }
}

void BaseScene::_PostHighlightCount(unsigned int count, bool redraw) {
    _PostEvent(HIGHLIGHT_CHANGED_EVENT(), count);
    if (redraw) {
        kernelScene->SetViewsDirty();
    }
}

void BaseScene::ClearHighlights(du::SmartPtr<qzk::Operation> const& op) {
    dp::WriteLocker lock(GetRWLock());
    int cleared = 0;
    {
        AppearanceUpdate update(*kernelScene);
        if (!update) {
            return;
        }
        _RecordHighlights(op);
        cleared = _ClearHighlights();
        _RewriteAssociatedLooks();
    }
    if (cleared != 0) {
        _PostHighlightCount(0, true);
    }
}

void BaseScene::Dehighlight(ItemList const& items, du::SmartPtr<qzk::Operation> const& op) {
    if (items.empty()) {
        return;
    }
    dp::WriteLocker lock(GetRWLock());
    {
        AppearanceUpdate update(*kernelScene);
        if (!update) {
            return;
        }
        _RecordHighlights(op);
        for (du::SmartPtr<qzk::SelectionItem> const& entry : items) {
            auto ecad = Highlightable(entry);
            if (!ecad) {
                continue;
            }
            qzk::ecad::HighlightItem const key(qzk::ecad::AppearanceItem(ecad), du::Symbol::EMPTY,
                                               0xFFFFFFFFu, false);
            _RemoveHighlightItem(key);
        }
        // What stays keeps its own stored look.
        _RewriteStoredHighlightLooks();
        _RewriteAssociatedLooks();
    }
    _PostHighlightCount(static_cast<unsigned int>(highlights.size()), true);
}

bool BaseScene::IsHighlighted(du::SmartPtr<qzk::ecad::SelectionItem> const& item) {
    return highlights.contains(qzk::ecad::AppearanceItem(item));
}

void BaseScene::GetHighlights(HighlightContainer& out) const {
    dp::ReadLocker lock(GetRWLock());
    out = highlights;
}

void BaseScene::GetItems(HighlightContainer& out) const {
    GetHighlights(out);
}

void BaseScene::SetItems(HighlightContainer const& items, bool redraw) {
    dp::WriteLocker lock(GetRWLock());
    int count = 0;
    {
        AppearanceUpdate update(*kernelScene);
        if (!update) {
            return;
        }
        count = _ClearHighlights();
        highlights = items;
        count += static_cast<int>(highlights.size());
        _RewriteStoredHighlightLooks();
        _RewriteAssociatedLooks();
    }
    if (count != 0) {
        _PostHighlightCount(static_cast<unsigned int>(highlights.size()), redraw);
    }
}

} // namespace qzkapp::ecad
