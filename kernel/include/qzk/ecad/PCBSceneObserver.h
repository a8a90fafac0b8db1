// Observer of an ECAD kernel board scene: its views, its look, isolation and sublayer colours.
//
// The view notices carry the view; a view of another class arrives as null. Ids this class does
// not know go to SceneObserver.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/PCBAppearance.h"
#include "qzk/ecad/SceneObserver.h"

#include <set>
#include <vector>

namespace qzk::ecad {

class PCBView;

class PCBSceneObserver : public SceneObserver {
public:
    PCBSceneObserver();
    ~PCBSceneObserver() override;

    void HandleEvent(unsigned char id, dom::MessageReader& reader) override;

    virtual void OnViewCreate(du::SmartPtr<PCBView> const& view);
    virtual void OnViewRemove(du::SmartPtr<PCBView> const& view);
    virtual void OnAppearanceChanged(std::set<PCBAppearance> const& on,
                                     std::set<PCBAppearance> const& off);
    virtual void OnFillShapesChanged(bool fill);
    // isolated false: the isolation was cleared and items is empty.
    virtual void OnIsolate(std::vector<AppearanceItem> const& items, bool isolated);
    virtual void OnIsolateLayers(std::vector<short> const& layers, bool isolated);
    virtual void OnIsolateOnlyVisibleChanged(bool onlyVisible);
    virtual void OnSlExcludedObjTypesChanged();
    virtual void OnSublayerColorVisChanged();
};

} // namespace qzk::ecad
