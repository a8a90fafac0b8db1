#include "qzk/ecad/EcadPCBData.h"

#include "IcmApiEcad.h"

namespace qzk::ecad {

du::SmartPtr<EcadPCBData> EcadPCBData::Create(du::Symbol name, bool overlayData) {
    return du::SmartPtr<EcadPCBData>(new EcadPCBData(std::move(name), overlayData));
}

EcadPCBData::EcadPCBData(du::Symbol name, bool overlayData)
    : EcadDesignData(std::move(name)), overlayData_(overlayData) {}

EcadPCBData::~EcadPCBData() = default;

bool EcadPCBData::IsRegionHandle(short layer, short sublayer) {
    if (layer == 1) {
        return false;
    }
    return (sublayer >= 16 && sublayer <= 19) || (sublayer >= 1000 && sublayer <= 1999);
}

du::Symbol EcadPCBData::GetSublayerLabel(short layer, short sublayer) const {
    SublayerPCB const* found = FindSublayer(layer, sublayer);
    return found != nullptr ? du::Symbol(found->label) : du::Symbol::EMPTY;
}

du::Symbol EcadPCBData::GetLayerName(short layer) const {
    auto found = layers_.find(layer);
    return found != layers_.end() ? du::Symbol(found->second) : du::Symbol::EMPTY;
}

bool EcadPCBData::IsOverlayData() const {
    return overlayData_;
}

short EcadPCBData::FindSublayerHandle(std::string const& layerName,
                                      std::string const& sublayerName) const {
    for (auto const& [handle, name] : layers_) {
        if (name != layerName) {
            continue;
        }
        auto found = sublayerNames_.find({handle, sublayerName});
        return found != sublayerNames_.end() ? found->second : short(-1);
    }
    return -1;
}

SublayerPCB const* EcadPCBData::FindSublayer(short layer, short sublayer) const {
    SublayerPCBBase key(layer, sublayer);
    auto found = sublayers.find(&key);
    // Only AddSublayer fills the set, with SublayerPCB objects; a checked cast would cost a
    // search of the class hierarchy on every look-up of a load's colours.
    return found != sublayers.end() ? static_cast<SublayerPCB const*>(*found) : nullptr;
}

bool EcadPCBData::AddLayer(short layer, std::string name) {
    return layers_.emplace(layer, std::move(name)).second;
}

bool EcadPCBData::AddSublayer(std::unique_ptr<SublayerPCB> sublayer, std::string name) {
    if (layers_.count(sublayer->layer) == 0 || sublayers.count(sublayer.get()) != 0) {
        return false;
    }
    sublayerNames_.emplace(std::make_pair(sublayer->layer, std::move(name)), sublayer->sublayer);
    sublayers.insert(sublayer.get());
    ownedSublayers_.push_back(std::move(sublayer));
    return true;
}

void EcadPCBData::SetTopBottom(short top, short bottom) {
    top_ = top;
    bottom_ = bottom;
}

DesignObject* EcadPCBData::AddComponent(std::unique_ptr<DesignObject> component) {
    components_.push_back(Add(std::move(component)));
    return components_.back();
}

DesignObject* EcadPCBData::AddNet(std::unique_ptr<DesignObject> net) {
    nets_.push_back(Add(std::move(net)));
    return nets_.back();
}

} // namespace qzk::ecad
