#include "compare/PCBSchCompareSceneObserver.h"

#include "compare/PCBSchCompareScene.h"
#include "scene/EventDecoding.h"

namespace qzkapp::ecad {

PCBSchCompareSceneObserver::PCBSchCompareSceneObserver() = default;
PCBSchCompareSceneObserver::~PCBSchCompareSceneObserver() = default;

void PCBSchCompareSceneObserver::HandleEvent(unsigned char tag, dom::MessageReader& reader) {
    auto const own =
        OwnEvent<CompareSceneObserver>(*this, tag, PCBSchCompareScene::GetBaseEventId(), reader);
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
        OnOrientationChanged(ReadUInt(reader, "Failed to retrieve orientation"));
        return;
    case 2:
        OnRotationChanged(ReadRotation(reader));
        return;
    case 3:
        OnPageChanged(ReadUInt(reader, "Failed to retrieve page number."));
        return;
    case 4:
        OnPCBSublayerColorVisChanged(
            ReadInt(reader, "Failed to retrieve pcb colorvis change source."));
        return;
    case 5:
        OnSchSublayerColorVisChanged(
            ReadInt(reader, "Failed to retrieve schematic colorvis change source."));
        return;
    case 6:
        OnPcbDrawOrderChanged();
        return;
    case 7:
        OnSchDrawOrderChanged();
        return;
    case 8: {
        auto const change = ReadOnlyVisibleChange(reader);
        OnIsolateOnlyVisibleChanged(change.onlyVisible, change.source);
        return;
    }
    default:
        return;
    }
}

void PCBSchCompareSceneObserver::OnHighlightOnlyVisibleChanged(bool const& /*onlyVisible*/,
                                                               unsigned int const& /*source*/) {}
void PCBSchCompareSceneObserver::OnOrientationChanged(unsigned int /*flipped*/) {}
void PCBSchCompareSceneObserver::OnRotationChanged(short /*degrees*/) {}
void PCBSchCompareSceneObserver::OnIsolateOnlyVisibleChanged(bool const& /*onlyVisible*/,
                                                             unsigned int const& /*source*/) {}
void PCBSchCompareSceneObserver::OnPageChanged(unsigned int /*page*/) {}
void PCBSchCompareSceneObserver::OnPCBSublayerColorVisChanged(unsigned int /*source*/) {}
void PCBSchCompareSceneObserver::OnSchSublayerColorVisChanged(unsigned int /*source*/) {}
void PCBSchCompareSceneObserver::OnPcbDrawOrderChanged() {}
void PCBSchCompareSceneObserver::OnSchDrawOrderChanged() {}

} // namespace qzkapp::ecad
