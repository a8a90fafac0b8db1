#include "qzk/ecad/PCBCompareViewObserver.h"

#include "SceneMessages.h"

namespace qzk::ecad {

PCBCompareViewObserver::PCBCompareViewObserver() = default;
PCBCompareViewObserver::~PCBCompareViewObserver() = default;

void PCBCompareViewObserver::HandleEvent(unsigned char id, dom::MessageReader& reader) {
    if (id != DimmingLevelEventId) {
        CompareViewObserver::HandleEvent(id, reader);
        return;
    }
    detail::Decoder in(reader, "qzk::ecad::PCBCompareViewObserver", id);
    OnDimmingLevel(in.UInt8());
}

void PCBCompareViewObserver::OnDimmingLevel(unsigned char) {}

} // namespace qzk::ecad
