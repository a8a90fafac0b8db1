#include "qzk/ecad/CompareSceneObserver.h"

namespace qzk::ecad {

CompareSceneObserver::CompareSceneObserver() = default;
CompareSceneObserver::~CompareSceneObserver() = default;

void CompareSceneObserver::HandleEvent(unsigned char id, dom::MessageReader& reader) {
    switch (id) {
    case CompareColorChangedEventId:
        OnCompareColorChanged();
        break;
    case CompareResultApplyEventId:
        OnCompareResultApply();
        break;
    default:
        BaseSceneObserver::HandleEvent(id, reader);
        break;
    }
}

void CompareSceneObserver::OnCompareColorChanged() {}
void CompareSceneObserver::OnCompareResultApply() {}

} // namespace qzk::ecad
