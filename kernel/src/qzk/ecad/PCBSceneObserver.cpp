#include "qzk/ecad/PCBSceneObserver.h"

#include "SceneMessages.h"
#include "qzk/ecad/PCBView.h"

namespace qzk::ecad {

PCBSceneObserver::PCBSceneObserver() = default;
PCBSceneObserver::~PCBSceneObserver() = default;

void PCBSceneObserver::HandleEvent(unsigned char id, dom::MessageReader& reader) {
    detail::Decoder in(reader, "qzk::ecad::PCBSceneObserver", id);
    if (detail::DecodeViewAndLook<PCBView, PCBAppearance>(*this, in, id, false) ||
        detail::DecodeBoardNotice(*this, in, id)) {
        return;
    }
    switch (id) {
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
