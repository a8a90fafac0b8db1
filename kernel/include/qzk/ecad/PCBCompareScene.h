// The ECAD kernel scene that compares two boards: the merged compare colour rows, isolation and
// switches.
//
// Every operation the layer calls is journalled; the state readers give back what the scene was
// told last.
#pragma once

#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/BoardScene.h"
#include "qzk/ecad/CompareColorVisPtrVec.h"
#include "qzk/ecad/CompareScene.h"

#include <map>
#include <vector>

namespace qzk::ecad {

class PCBCompareSceneObserver;

class PCBCompareScene : public BoardScene<CompareScene, CompareColorVisPtrVec> {
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
    // SetIsolated, ClearIsolated, SetIsolateOnlyVisible, SetShowLogicalConnection and their
    // readers come from BoardScene.

    // The rows are cloned: the kernel keeps what it was told, whatever the caller does to its
    // records later. Every call is told (OnSublayerColorVisChanged).
    void SetColorVisInfo(CompareColorVisPtrVec const& rows);

protected:
    PCBCompareScene(du::SmartPtr<qzk::World> const& world,
                    du::SmartPtr<AnnoSetTableEntry> const& entry,
                    std::vector<du::Symbol> const& paths);
};

} // namespace qzk::ecad
