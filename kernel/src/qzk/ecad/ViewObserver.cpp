#include "qzk/ecad/ViewObserver.h"

#include "SceneMessages.h"

namespace qzk::ecad {

ViewObserver::ViewObserver() = default;
ViewObserver::~ViewObserver() = default;

void ViewObserver::HandleEvent(unsigned char id, dom::MessageReader& reader) {
    detail::Decoder in(reader, "qzk::ecad::ViewObserver", id);
    switch (id) {
    case CrosshairEventId: {
        bool visible = in.Bool();
        double x = in.Double();
        double y = in.Double();
        void* object = in.Pointer();
        OnCrosshair(visible, dg::DPoint2D(x, y), object);
        break;
    }
    case TextColorChangedEventId:
        OnTextColorChanged(in.Bool());
        break;
    default:
        BaseViewObserver::HandleEvent(id, reader);
        break;
    }
}

void ViewObserver::OnCrosshair(bool, dg::DPoint2D const&, void*) {}
void ViewObserver::OnTextColorChanged(bool) {}

} // namespace qzk::ecad
