#include "compare/PCBOvlCompareSceneObserver.h"

#include "compare/PCBOvlCompareScene.h"
#include "scene/EventDecoding.h"

namespace qzkapp::ecad {

PCBOvlCompareSceneObserver::PCBOvlCompareSceneObserver() = default;
PCBOvlCompareSceneObserver::~PCBOvlCompareSceneObserver() = default;

void PCBOvlCompareSceneObserver::HandleEvent(unsigned char tag, dom::MessageReader& reader) {
    auto const own =
        OwnEvent<CompareSceneObserver>(*this, tag, PCBOvlCompareScene::GetBaseEventId(), reader);
    if (!own) {
        return;
    }
    switch (*own) {
    case 0: {
        auto const change =
            ReadOnlyVisibleChange(reader, "Failed to retrieve the HighlightOnlyVisible value");
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

void PCBOvlCompareSceneObserver::OnHighlightOnlyVisibleChanged(bool const& /*onlyVisible*/,
                                                               unsigned int const& /*source*/) {}
void PCBOvlCompareSceneObserver::OnOverlayChanged(unsigned int /*source*/) {}
void PCBOvlCompareSceneObserver::OnOrientationChanged(unsigned int /*flipped*/) {}
void PCBOvlCompareSceneObserver::OnRotationChanged(short /*degrees*/) {}
void PCBOvlCompareSceneObserver::OnIsolateOnlyVisibleChanged(bool const& /*onlyVisible*/,
                                                             unsigned int const& /*source*/) {}

} // namespace qzkapp::ecad
