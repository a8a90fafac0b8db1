// Observer of an ECAD kernel board compare scene: its views, its look, isolation and compare
// colours. The view notices carry the view; a view of another class arrives as null.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/CompareSceneObserver.h"
#include "qzk/ecad/PCBAppearance.h"

#include <set>
#include <vector>

namespace qzk::ecad {

class PCBCompareView;

class PCBCompareSceneObserver : public CompareSceneObserver {
public:
    PCBCompareSceneObserver();
    ~PCBCompareSceneObserver() override;

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
    virtual void OnSublayerColorVisChanged();
};

} // namespace qzk::ecad
