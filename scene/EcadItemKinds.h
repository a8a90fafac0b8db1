// What the scene's sources ask of a selection entry: which kind of ECAD item it stands for.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/SelectionItem.h"
#include "qzk/ecad/GeometrySelectionItem.h"
#include "qzk/ecad/SelectionItem.h"
#include "qzk/ecad/selection_types.h"

#include <vector>

namespace qzkapp::ecad {

using ItemList = std::vector<du::SmartPtr<qzk::SelectionItem>>;

// The ECAD selection item an entry stands for, or null.
inline du::SmartPtr<qzk::ecad::SelectionItem>
AsEcadItem(du::SmartPtr<qzk::SelectionItem> const& item) {
    return du::DynamicCast<qzk::ecad::SelectionItem>(item);
}

// An ECAD selection item itself or, for a geometry item, its parent; null when neither. The
// flag tells whether the entry was of one of the two kinds at all (a geometry item whose parent
// is no ECAD item still counts, and yields the empty appearance item).
inline du::SmartPtr<qzk::ecad::SelectionItem>
EcadItemOrParent(du::SmartPtr<qzk::SelectionItem> const& item, bool& matched) {
    matched = true;
    if (auto ecad = AsEcadItem(item)) {
        return ecad;
    }
    if (auto geometry = du::DynamicCast<qzk::ecad::GeometrySelectionItem>(item)) {
        return du::DynamicCast<qzk::ecad::SelectionItem>(geometry->GetParentObject());
    }
    matched = false;
    return nullptr;
}

// The checks every highlight operation makes of an entry: present, of a content type that can be
// highlighted, and an ECAD selection item.
inline du::SmartPtr<qzk::ecad::SelectionItem>
Highlightable(du::SmartPtr<qzk::SelectionItem> const& item) {
    if (!item || !qzk::ecad::selection_types::Belongs(item->GetContentType())) {
        return nullptr;
    }
    return AsEcadItem(item);
}

} // namespace qzkapp::ecad
