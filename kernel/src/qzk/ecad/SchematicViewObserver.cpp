#include "qzk/ecad/SchematicViewObserver.h"

namespace qzk::ecad {

SchematicViewObserver::SchematicViewObserver() = default;
SchematicViewObserver::~SchematicViewObserver() = default;

void SchematicViewObserver::HandleEvent(unsigned char id, dom::MessageReader& reader) {
    if (id != HomeEventId) {
        ViewObserver::HandleEvent(id, reader);
        return;
    }
    OnHome();
}

void SchematicViewObserver::OnHome() {}

} // namespace qzk::ecad
