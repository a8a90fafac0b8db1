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
        unsigned int const source = ReadUInt(reader, "Failed to retrieve the ChangeSource value");
        bool const onlyVisible = ReadBool(reader, "Failed to retrieve the Only Visible value");
        OnHighlightOnlyVisibleChanged(onlyVisible, source);
        return;
    }
    case 1:
        OnOverlayChanged(ReadUInt(reader, "Failed to retrieve the change source"));
        return;
    case 2:
        OnOrientationChanged(ReadUInt(reader, "Failed to retrieve orientation"));
        return;
    case 3: {
        unsigned int const word = ReadUInt(reader, "Failed to retrieve rotation");
        OnRotationChanged(static_cast<short>(static_cast<unsigned short>(word & 0xFFFFu)));
        return;
    }
    case 4: {
        unsigned int const source = ReadUInt(reader, "Failed to retrieve the ChangeSource value");
        bool const onlyVisible = ReadBool(reader, "Failed to retrieve the Only Visible value");
        OnIsolateOnlyVisibleChanged(onlyVisible, source);
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
