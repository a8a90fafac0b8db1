// Observer of an ECAD kernel schematic scene: its views, its look and its sublayer colours.
// The view notices carry the view; a view of another class arrives as null.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/ecad/SceneObserver.h"
#include "qzk/ecad/SchematicAppearance.h"

#include <set>

namespace qzk::ecad {

class SchematicView;

class SchematicSceneObserver : public SceneObserver {
public:
    SchematicSceneObserver();
    ~SchematicSceneObserver() override;

    void HandleEvent(unsigned char id, dom::MessageReader& reader) override;

    virtual void OnViewCreate(du::SmartPtr<SchematicView> const& view);
    virtual void OnViewRemove(du::SmartPtr<SchematicView> const& view);
    virtual void OnAppearanceChanged(std::set<SchematicAppearance> const& on,
                                     std::set<SchematicAppearance> const& off);
    virtual void OnSublayerColorVisChanged();
};

} // namespace qzk::ecad
