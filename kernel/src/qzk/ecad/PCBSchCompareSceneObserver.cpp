#include "qzk/ecad/PCBSchCompareSceneObserver.h"

#include "SceneMessages.h"
#include "qzk/ecad/PCBView.h"
#include "qzk/ecad/SchematicView.h"

namespace qzk::ecad {

PCBSchCompareSceneObserver::PCBSchCompareSceneObserver() = default;
PCBSchCompareSceneObserver::~PCBSchCompareSceneObserver() = default;

void PCBSchCompareSceneObserver::HandleEvent(unsigned char id, dom::MessageReader& reader) {
    detail::Decoder in(reader, "qzk::ecad::PCBSchCompareSceneObserver", id);
    if (detail::DecodeBoardNotice(*this, in, id)) {
        return;
    }
    switch (id) {
    case ViewCreateEventId:
    case ViewRemoveEventId: {
        du::SmartPtr<du::RefCounted> view = in.Object();
        bool create = id == ViewCreateEventId;
        if (auto* board = dynamic_cast<PCBView*>(view.Get())) {
            du::SmartPtr<PCBView> typed(board);
            create ? OnViewCreate(typed) : OnViewRemove(typed);
        } else if (auto* sheet = dynamic_cast<SchematicView*>(view.Get())) {
            du::SmartPtr<SchematicView> typed(sheet);
            create ? OnViewCreate(typed) : OnViewRemove(typed);
        }
        break;
    }
    case AppearanceChangedEventId:
        if (in.Bool()) {
            std::set<SchematicAppearance> on = in.Looks<SchematicAppearance>();
            OnAppearanceChanged(on, in.Looks<SchematicAppearance>());
        } else {
            std::set<PCBAppearance> on = in.Looks<PCBAppearance>();
            OnAppearanceChanged(on, in.Looks<PCBAppearance>());
        }
        break;
    case PcbDrawOrderChangedEventId:
        OnPcbDrawOrderChanged();
        break;
    case SchDrawOrderChangedEventId:
        OnSchDrawOrderChanged();
        break;
    case PcbSublayerColorVisChangedEventId:
        OnPcbSublayerColorVisChanged();
        break;
    case SchSublayerColorVisChangedEventId:
        OnSchSublayerColorVisChanged();
        break;
    default:
        CompareSceneObserver::HandleEvent(id, reader);
        break;
    }
}

void PCBSchCompareSceneObserver::OnViewCreate(du::SmartPtr<PCBView> const&) {}
void PCBSchCompareSceneObserver::OnViewCreate(du::SmartPtr<SchematicView> const&) {}
void PCBSchCompareSceneObserver::OnViewRemove(du::SmartPtr<PCBView> const&) {}
void PCBSchCompareSceneObserver::OnViewRemove(du::SmartPtr<SchematicView> const&) {}
void PCBSchCompareSceneObserver::OnAppearanceChanged(std::set<PCBAppearance> const&,
                                                     std::set<PCBAppearance> const&) {}
void PCBSchCompareSceneObserver::OnAppearanceChanged(std::set<SchematicAppearance> const&,
                                                     std::set<SchematicAppearance> const&) {}
void PCBSchCompareSceneObserver::OnFillShapesChanged(bool) {}
void PCBSchCompareSceneObserver::OnIsolate(std::vector<AppearanceItem> const&, bool) {}
void PCBSchCompareSceneObserver::OnIsolateLayers(std::vector<short> const&, bool) {}
void PCBSchCompareSceneObserver::OnIsolateOnlyVisibleChanged(bool) {}
void PCBSchCompareSceneObserver::OnPcbDrawOrderChanged() {}
void PCBSchCompareSceneObserver::OnSchDrawOrderChanged() {}
void PCBSchCompareSceneObserver::OnPcbSublayerColorVisChanged() {}
void PCBSchCompareSceneObserver::OnSchSublayerColorVisChanged() {}
void PCBSchCompareSceneObserver::OnSlExcludedObjTypesChanged() {}

} // namespace qzk::ecad
