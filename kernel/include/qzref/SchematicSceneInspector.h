// Inspection of a schematic kernel scene: the sublayer colours as last told.
#pragma once

#include "qzk/ecad/ColorVisInfo.h"
#include "qzk/ecad/SchematicScene.h"
#include "qzref/SceneInspector.h"

#include <map>

namespace qzref {

class SchematicSceneInspector : public SceneInspector {
public:
    explicit SchematicSceneInspector(qzk::ecad::SchematicScene& scene) noexcept
        : SceneInspector(scene), scene_(scene) {}

    std::map<short, qzk::ecad::ColorVisInfo> GetSublayerColorVisInfo() const;

private:
    qzk::ecad::SchematicScene& scene_;
};

} // namespace qzref
