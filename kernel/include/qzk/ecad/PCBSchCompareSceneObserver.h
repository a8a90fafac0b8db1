// Observer of an ECAD kernel board-to-schematic compare scene: the board's and the schematic's
// views, looks, draw orders and colours, each told apart, and the board's isolation.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/CompareSceneObserver.h"
#include "qzk/ecad/PCBAppearance.h"
#include "qzk/ecad/SchematicAppearance.h"

#include <set>
#include <vector>

namespace qzk::ecad {

class PCBView;
class SchematicView;

class PCBSchCompareSceneObserver : public CompareSceneObserver {
public:
    PCBSchCompareSceneObserver();
    ~PCBSchCompareSceneObserver() override;

    void HandleEvent(unsigned char id, dom::MessageReader& reader) override;

    virtual void OnViewCreate(du::SmartPtr<PCBView> const& view);
    virtual void OnViewCreate(du::SmartPtr<SchematicView> const& view);
    virtual void OnViewRemove(du::SmartPtr<PCBView> const& view);
    virtual void OnViewRemove(du::SmartPtr<SchematicView> const& view);
    virtual void OnAppearanceChanged(std::set<PCBAppearance> const& on,
                                     std::set<PCBAppearance> const& off);
    virtual void OnAppearanceChanged(std::set<SchematicAppearance> const& on,
                                     std::set<SchematicAppearance> const& off);
    virtual void OnFillShapesChanged(bool fill);
    virtual void OnIsolate(std::vector<AppearanceItem> const& items, bool isolated);
    virtual void OnIsolateLayers(std::vector<short> const& layers, bool isolated);
    virtual void OnIsolateOnlyVisibleChanged(bool onlyVisible);
    virtual void OnPcbDrawOrderChanged();
    virtual void OnSchDrawOrderChanged();
    virtual void OnPcbSublayerColorVisChanged();
    virtual void OnSchSublayerColorVisChanged();
    virtual void OnSlExcludedObjTypesChanged();
};

} // namespace qzk::ecad
