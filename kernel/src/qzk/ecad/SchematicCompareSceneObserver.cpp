#include "qzk/ecad/SchematicCompareSceneObserver.h"

#include "SceneMessages.h"
#include "qzk/ecad/SchematicCompareView.h"

#include <vector>

namespace qzk::ecad {

SchematicCompareSceneObserver::SchematicCompareSceneObserver() = default;
SchematicCompareSceneObserver::~SchematicCompareSceneObserver() = default;

void SchematicCompareSceneObserver::HandleEvent(unsigned char id, dom::MessageReader& reader) {
    detail::Decoder in(reader, "qzk::ecad::SchematicCompareSceneObserver", id);
    if (detail::DecodeViewAndLook<SchematicCompareView, SchematicAppearance>(*this, in, id, true)) {
        return;
    }
    switch (id) {
    case SublayerColorVisChangedEventId:
        OnSublayerColorVisChanged();
        break;
    case SlExcludedObjTypesChangedEventId:
        OnSlExcludedObjTypesChanged();
        break;
    default:
        CompareSceneObserver::HandleEvent(id, reader);
        break;
    }
}

void SchematicCompareSceneObserver::OnViewCreate(du::SmartPtr<SchematicCompareView> const&) {}
void SchematicCompareSceneObserver::OnViewRemove(du::SmartPtr<SchematicCompareView> const&) {}
void SchematicCompareSceneObserver::OnAppearanceChanged(std::set<SchematicAppearance> const&,
                                                        std::set<SchematicAppearance> const&) {}
void SchematicCompareSceneObserver::OnSublayerColorVisChanged() {}
void SchematicCompareSceneObserver::OnSlExcludedObjTypesChanged() {}

} // namespace qzk::ecad
