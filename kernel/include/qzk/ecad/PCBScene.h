// The ECAD kernel scene of one board: its sublayer colours, isolation and switches.
//
// Every operation the layer calls is journalled; the state readers give back what the scene was
// told last.
#pragma once

#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/BoardScene.h"
#include "qzk/ecad/Scene.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"

#include <map>
#include <vector>

namespace qzk::ecad {

class PCBSceneObserver;

class PCBScene : public BoardScene<Scene, SublayerPCB_CVSet> {
public:
    // Journalled as "qzk::ecad::PCBScene.Create(<path>, <scene name>)".
    static void Create(du::SmartPtr<qzk::World> const& world,
                       du::SmartPtr<qzk::Instance> const& instance,
                       du::SmartPtr<qzk::ViewableSource> const& source,
                       du::SmartPtr<PCBScene>& out);
    ~PCBScene() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    // The observer gets the scene's notices as messages; false if it is registered anywhere
    // already.
    bool RegisterObserver(PCBSceneObserver& observer);
    bool UnregisterObserver(PCBSceneObserver& observer);
    // SetIsolated, ClearIsolated, SetIsolateOnlyVisible, SetShowLogicalConnection and their
    // readers come from BoardScene.

    // Every call is stored and told (OnSublayerColorVisChanged), changed or not.
    void SetColorVisInfo(SublayerPCB_CVSet const& set);

protected:
    PCBScene(du::SmartPtr<qzk::World> const& world, du::SmartPtr<qzk::Instance> const& instance,
             du::SmartPtr<qzk::ViewableSource> const& source);
};

} // namespace qzk::ecad
