#include "qzk/ecad/PCBSceneObserver.h"

#include "SceneMessages.h"
#include "qzk/ecad/PCBView.h"

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

PCBSceneObserver::PCBSceneObserver() = default;
PCBSceneObserver::~PCBSceneObserver() = default;

void PCBSceneObserver::HandleEvent(unsigned char id, dom::MessageReader& reader) {
    detail::Decoder in(reader, "qzk::ecad::PCBSceneObserver", id);
    switch (id) {
    case ViewCreateEventId:
        OnViewCreate(in.ObjectAs<PCBView>());
        break;
    case ViewRemoveEventId:
        OnViewRemove(in.ObjectAs<PCBView>());
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
    case SublayerColorVisChangedEventId:
        OnSublayerColorVisChanged();
        break;
    default:
        SceneObserver::HandleEvent(id, reader);
        break;
    }
}

void PCBSceneObserver::OnViewCreate(du::SmartPtr<PCBView> const&) {}
void PCBSceneObserver::OnViewRemove(du::SmartPtr<PCBView> const&) {}
void PCBSceneObserver::OnAppearanceChanged(std::set<PCBAppearance> const&,
                                           std::set<PCBAppearance> const&) {}
void PCBSceneObserver::OnFillShapesChanged(bool) {}
void PCBSceneObserver::OnIsolate(std::vector<AppearanceItem> const&, bool) {}
void PCBSceneObserver::OnIsolateLayers(std::vector<short> const&, bool) {}
void PCBSceneObserver::OnIsolateOnlyVisibleChanged(bool) {}
void PCBSceneObserver::OnSlExcludedObjTypesChanged() {}
void PCBSceneObserver::OnSublayerColorVisChanged() {}

} // namespace qzk::ecad
