// Observer of an ECAD kernel schematic compare scene: its views, its look, its compare colours
// and the object types excluded from sublayers.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/ecad/CompareSceneObserver.h"
#include "qzk/ecad/SchematicAppearance.h"

#include <set>

namespace qzk::ecad {

class SchematicCompareView;

class SchematicCompareSceneObserver : public CompareSceneObserver {
public:
    SchematicCompareSceneObserver();
    ~SchematicCompareSceneObserver() override;

    void HandleEvent(unsigned char id, dom::MessageReader& reader) override;

    virtual void OnViewCreate(du::SmartPtr<SchematicCompareView> const& view);
    virtual void OnViewRemove(du::SmartPtr<SchematicCompareView> const& view);
    virtual void OnAppearanceChanged(std::set<SchematicAppearance> const& on,
                                     std::set<SchematicAppearance> const& off);
    virtual void OnSublayerColorVisChanged();
    virtual void OnSlExcludedObjTypesChanged();
};

} // namespace qzk::ecad
