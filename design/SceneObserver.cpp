#include "design/SceneObserver.h"

#include "scene/BaseScene.h"
#include "scene/EventDecoding.h"

namespace qzkapp::ecad {

SceneObserver::SceneObserver() = default;
SceneObserver::~SceneObserver() = default;

void SceneObserver::HandleEvent(unsigned char tag, dom::MessageReader& reader) {
    // The design scenes' family starts where the base family ends.
    auto const own = OwnEvent<BaseSceneObserver>(*this, tag, BaseScene::GetNextEventId(), reader);
    if (!own) {
        return;
    }
    switch (*own) {
    case 0: {
        unsigned short const error = ReadUShort(reader, "Failed to retrieve the error number");
        du::Symbol const text = ReadSymbol(reader, "Failed to retrieve the error string");
        OnDesignLoaded(error, text);
        return;
    }
    case 1:
        OnSublayerColorVisChanged(ReadInt(reader, "Failed to retrieve the change source"));
        return;
    case 2:
        OnImageChanged(ReadInt(reader, "Failed to retrieve the change source"));
        return;
    default:
        ThrowUnrecognised("qzkapp::ecad::SceneObserver", tag);
    }
}

void SceneObserver::OnDesignLoaded(unsigned short /*error*/, du::Symbol const& /*text*/) {}
void SceneObserver::OnSublayerColorVisChanged(unsigned int /*source*/) {}
void SceneObserver::OnImageChanged(unsigned int /*source*/) {}

} // namespace qzkapp::ecad
