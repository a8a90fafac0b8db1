// The ECAD kernel scene that compares a board with a Gerber overlay: the board's sublayer
// colours (whose notice is one of visibility), isolation and switches.
//
// Every operation the layer calls is journalled; the state readers give back what the scene was
// told last.
#pragma once

#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/BoardScene.h"
#include "qzk/ecad/CompareScene.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"

#include <map>
#include <vector>

namespace qzk::ecad {

class PCBOvlCompareSceneObserver;

class PCBOvlCompareScene : public BoardScene<CompareScene, SublayerPCB_CVSet> {
public:
    // Journalled as "qzk::ecad::PCBOvlCompareScene.Create(<first path>, <second path>, <scene
    // name>)".
    static void Create(du::SmartPtr<qzk::World> const& world,
                       du::SmartPtr<qzk::Instance> const& firstInstance,
                       du::SmartPtr<qzk::ViewableSource> const& firstSource,
                       du::SmartPtr<qzk::Instance> const& secondInstance,
                       du::SmartPtr<qzk::ViewableSource> const& secondSource,
                       du::SmartPtr<PCBOvlCompareScene>& out);
    // The designs are known once the entry is complete.
    static void Create(du::SmartPtr<qzk::World> const& world,
                       du::SmartPtr<AnnoSetTableEntry> const& entry,
                       du::SmartPtr<PCBOvlCompareScene>& out);
    ~PCBOvlCompareScene() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    // The observer gets the scene's notices as messages; false if it is registered anywhere
    // already.
    bool RegisterObserver(PCBOvlCompareSceneObserver& observer);
    bool UnregisterObserver(PCBOvlCompareSceneObserver& observer);
    // SetIsolated, ClearIsolated, SetIsolateOnlyVisible, SetShowLogicalConnection and their
    // readers come from BoardScene.

    // Every call is stored and told (OnSublayerVisChanged), changed or not.
    void SetColorVisInfo(SublayerPCB_CVSet const& set);

protected:
    PCBOvlCompareScene(du::SmartPtr<qzk::World> const& world,
                       du::SmartPtr<AnnoSetTableEntry> const& entry,
                       std::vector<du::Symbol> const& paths);
};

} // namespace qzk::ecad
