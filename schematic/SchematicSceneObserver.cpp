#include "schematic/SchematicSceneObserver.h"

#include "scene/EventDecoding.h"
#include "schematic/SchematicScene.h"

namespace qzkapp::ecad {

SchematicSceneObserver::SchematicSceneObserver() = default;
SchematicSceneObserver::~SchematicSceneObserver() = default;

void SchematicSceneObserver::HandleEvent(unsigned char tag, dom::MessageReader& reader) {
    auto const own = OwnEvent<SceneObserver>(*this, tag, SchematicScene::GetBaseEventId(), reader);
    if (own && *own == 0) {
        OnPageChanged(ReadUInt(reader, "Failed to retrieve page number."));
    }
}

void SchematicSceneObserver::OnPageChanged(unsigned int /*page*/) {}

} // namespace qzkapp::ecad
