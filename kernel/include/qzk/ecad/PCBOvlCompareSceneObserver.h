// Observer of an ECAD kernel board-to-overlay compare scene: as the board compare observer, but
// the scene's sublayer notice is one of visibility (OnSublayerVisChanged), since the overlay
// scene's colours are its two compare colours.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/CompareSceneObserver.h"
#include "qzk/ecad/PCBAppearance.h"

#include <set>
#include <vector>

namespace qzk::ecad {

class PCBCompareView;

class PCBOvlCompareSceneObserver : public CompareSceneObserver {
public:
    PCBOvlCompareSceneObserver();
    ~PCBOvlCompareSceneObserver() override;

    void HandleEvent(unsigned char id, dom::MessageReader& reader) override;

    virtual void OnViewCreate(du::SmartPtr<PCBCompareView> const& view);
    virtual void OnViewRemove(du::SmartPtr<PCBCompareView> const& view);
    virtual void OnAppearanceChanged(std::set<PCBAppearance> const& on,
                                     std::set<PCBAppearance> const& off);
    virtual void OnFillShapesChanged(bool fill);
    // isolated false: the isolation was cleared and items is empty.
    virtual void OnIsolate(std::vector<AppearanceItem> const& items, bool isolated);
    virtual void OnIsolateLayers(std::vector<short> const& layers, bool isolated);
    virtual void OnIsolateOnlyVisibleChanged(bool onlyVisible);
    virtual void OnSlExcludedObjTypesChanged();
    virtual void OnSublayerVisChanged();
};

} // namespace qzk::ecad
