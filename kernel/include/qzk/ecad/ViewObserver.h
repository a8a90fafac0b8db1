// Observer of an ECAD view of one design: the crosshair's state after each change, and the text
// colour switch. A malformed message throws std::runtime_error, which the message loop keeps.
#pragma once

#include "dg/DPoint2D.h"
#include "qzk/ecad/BaseViewObserver.h"

namespace qzk::ecad {

class ViewObserver : public BaseViewObserver {
public:
    ViewObserver();
    ~ViewObserver() override;

    void HandleEvent(unsigned char id, dom::MessageReader& reader) override;

    virtual void OnCrosshair(bool visible, dg::DPoint2D const& position, void* object);
    virtual void OnTextColorChanged(bool on);
};

} // namespace qzk::ecad
