// The ECAD kernel scene of one schematic: its sublayer colours. Both schematic scene kinds
// (73 and 77) are this class, whose class type is 73.
//
// Every operation the layer calls is journalled.
#pragma once

#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/ColorVisInfo.h"
#include "qzk/ecad/Scene.h"

#include <map>
#include <vector>

namespace qzref {
class SchematicSceneInspector;
}

namespace qzk::ecad {

class SchematicSceneObserver;

class SchematicScene : public Scene {
    friend class qzref::SchematicSceneInspector;

public:
    // Journalled as "qzk::ecad::SchematicScene.Create(<path>, <scene name>)".
    static void Create(du::SmartPtr<qzk::World> const& world,
                       du::SmartPtr<qzk::Instance> const& instance,
                       du::SmartPtr<qzk::ViewableSource> const& source,
                       du::SmartPtr<SchematicScene>& out);
    ~SchematicScene() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    // The observer gets the scene's notices as messages; false if it is registered anywhere
    // already.
    bool RegisterObserver(SchematicSceneObserver& observer);
    bool UnregisterObserver(SchematicSceneObserver& observer);

    // Every call is stored and told (OnSublayerColorVisChanged).
    void SetSublayerColorVisInfo(std::map<short, ColorVisInfo> const& map);

protected:
    SchematicScene(du::SmartPtr<qzk::World> const& world,
                   du::SmartPtr<qzk::Instance> const& instance,
                   du::SmartPtr<qzk::ViewableSource> const& source);

    int _AppearanceAspect(Switch which, bool& schematic) const override;

private:
    std::map<short, ColorVisInfo> colorVis_;
};

} // namespace qzk::ecad
