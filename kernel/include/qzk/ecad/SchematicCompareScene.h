// The ECAD kernel scene that compares two schematics: a compare colour record per sublayer.
//
// Every operation the layer calls is journalled.
#pragma once

#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/CompareColorVis.h"
#include "qzk/ecad/CompareScene.h"

#include <map>
#include <vector>

namespace qzref {
class SchematicCompareSceneInspector;
}

namespace qzk::ecad {

class SchematicCompareSceneObserver;

class SchematicCompareScene : public CompareScene {
    friend class qzref::SchematicCompareSceneInspector;

public:
    // Journalled as "qzk::ecad::SchematicCompareScene.Create(<first path>, <second path>, <scene
    // name>)".
    static void Create(du::SmartPtr<qzk::World> const& world,
                       du::SmartPtr<qzk::Instance> const& firstInstance,
                       du::SmartPtr<qzk::ViewableSource> const& firstSource,
                       du::SmartPtr<qzk::Instance> const& secondInstance,
                       du::SmartPtr<qzk::ViewableSource> const& secondSource,
                       du::SmartPtr<SchematicCompareScene>& out);
    // The designs are known once the entry is complete.
    static void Create(du::SmartPtr<qzk::World> const& world,
                       du::SmartPtr<AnnoSetTableEntry> const& entry,
                       du::SmartPtr<SchematicCompareScene>& out);
    ~SchematicCompareScene() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    // The observer gets the scene's notices as messages; false if it is registered anywhere
    // already.
    bool RegisterObserver(SchematicCompareSceneObserver& observer);
    bool UnregisterObserver(SchematicCompareSceneObserver& observer);

    // The records are cloned, as PCBCompareScene's rows are. Every call is told.
    void SetSublayerColorVisInfo(std::map<short, du::SmartPtr<CompareColorVis>> const& map);

protected:
    SchematicCompareScene(du::SmartPtr<qzk::World> const& world,
                          du::SmartPtr<AnnoSetTableEntry> const& entry,
                          std::vector<du::Symbol> const& paths);

    int _AppearanceAspect(Switch which, bool& schematic) const override;

private:
    std::map<short, du::SmartPtr<CompareColorVis>> colorVis_;
};

} // namespace qzk::ecad
