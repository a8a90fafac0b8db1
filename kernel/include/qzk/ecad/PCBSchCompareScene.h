// The ECAD kernel scene that compares a board with a schematic: the board's colours, draw order
// and isolation, the schematic's colours and draw order, each side's views.
//
// Every operation the layer calls is journalled.
#pragma once

#include "qzk/EcadSource.h"
#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/BoardScene.h"
#include "qzk/ecad/ColorVisInfo.h"
#include "qzk/ecad/CompareScene.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"

#include <map>
#include <vector>

namespace qzkapp::ecad {
class PCBSchCompareScene;
}

namespace qzref {
class PCBSchCompareSceneInspector;
}

namespace qzk::ecad {

class PCBSchCompareSceneObserver;

class PCBSchCompareScene : public BoardScene<CompareScene, SublayerPCB_CVSet> {
public:
    // Journalled as "qzk::ecad::PCBSchCompareScene.Create(<first path>, <second path>, <scene
    // name>)".
    static void Create(du::SmartPtr<qzk::World> const& world,
                       du::SmartPtr<qzk::Instance> const& firstInstance,
                       du::SmartPtr<qzk::ViewableSource> const& firstSource,
                       du::SmartPtr<qzk::Instance> const& secondInstance,
                       du::SmartPtr<qzk::ViewableSource> const& secondSource,
                       du::SmartPtr<PCBSchCompareScene>& out);
    // The designs are known once the entry is complete.
    static void Create(du::SmartPtr<qzk::World> const& world,
                       du::SmartPtr<AnnoSetTableEntry> const& entry,
                       du::SmartPtr<PCBSchCompareScene>& out);
    ~PCBSchCompareScene() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    // The observer gets the scene's notices as messages; false if it is registered anywhere
    // already.
    bool RegisterObserver(PCBSchCompareSceneObserver& observer);
    bool UnregisterObserver(PCBSchCompareSceneObserver& observer);
    // SetIsolated, ClearIsolated, SetIsolateOnlyVisible and SetShowLogicalConnection come from
    // BoardScene.

    // Board colours; told as OnPcbSublayerColorVisChanged.
    void SetColorVisInfo(SublayerPCB_CVSet const& set);
    // The board's order; also sets invertLayers, as SetDrawOrder does. Told as
    // OnPcbDrawOrderChanged.
    void SetPCBDrawOrder(std::vector<short> const& order, bool flag, bool invert);
    // Told as OnSchDrawOrderChanged.
    void SetSchDrawOrder(std::vector<short> const& order);
    // Schematic colours; told as OnSchSublayerColorVisChanged.
    void SetSublayerColorVisInfo(std::map<short, ColorVisInfo> const& map);
    // Count a redraw request of the first or second design's views.
    void SetFirstViewDirty();
    void SetSecondViewDirty();

protected:
    PCBSchCompareScene(du::SmartPtr<qzk::World> const& world,
                       du::SmartPtr<AnnoSetTableEntry> const& entry,
                       std::vector<du::Symbol> const& paths);

private:
    friend class qzkapp::ecad::PCBSchCompareScene;
    friend class qzref::PCBSchCompareSceneInspector;
    // Whether the first design is the board (eBoard) or the schematic (eSchematic), from its data
    // once loaded, and before that from reading its file; eUnknown without a first design.
    qzk::EcadSource::EcadType _GetFirstType() const;
    std::map<short, ColorVisInfo> schColorVis_;
    std::vector<short> pcbDrawOrder_;
    bool pcbDrawOrderFlag_ = false;
    std::vector<short> schDrawOrder_;
    unsigned int firstViewDirty_ = 0;
    unsigned int secondViewDirty_ = 0;
};

} // namespace qzk::ecad
