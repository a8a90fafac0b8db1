#include "qzk/ecad/PCBOvlCompareSceneObserver.h"

#include "SceneMessages.h"
#include "qzk/ecad/PCBCompareView.h"

namespace qzk::ecad {

namespace {

std::set<PCBAppearance> ToAppearances(std::vector<unsigned int> const& values) {
    std::set<PCBAppearance> out;
    for (unsigned int value : values) {
        out.insert(static_cast<PCBAppearance>(value));
    }
    return out;
}

} // namespace

PCBOvlCompareSceneObserver::PCBOvlCompareSceneObserver() = default;
PCBOvlCompareSceneObserver::~PCBOvlCompareSceneObserver() = default;

void PCBOvlCompareSceneObserver::HandleEvent(unsigned char id, dom::MessageReader& reader) {
    detail::Decoder in(reader, "qzk::ecad::PCBOvlCompareSceneObserver", id);
    switch (id) {
    case ViewCreateEventId:
        OnViewCreate(in.ObjectAs<PCBCompareView>());
        break;
    case ViewRemoveEventId:
        OnViewRemove(in.ObjectAs<PCBCompareView>());
        break;
    case AppearanceChangedEventId: {
        // A notice about a schematic's look is not this scene's; it is read and dropped.
        bool schematic = in.Bool();
        std::set<PCBAppearance> on = ToAppearances(in.UInts());
        std::set<PCBAppearance> off = ToAppearances(in.UInts());
        if (!schematic) {
            OnAppearanceChanged(on, off);
        }
        break;
    }
    case FillShapesChangedEventId:
        OnFillShapesChanged(in.Bool());
        break;
    case IsolateEventId: {
        std::vector<AppearanceItem> items = in.Items();
        OnIsolate(items, in.Bool());
        break;
    }
    case IsolateLayersEventId: {
        std::vector<short> layers = in.Shorts();
        OnIsolateLayers(layers, in.Bool());
        break;
    }
    case IsolateOnlyVisibleChangedEventId:
        OnIsolateOnlyVisibleChanged(in.Bool());
        break;
    case SlExcludedObjTypesChangedEventId:
        OnSlExcludedObjTypesChanged();
        break;
    case SublayerVisChangedEventId:
        OnSublayerVisChanged();
        break;
    default:
        CompareSceneObserver::HandleEvent(id, reader);
        break;
    }
}

void PCBOvlCompareSceneObserver::OnViewCreate(du::SmartPtr<PCBCompareView> const&) {}
void PCBOvlCompareSceneObserver::OnViewRemove(du::SmartPtr<PCBCompareView> const&) {}
void PCBOvlCompareSceneObserver::OnAppearanceChanged(std::set<PCBAppearance> const&,
                                                     std::set<PCBAppearance> const&) {}
void PCBOvlCompareSceneObserver::OnFillShapesChanged(bool) {}
void PCBOvlCompareSceneObserver::OnIsolate(std::vector<AppearanceItem> const&, bool) {}
void PCBOvlCompareSceneObserver::OnIsolateLayers(std::vector<short> const&, bool) {}
void PCBOvlCompareSceneObserver::OnIsolateOnlyVisibleChanged(bool) {}
void PCBOvlCompareSceneObserver::OnSlExcludedObjTypesChanged() {}
void PCBOvlCompareSceneObserver::OnSublayerVisChanged() {}

} // namespace qzk::ecad
