#include "compare/CompareSceneObserver.h"

#include "scene/BaseScene.h"
#include "scene/EventDecoding.h"

namespace qzkapp::ecad {

CompareSceneObserver::CompareSceneObserver() = default;
CompareSceneObserver::~CompareSceneObserver() = default;

void CompareSceneObserver::HandleEvent(unsigned char tag, dom::MessageReader& reader) {
    auto const own = OwnEvent<BaseSceneObserver>(*this, tag, BaseScene::GetNextEventId(), reader);
    if (!own) {
        return;
    }
    switch (*own) {
    case 0: {
        bool const second = ReadBool(reader, "Failed to retrieve the second flag");
        unsigned short const error = ReadUShort(reader, "Failed to retrieve the error number");
        du::Symbol const text = ReadSymbol(reader, "Failed to retrieve the error string");
        OnDesignLoaded(second, error, text);
        return;
    }
    case 1:
        OnSublayerColorVisChanged(ReadInt(reader, "Failed to retrieve the change source"));
        return;
    default:
        ThrowUnrecognised("qzkapp::ecad::CompareSceneObserver", tag);
    }
}

void CompareSceneObserver::OnDesignLoaded(bool /*second*/, unsigned short /*error*/,
                                          du::Symbol const& /*text*/) {}
void CompareSceneObserver::OnSublayerColorVisChanged(unsigned int /*source*/) {}

} // namespace qzkapp::ecad
