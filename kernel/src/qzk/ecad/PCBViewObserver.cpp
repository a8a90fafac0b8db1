#include "qzk/ecad/PCBViewObserver.h"

#include "SceneMessages.h"

namespace qzk::ecad {

PCBViewObserver::PCBViewObserver() = default;
PCBViewObserver::~PCBViewObserver() = default;

void PCBViewObserver::HandleEvent(unsigned char id, dom::MessageReader& reader) {
    if (id != DimmingLevelEventId) {
        ViewObserver::HandleEvent(id, reader);
        return;
    }
    detail::Decoder in(reader, "qzk::ecad::PCBViewObserver", id);
    OnDimmingLevel(in.UInt8());
}

void PCBViewObserver::OnDimmingLevel(unsigned char) {}

} // namespace qzk::ecad
