// The ECAD kernel scene that compares two boards: the merged compare colour rows, isolation and
// switches.
//
// Every operation the layer calls is journalled; the state readers give back what the scene was
// told last.
#pragma once

#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/CompareColorVisPtrVec.h"
#include "qzk/ecad/CompareScene.h"

#include <map>
#include <vector>

namespace qzk::ecad {

class PCBCompareSceneObserver;

class PCBCompareScene : public CompareScene {
public:
    // Journalled as "qzk::ecad::PCBCompareScene.Create(<first path>, <second path>, <scene name>)".
    static void Create(du::SmartPtr<qzk::World> const& world,
                       du::SmartPtr<qzk::Instance> const& firstInstance,
                       du::SmartPtr<qzk::ViewableSource> const& firstSource,
                       du::SmartPtr<qzk::Instance> const& secondInstance,
                       du::SmartPtr<qzk::ViewableSource> const& secondSource,
                       du::SmartPtr<PCBCompareScene>& out);
    // The designs are known once the entry is complete.
    static void Create(du::SmartPtr<qzk::World> const& world,
                       du::SmartPtr<AnnoSetTableEntry> const& entry,
                       du::SmartPtr<PCBCompareScene>& out);
    ~PCBCompareScene() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    // The observer gets the scene's notices as messages; false if it is registered anywhere
    // already.
    bool RegisterObserver(PCBCompareSceneObserver& observer);
    bool UnregisterObserver(PCBCompareSceneObserver& observer);

    // The rows are cloned: the kernel keeps what it was told, whatever the caller does to its
    // records later. Every call is told (OnSublayerColorVisChanged).
    void SetColorVisInfo(CompareColorVisPtrVec const& rows);
    void SetIsolated(std::vector<AppearanceItem> const& items);
    void ClearIsolated();
    void SetIsolateOnlyVisible(bool onlyVisible);
    void SetShowLogicalConnection(bool show);

    // State readers.
    CompareColorVisPtrVec GetColorVisInfo() const;
    // The isolated items as last set; empty and IsIsolating false after ClearIsolated.
    std::vector<AppearanceItem> GetIsolated() const;
    bool IsIsolating() const;
    bool GetIsolateOnlyVisible() const;
    bool GetShowLogicalConnection() const;

protected:
    PCBCompareScene(du::SmartPtr<qzk::World> const& world,
                    du::SmartPtr<AnnoSetTableEntry> const& entry,
                    std::vector<du::Symbol> const& paths);

    int _AppearanceAspect(Switch which, bool& schematic) const override;

private:
    CompareColorVisPtrVec colorVis_;
    std::vector<AppearanceItem> isolated_;
    bool isolating_ = false;
    bool isolateOnlyVisible_ = false;
    bool showLogicalConnection_ = false;
};

} // namespace qzk::ecad
