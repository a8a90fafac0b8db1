// A loaded board, or the picture of a Gerber overlay (IsOverlayData): its layers, its sublayers,
// its components and its nets.
//
// Layer handles: 1 is the board itself (outline, drills), conductor and other physical layers
// use the handles from 2 up, from the bottom side to the top side, and negative handles are
// layers that are not part of the stack-up, among them MISC_LAYER. Sublayer handles below 33
// have one meaning on every board (10, 11, 14 and 15 hold the parts of components); from 33 up
// they are the design's own, and their identity word says which function they have, so that two
// boards can be paired sublayer by sublayer.
#pragma once

#include "qzk/ecad/EcadDesignData.h"
#include "qzk/ecad/SublayerPCB.h"
#include "qzk/ecad/SublayerPCBBase.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace qzk::ecad {

class EcadPCBData : public EcadDesignData {
public:
    // The miscellaneous layer: what belongs to no layer of the stack-up.
    static constexpr short MISC_LAYER = -2;

    static du::SmartPtr<EcadPCBData> Create(du::Symbol name, bool overlayData);
    ~EcadPCBData() override;

    // Region sublayers hold areas (keep-outs, rooms, pours) rather than drawn objects. The rule
    // is fixed by the handle, so that it holds the same for every board: handles 16 to 19 and
    // 1000 to 1999, on every layer but layer 1.
    static bool IsRegionHandle(short layer, short sublayer);

    du::Symbol GetSublayerLabel(short layer, short sublayer) const override;
    du::Symbol GetLayerName(short layer) const override;
    bool IsOverlayData() const override;
    short FindSublayerHandle(std::string const& layerName,
                             std::string const& sublayerName) const override;

    short GetTop() const { return top_; }
    short GetBottom() const { return bottom_; }
    // Layer handles in ascending order with their names.
    std::map<short, std::string> const& GetLayers() const { return layers_; }
    std::vector<DesignObject*> const& GetComponents() const { return components_; }
    std::vector<DesignObject*> const& GetNets() const { return nets_; }
    // The sublayer object of a pair, or null.
    SublayerPCB const* FindSublayer(short layer, short sublayer) const;
    // The outline's bounding box, in millimetres.
    double minX = 0.0, minY = 0.0, maxX = 0.0, maxY = 0.0;

    // Every sublayer of the board, each a SublayerPCB owned by this data, in the order of
    // SublayerPCBBase.
    std::set<SublayerPCBBase*, PointerIsLess<SublayerPCBBase*>> sublayers;

    // Filling; see EcadDesignData. AddLayer and AddSublayer refuse (false) a handle that is
    // already there, and AddSublayer a layer that is not.
    bool AddLayer(short layer, std::string name);
    bool AddSublayer(std::unique_ptr<SublayerPCB> sublayer, std::string name);
    void SetTopBottom(short top, short bottom);
    DesignObject* AddComponent(std::unique_ptr<DesignObject> component);
    DesignObject* AddNet(std::unique_ptr<DesignObject> net);

private:
    EcadPCBData(du::Symbol name, bool overlayData);

    bool overlayData_;
    short top_ = 0;
    short bottom_ = 0;
    std::map<short, std::string> layers_;
    // Keyed by (layer, sublayer name), the names of the design file.
    std::map<std::pair<short, std::string>, short> sublayerNames_;
    std::vector<std::unique_ptr<SublayerPCB>> ownedSublayers_;
    std::vector<DesignObject*> components_;
    std::vector<DesignObject*> nets_;
};

} // namespace qzk::ecad
