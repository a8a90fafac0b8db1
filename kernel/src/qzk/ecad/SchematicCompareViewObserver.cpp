#include "qzk/ecad/SchematicCompareViewObserver.h"

namespace qzk::ecad {

SchematicCompareViewObserver::SchematicCompareViewObserver() = default;
SchematicCompareViewObserver::~SchematicCompareViewObserver() = default;

void SchematicCompareViewObserver::HandleEvent(unsigned char id, dom::MessageReader& reader) {
    if (id != HomeEventId) {
        CompareViewObserver::HandleEvent(id, reader);
        return;
    }
    OnHome();
}

void SchematicCompareViewObserver::OnHome() {}

} // namespace qzk::ecad
