#include "schematic/SchSceneHelper.h"

#include "qzk/ecad/EcadSchematicData.h"
#include "qzk/ecad/SublayerEcad.h"
#include "scene/StepRecording.h"
#include "schematic/ColorVisSublayerOperationStep.h"

namespace qzkapp::ecad {
namespace {

qzk::ecad::EcadSchematicData const* AsSchematic(SchSceneHelper::DesignData const& design) {
    return dynamic_cast<qzk::ecad::EcadSchematicData const*>(design.Get());
}

} // namespace

SchSceneHelper::SchSceneHelper() = default;
SchSceneHelper::SchSceneHelper(SchSceneHelper const& other) = default;
SchSceneHelper& SchSceneHelper::operator=(SchSceneHelper const& other) = default;
SchSceneHelper::~SchSceneHelper() = default;

void SchSceneHelper::GetSublayerColorVisInfo(SublayerMap& out) const {
    out = sublayerCV;
}

void SchSceneHelper::SetSublayerColorVisInfo(SublayerMap const& map,
                                             du::SmartPtr<qzk::Operation> const& op,
                                             ChangeSource /*source*/) {
    AddStep<ColorVisSublayerOperationStep>(op, this, sublayerCV);
    sublayerCV = map;
    SetSublayerColorVisInfoToQzkScene(sublayerCV);
}

void SchSceneHelper::_AppySublayerColorVisInfo(SublayerMap const& map,
                                               du::SmartPtr<qzk::Operation> const& op) {
    AddStep<ColorVisSublayerOperationStep>(op, this, sublayerCV);
    for (auto const& [handle, info] : map) {
        auto own = sublayerCV.find(handle);
        if (own != sublayerCV.end()) {
            own->second.color = info.color;
            own->second.visible = info.visible;
        }
    }
    SetSublayerColorVisInfoToQzkScene(sublayerCV);
}

void SchSceneHelper::_GetDefaultDrawOrder(DesignData const& design, std::vector<short>& out) const {
    out.clear();
    qzk::ecad::EcadSchematicData const* schematic = AsSchematic(design);
    if (schematic == nullptr) {
        return;
    }
    for (uint64 i = 0; GetDefaultOrderSublayer(i) != 0; ++i) {
        short const layer = GetDefaultOrderSublayer(i);
        if (schematic->HasLayerContent(layer)) {
            out.push_back(layer);
        }
    }
}

wchar_t const* SchSceneHelper::_GetLayerName(DesignData const& design, short layer) const {
    static wchar_t const empty[] = L"";
    qzk::ecad::EcadSchematicData const* schematic = AsSchematic(design);
    if (schematic == nullptr) {
        return empty;
    }
    auto found = schematic->layerNames.find(layer);
    return found == schematic->layerNames.end() ? empty : found->second.c_str();
}

bool SchSceneHelper::_LoadColorVisInfo(DesignData const& design,
                                       du::SmartPtr<qzk::Operation> const& op) {
    qzk::ecad::EcadSchematicData const* schematic = AsSchematic(design);
    if (schematic == nullptr) {
        return false;
    }
    AddStep<ColorVisSublayerOperationStep>(op, this, sublayerCV);
    sublayerCV.clear();
    qzk::ecad::SublayerEcad::RefillColorVisInfo();
    for (auto const& entry : schematic->layerNames) {
        qzk::ecad::SublayerEcad sublayer(entry.first);
        qzk::ecad::SublayerEcad::GetDefaultSchematicColorVis(sublayer);
        sublayerCV[entry.first] = qzk::ecad::ColorVisInfo(sublayer.color, sublayer.IsVisible());
    }
    SetSublayerColorVisInfoToQzkScene(sublayerCV);
    return true;
}

} // namespace qzkapp::ecad
