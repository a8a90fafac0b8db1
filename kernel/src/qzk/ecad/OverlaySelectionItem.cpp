#include "qzk/ecad/OverlaySelectionItem.h"

#include "qzk/ecad/Overlay.h"
#include "qzk/ecad/selection_types.h"

namespace qzk::ecad {
namespace {
bool const registered =
    ClassType::RegisterClass(classid::EcadOverlaySelectionItem, {classid::SelectionItem});
} // namespace

OverlaySelectionItem::OverlaySelectionItem(du::SmartPtr<Overlay> const& overlay, uint64 itemId)
    : overlay_(overlay), itemId_(itemId) {}

OverlaySelectionItem::~OverlaySelectionItem() = default;

ClassType const& OverlaySelectionItem::GetClassType() const {
    static ClassType const type(classid::EcadOverlaySelectionItem);
    return type;
}

du::Symbol OverlaySelectionItem::GetDebugClassName() const {
    return du::Symbol("qzk::ecad::OverlaySelectionItem");
}

du::SmartPtr<qzk::SelectionItem> OverlaySelectionItem::Clone() const {
    return du::SmartPtr<qzk::SelectionItem>(new OverlaySelectionItem(overlay_, itemId_));
}

du::Symbol OverlaySelectionItem::GetContentType() const {
    return selection_types::ECAD_OVERLAY();
}

void OverlaySelectionItem::PopulateRepresentation(std::string& out) const {
    out = "overlay item " + std::to_string(itemId_);
}

} // namespace qzk::ecad
