// A selection item inside an overlay: the overlay and the overlay's own item id.
#pragma once

#include "du/SmartPtr.h"
#include "du/Types.h"
#include "qzk/SelectionItem.h"

namespace qzk::ecad {

class Overlay;

class OverlaySelectionItem : public qzk::SelectionItem {
public:
    OverlaySelectionItem(du::SmartPtr<Overlay> const& overlay, uint64 itemId);
    ~OverlaySelectionItem() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;
    du::SmartPtr<qzk::SelectionItem> Clone() const override;
    // selection_types::ECAD_OVERLAY().
    du::Symbol GetContentType() const override;
    void PopulateRepresentation(std::string& out) const override;

    du::SmartPtr<Overlay> const& GetOverlay() const { return overlay_; }
    uint64 GetItemId() const noexcept { return itemId_; }

private:
    du::SmartPtr<Overlay> overlay_;
    uint64 itemId_;
};

} // namespace qzk::ecad
