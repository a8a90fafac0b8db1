// An ECAD view of one design, which can draw a crosshair over an object. Each crosshair call is
// journalled, stored, and told to the view's observers (ViewObserver::OnCrosshair) with the
// crosshair's whole state after the call.
#pragma once

#include "dg/DPoint2D.h"
#include "qzk/ecad/BaseView.h"

namespace qzk::ecad {

class View : public BaseView {
public:
    ~View() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    void SetCrosshairObject(void* object);
    void SetCrosshairPosition(dg::DPoint2D const& position);
    void SetCrosshairVisibility(bool visible);

    // Control: the user switched the text colour scheme; told to the observers.
    void NotifyTextColorChanged(bool on);

protected:
    View(qzk::Scene& scene, unsigned int pages);

    void _PostCrosshair();
};

} // namespace qzk::ecad
