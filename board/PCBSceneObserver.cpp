#include "board/PCBSceneObserver.h"

#include "board/PCBScene.h"
#include "scene/EventDecoding.h"

namespace qzkapp::ecad {

PCBSceneObserver::PCBSceneObserver() = default;
PCBSceneObserver::~PCBSceneObserver() = default;

void PCBSceneObserver::HandleEvent(unsigned char tag, dom::MessageReader& reader) {
    auto const own = OwnEvent<SceneObserver>(*this, tag, PCBScene::GetBaseEventId(), reader);
    if (!own) {
        return;
    }
    switch (*own) {
    case 0: {
        auto const change = ReadOnlyVisibleChange(reader);
        OnHighlightOnlyVisibleChanged(change.onlyVisible, change.source);
        return;
    }
    case 1:
        OnOverlayChanged(ReadUInt(reader, "Failed to retrieve the change source"));
        return;
    case 2:
        OnOrientationChanged(ReadUInt(reader, "Failed to retrieve orientation"));
        return;
    case 3:
        OnRotationChanged(ReadRotation(reader));
        return;
    case 4: {
        auto const change = ReadOnlyVisibleChange(reader);
        OnIsolateOnlyVisibleChanged(change.onlyVisible, change.source);
        return;
    }
    default:
        return;
    }
}

void PCBSceneObserver::OnHighlightOnlyVisibleChanged(bool const& /*onlyVisible*/,
                                                     unsigned int const& /*source*/) {}
void PCBSceneObserver::OnOverlayChanged(unsigned int /*source*/) {}
void PCBSceneObserver::OnOrientationChanged(unsigned int /*flipped*/) {}
void PCBSceneObserver::OnRotationChanged(short /*degrees*/) {}
void PCBSceneObserver::OnIsolateOnlyVisibleChanged(bool const& /*onlyVisible*/,
                                                   unsigned int const& /*source*/) {}

} // namespace qzkapp::ecad
