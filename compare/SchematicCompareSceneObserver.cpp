#include "compare/SchematicCompareSceneObserver.h"

#include "compare/SchematicCompareScene.h"
#include "scene/EventDecoding.h"

namespace qzkapp::ecad {

SchematicCompareSceneObserver::SchematicCompareSceneObserver() = default;
SchematicCompareSceneObserver::~SchematicCompareSceneObserver() = default;

void SchematicCompareSceneObserver::HandleEvent(unsigned char tag, dom::MessageReader& reader) {
    auto const own =
        OwnEvent<CompareSceneObserver>(*this, tag, SchematicCompareScene::GetBaseEventId(), reader);
    if (own && *own == 0) {
        OnPageChanged(ReadUInt(reader, "Failed to retrieve page number."));
    }
}

void SchematicCompareSceneObserver::OnPageChanged(unsigned int /*page*/) {}

} // namespace qzkapp::ecad
