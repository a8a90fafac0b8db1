#include "scene/BaseSceneObserver.h"

#include "dom/MessageReader.h"
#include "scene/BaseScene.h"
#include "scene/EventDecoding.h"

namespace qzkapp::ecad {

BaseSceneObserver::BaseSceneObserver() = default;
BaseSceneObserver::~BaseSceneObserver() = default;

void BaseSceneObserver::HandleEvent(unsigned char tag, dom::MessageReader& reader) {
    auto const own = OwnEvent<qzk::Observer>(*this, tag, BaseScene::GetBaseEventId(), reader);
    if (!own) {
        return;
    }
    switch (*own) {
    case 0:
        OnDrawOrderChanged();
        return;
    case 1:
        OnHighlightChanged(ReadInt(reader, "Failed to retrieve the number of highlighted objects"));
        return;
    case 2:
        OnGroupColorVisChanged(ReadInt(reader, "Failed to retrieve the change source"));
        return;
    case 3:
        OnAssocHighlightColorChanged(
            ReadUInt(reader, "Failed to retrieve associated highlight color"));
        return;
    default:
        ThrowUnrecognised("qzkapp::ecad::BaseSceneObserver", tag);
    }
}

void BaseSceneObserver::OnDrawOrderChanged() {}
void BaseSceneObserver::OnHighlightChanged(unsigned int /*count*/) {}
void BaseSceneObserver::OnGroupColorVisChanged(unsigned int /*source*/) {}
void BaseSceneObserver::OnAssocHighlightColorChanged(unsigned int /*color*/) {}

} // namespace qzkapp::ecad
