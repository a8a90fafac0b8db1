// The ECAD kernel scene that compares a board with a Gerber overlay: the board's sublayer
// colours (whose notice is one of visibility), isolation and switches.
//
// Every operation the layer calls is journalled; the state readers give back what the scene was
// told last.
#pragma once

#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/CompareScene.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"

#include <map>
#include <vector>

namespace qzk::ecad {

class PCBOvlCompareSceneObserver;

class PCBOvlCompareScene : public CompareScene {
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

    // Every call is stored and told (OnSublayerVisChanged), changed or not.
    void SetColorVisInfo(SublayerPCB_CVSet const& set);
    void SetIsolated(std::vector<AppearanceItem> const& items);
    void ClearIsolated();
    void SetIsolateOnlyVisible(bool onlyVisible);
    void SetShowLogicalConnection(bool show);

    // State readers.
    SublayerPCB_CVSet GetColorVisInfo() const;
    // The isolated items as last set; empty and IsIsolating false after ClearIsolated.
    std::vector<AppearanceItem> GetIsolated() const;
    bool IsIsolating() const;
    bool GetIsolateOnlyVisible() const;
    bool GetShowLogicalConnection() const;

protected:
    PCBOvlCompareScene(du::SmartPtr<qzk::World> const& world,
                       du::SmartPtr<AnnoSetTableEntry> const& entry,
                       std::vector<du::Symbol> const& paths);

    int _AppearanceAspect(Switch which, bool& schematic) const override;

private:
    SublayerPCB_CVSet colorVis_;
    std::vector<AppearanceItem> isolated_;
    bool isolating_ = false;
    bool isolateOnlyVisible_ = false;
    bool showLogicalConnection_ = false;
};

} // namespace qzk::ecad
