// Where the view stood on each sheet of a schematic and how wide it showed, so that going back
// to a sheet finds the picture as it was left; and the preview of other sheets, whose pictures
// are kept apart from the sheet that is really current.
//
// A mix-in: it owns no lock and posts nothing. The scene that derives from it overrides the pure
// operations to add its lock and its event; PageNav and UpdateCurrentViewState have bodies here
// that the overrides call. A null view is ignored.
#pragma once

#include "component/ComponentExport.h"
#include "dg/Location.h"
#include "du/SmartPtr.h"
#include "du/Types.h"

#include <vector>

namespace qzk::ecad {
class BaseView;
}

namespace qzkapp::ecad {

class QZECAD_EXPORT SheetViewStateHolder {
public:
    struct SheetViewState {
        dg::Location location;
        bool valid = false;
        double orthoWidth = 0.0;
    };

    SheetViewStateHolder();
    SheetViewStateHolder(SheetViewStateHolder const& other);
    SheetViewStateHolder& operator=(SheetViewStateHolder const& other);

    virtual ~SheetViewStateHolder();
    // Saves the view's picture as that of page.
    virtual void UpdateCurrentViewState(du::SmartPtr<qzk::ecad::BaseView> const& view,
                                        unsigned int page) = 0;
    // Goes to page and makes it the current page; posts even when the view shows it already.
    virtual void PageNav(short page, du::SmartPtr<qzk::ecad::BaseView> const& view) = 0;
    // Shows page without making it current; a negative page ends the preview. Posts nothing.
    virtual void PreviewPageNav(short page, du::SmartPtr<qzk::ecad::BaseView> const& view);

protected:
    virtual void PostPageChangedEvent() = 0;
    virtual void SetLastPreviewOp(short page) = 0;
    virtual unsigned int GetCurrentPage() const = 0;

    // The schematic layers in the order of display; index 10 is the terminating 0. No bounds
    // check.
    short GetDefaultOrderSublayer(uint64 index) const;

    // Puts the saved picture of the sheet the view shows back, or fits a sheet never saved.
    void _RestoreViewState(qzk::ecad::BaseView& view) const;

    // Indexed by page; sized to the sheets when the design has loaded.
    std::vector<SheetViewState> viewStates;
    unsigned int currentPage;
    // The page being previewed; negative when no preview runs.
    short lastPreviewOp;

    static short const kNoPreview = -11;
};

} // namespace qzkapp::ecad
