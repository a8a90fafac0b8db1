#include "schematic/SheetViewStateHolder.h"

#include "qzk/ecad/BaseView.h"

namespace qzkapp::ecad {
namespace {

short const kLayerOrder[] = {12, 7, 30, 11, 19, 8, 28, 10, 29, 32, 0};

} // namespace

SheetViewStateHolder::SheetViewStateHolder() : currentPage(0), lastPreviewOp(kNoPreview) {}
SheetViewStateHolder::SheetViewStateHolder(SheetViewStateHolder const& other) = default;
SheetViewStateHolder& SheetViewStateHolder::operator=(SheetViewStateHolder const& other) = default;
SheetViewStateHolder::~SheetViewStateHolder() = default;

short SheetViewStateHolder::GetDefaultOrderSublayer(uint64 index) const {
    return kLayerOrder[index];
}

void SheetViewStateHolder::UpdateCurrentViewState(du::SmartPtr<qzk::ecad::BaseView> const& view,
                                                  unsigned int page) {
    if (!view) {
        return;
    }
    // The kernel may report a page before the design's sheets are counted (a load in flight):
    // the record is made for it rather than written past the end.
    if (page >= viewStates.size()) {
        viewStates.resize(static_cast<std::size_t>(page) + 1);
    }
    SheetViewState& state = viewStates[page];
    view->GetViewLocation(state.location);
    view->GetOrthoWidth(state.orthoWidth);
    state.valid = true;
}

void SheetViewStateHolder::PageNav(short page, du::SmartPtr<qzk::ecad::BaseView> const& view) {
    if (!view) {
        return;
    }
    // Confirming the previewed sheet saves nothing: the view shows that sheet already while the
    // current page is still the old one, so a save would file the new picture under the old page.
    if (lastPreviewOp != page) {
        UpdateCurrentViewState(view, currentPage);
    }
    lastPreviewOp = kNoPreview;
    unsigned int shown = view->GetCurrentPage();
    bool arrived = true;
    if (page < 0 || shown != static_cast<unsigned int>(page)) {
        arrived = page >= 0 && view->SetViewPage(static_cast<unsigned short>(page), true);
        if (arrived) {
            shown = view->GetCurrentPage();
        }
    }
    if (arrived) {
        currentPage = shown;
        PostPageChangedEvent();
    }
    _RestoreViewState(*view);
}

void SheetViewStateHolder::PreviewPageNav(short page,
                                          du::SmartPtr<qzk::ecad::BaseView> const& view) {
    if (!view) {
        return;
    }
    unsigned int const current = GetCurrentPage();
    unsigned int const shown =
        lastPreviewOp >= 0 ? static_cast<unsigned int>(lastPreviewOp) : current;
    UpdateCurrentViewState(view, shown);
    SetLastPreviewOp(page);
    unsigned int const target = page >= 0 ? static_cast<unsigned int>(page) : current;
    view->SetViewPage(static_cast<unsigned short>(target), true);
    _RestoreViewState(*view);
}

void SheetViewStateHolder::_RestoreViewState(qzk::ecad::BaseView& view) const {
    unsigned int const page = view.GetCurrentPage();
    if (page < viewStates.size() && viewStates[page].valid) {
        view.SetViewLocation(viewStates[page].location);
        view.SetOrthoWidth(viewStates[page].orthoWidth);
    } else {
        view.FitView();
    }
}

} // namespace qzkapp::ecad
