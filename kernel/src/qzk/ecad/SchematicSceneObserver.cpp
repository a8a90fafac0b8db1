#include "qzk/ecad/SchematicSceneObserver.h"

#include "SceneMessages.h"
#include "qzk/ecad/SchematicView.h"

#include <vector>

namespace qzk::ecad {

SchematicSceneObserver::SchematicSceneObserver() = default;
SchematicSceneObserver::~SchematicSceneObserver() = default;

void SchematicSceneObserver::HandleEvent(unsigned char id, dom::MessageReader& reader) {
    detail::Decoder in(reader, "qzk::ecad::SchematicSceneObserver", id);
    if (detail::DecodeViewAndLook<SchematicView, SchematicAppearance>(*this, in, id, true)) {
        return;
    }
    switch (id) {
    case SublayerColorVisChangedEventId:
        OnSublayerColorVisChanged();
        break;
    default:
        SceneObserver::HandleEvent(id, reader);
        break;
    }
}

void SchematicSceneObserver::OnViewCreate(du::SmartPtr<SchematicView> const&) {}
void SchematicSceneObserver::OnViewRemove(du::SmartPtr<SchematicView> const&) {}
void SchematicSceneObserver::OnAppearanceChanged(std::set<SchematicAppearance> const&,
                                                 std::set<SchematicAppearance> const&) {}
void SchematicSceneObserver::OnSublayerColorVisChanged() {}

} // namespace qzk::ecad
