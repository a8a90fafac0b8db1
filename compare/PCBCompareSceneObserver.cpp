#include "compare/PCBCompareSceneObserver.h"

#include "compare/PCBCompareScene.h"
#include "scene/EventDecoding.h"

namespace qzkapp::ecad {

PCBCompareSceneObserver::PCBCompareSceneObserver() = default;
PCBCompareSceneObserver::~PCBCompareSceneObserver() = default;

void PCBCompareSceneObserver::HandleEvent(unsigned char tag, dom::MessageReader& reader) {
    auto const own =
        OwnEvent<CompareSceneObserver>(*this, tag, PCBCompareScene::GetBaseEventId(), reader);
    if (!own) {
        return;
    }
    switch (*own) {
    case 0:
        OnOrientationChanged(ReadUInt(reader, "Failed to retrieve orientation"));
        return;
    case 1: {
        unsigned int const word = ReadUInt(reader, "Failed to retrieve rotation");
        OnRotationChanged(static_cast<short>(static_cast<unsigned short>(word & 0xFFFFu)));
        return;
    }
    case 2: {
        unsigned int const source = ReadUInt(reader, "Failed to retrieve the ChangeSource value");
        bool const onlyVisible = ReadBool(reader, "Failed to retrieve the Only Visible value");
        OnHighlightOnlyVisibleChanged(onlyVisible, source);
        return;
    }
    case 3: {
        unsigned int const source = ReadUInt(reader, "Failed to retrieve the ChangeSource value");
        bool const onlyVisible = ReadBool(reader, "Failed to retrieve the Only Visible value");
        OnIsolateOnlyVisibleChanged(onlyVisible, source);
        return;
    }
    default:
        return;
    }
}

void PCBCompareSceneObserver::OnOrientationChanged(unsigned int /*flipped*/) {}
void PCBCompareSceneObserver::OnRotationChanged(short /*degrees*/) {}
void PCBCompareSceneObserver::OnHighlightOnlyVisibleChanged(bool const& /*onlyVisible*/,
                                                            unsigned int const& /*source*/) {}
void PCBCompareSceneObserver::OnIsolateOnlyVisibleChanged(bool const& /*onlyVisible*/,
                                                          unsigned int const& /*source*/) {}

} // namespace qzkapp::ecad
