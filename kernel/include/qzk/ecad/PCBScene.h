// The ECAD kernel scene of one board: its sublayer colours, isolation and switches.
//
// Every operation the layer calls is journalled; the state readers give back what the scene was
// told last.
#pragma once

#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/Scene.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"

#include <map>
#include <vector>

namespace qzk::ecad {

class PCBSceneObserver;

class PCBScene : public Scene {
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

    // Every call is stored and told (OnSublayerColorVisChanged), changed or not.
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
    PCBScene(du::SmartPtr<qzk::World> const& world, du::SmartPtr<qzk::Instance> const& instance,
             du::SmartPtr<qzk::ViewableSource> const& source);

    int _AppearanceAspect(Switch which, bool& schematic) const override;

private:
    SublayerPCB_CVSet colorVis_;
    std::vector<AppearanceItem> isolated_;
    bool isolating_ = false;
    bool isolateOnlyVisible_ = false;
    bool showLogicalConnection_ = false;
};

} // namespace qzk::ecad
