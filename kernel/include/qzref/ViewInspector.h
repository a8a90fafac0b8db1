// What a test reads back from a kernel view, and what it does to a 2D view in the user's place;
// reached through qzref::Inspect.
#pragma once

#include "dg/DPoint2D.h"
#include "dg/Location.h"
#include "qzk/View2D.h"

#include <string>

namespace qzref {

class ViewInspector {
public:
    explicit ViewInspector(qzk::View& view) noexcept : view_(view) {}

    unsigned int GetNumPages() const { return view_.GetNumPages(); }
    // 0-based; 0 until the view is sent elsewhere.
    unsigned int GetPage() const { return view_.GetPage(); }
    // Default (not set) until the view is placed.
    dg::Location GetLocation() const { return view_.GetLocation(); }
    // How often the view was fitted (FitView of the derived views).
    unsigned int GetFitCount() const { return view_.GetFitCount(); }
    void* GetCrosshairObject() const { return view_.GetCrosshairObject(); }
    dg::DPoint2D GetCrosshairPosition() const { return view_.GetCrosshairPosition(); }
    bool GetCrosshairVisibility() const { return view_.GetCrosshairVisibility(); }

private:
    qzk::View& view_;
};

class View2DInspector : public ViewInspector {
public:
    explicit View2DInspector(qzk::View2D& view) noexcept : ViewInspector(view), view2D_(view) {}

    // What the user does to the view, told to its observers.
    void NotifyFocus(bool focused) { view2D_.NotifyFocus(focused); }
    void NotifyActivate() { view2D_.NotifyActivate(); }
    // Stores the message and tells the observers that it changed.
    void PostStatusMessage(std::string const& text) { view2D_.PostStatusMessage(text); }

private:
    qzk::View2D& view2D_;
};

} // namespace qzref
