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
    case 1:
        OnRotationChanged(ReadRotation(reader));
        return;
    case 2: {
        auto const change = ReadOnlyVisibleChange(reader);
        OnHighlightOnlyVisibleChanged(change.onlyVisible, change.source);
        return;
    }
    case 3: {
        auto const change = ReadOnlyVisibleChange(reader);
        OnIsolateOnlyVisibleChanged(change.onlyVisible, change.source);
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
