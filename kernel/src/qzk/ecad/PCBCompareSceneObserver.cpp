#include "qzk/ecad/PCBCompareSceneObserver.h"

#include "SceneMessages.h"
#include "qzk/ecad/PCBCompareView.h"

namespace qzk::ecad {

PCBCompareSceneObserver::PCBCompareSceneObserver() = default;
PCBCompareSceneObserver::~PCBCompareSceneObserver() = default;

void PCBCompareSceneObserver::HandleEvent(unsigned char id, dom::MessageReader& reader) {
    detail::Decoder in(reader, "qzk::ecad::PCBCompareSceneObserver", id);
    if (detail::DecodeViewAndLook<PCBCompareView, PCBAppearance>(*this, in, id, false) ||
        detail::DecodeBoardNotice(*this, in, id)) {
        return;
    }
    switch (id) {
    case SublayerColorVisChangedEventId:
        OnSublayerColorVisChanged();
        break;
    default:
        CompareSceneObserver::HandleEvent(id, reader);
        break;
    }
}

void PCBCompareSceneObserver::OnViewCreate(du::SmartPtr<PCBCompareView> const&) {}
void PCBCompareSceneObserver::OnViewRemove(du::SmartPtr<PCBCompareView> const&) {}
void PCBCompareSceneObserver::OnAppearanceChanged(std::set<PCBAppearance> const&,
                                                  std::set<PCBAppearance> const&) {}
void PCBCompareSceneObserver::OnFillShapesChanged(bool) {}
void PCBCompareSceneObserver::OnIsolate(std::vector<AppearanceItem> const&, bool) {}
void PCBCompareSceneObserver::OnIsolateLayers(std::vector<short> const&, bool) {}
void PCBCompareSceneObserver::OnIsolateOnlyVisibleChanged(bool) {}
void PCBCompareSceneObserver::OnSlExcludedObjTypesChanged() {}
void PCBCompareSceneObserver::OnSublayerColorVisChanged() {}

} // namespace qzk::ecad
