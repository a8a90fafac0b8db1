#include "qzk/ecad/PCBOvlCompareSceneObserver.h"

#include "SceneMessages.h"
#include "qzk/ecad/PCBCompareView.h"

namespace qzk::ecad {

PCBOvlCompareSceneObserver::PCBOvlCompareSceneObserver() = default;
PCBOvlCompareSceneObserver::~PCBOvlCompareSceneObserver() = default;

void PCBOvlCompareSceneObserver::HandleEvent(unsigned char id, dom::MessageReader& reader) {
    detail::Decoder in(reader, "qzk::ecad::PCBOvlCompareSceneObserver", id);
    if (detail::DecodeViewAndLook<PCBCompareView, PCBAppearance>(*this, in, id, false) ||
        detail::DecodeBoardNotice(*this, in, id)) {
        return;
    }
    switch (id) {
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
