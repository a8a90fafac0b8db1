// Inspection of the board-to-schematic compare kernel scene: the schematic side's colours and
// draw order, the board's draw order and each side's redraw requests, on top of the board part.
#pragma once

#include "qzk/EcadSource.h"
#include "qzk/ecad/ColorVisInfo.h"
#include "qzk/ecad/PCBSchCompareScene.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"
#include "qzref/BoardSceneInspector.h"

#include <map>
#include <vector>

namespace qzref {

class PCBSchCompareSceneInspector
    : public BoardSceneInspector<qzk::ecad::CompareScene, qzk::ecad::SublayerPCB_CVSet> {
public:
    explicit PCBSchCompareSceneInspector(qzk::ecad::PCBSchCompareScene& scene) noexcept
        : BoardSceneInspector(scene), scene_(scene) {}

    std::map<short, qzk::ecad::ColorVisInfo> GetSublayerColorVisInfo() const;
    std::vector<short> GetPCBDrawOrder() const;
    bool GetPCBDrawOrderFlag() const;
    std::vector<short> GetSchDrawOrder() const;
    unsigned int GetFirstViewDirtyCount() const;
    unsigned int GetSecondViewDirtyCount() const;
    // Whether the first design is the board or the schematic, as the scene works it out.
    qzk::EcadSource::EcadType GetFirstType() const;

private:
    qzk::ecad::PCBSchCompareScene& scene_;
};

} // namespace qzref
