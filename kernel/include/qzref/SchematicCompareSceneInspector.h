// Inspection of a schematic compare kernel scene: the compare colour records as last told.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/ecad/CompareColorVis.h"
#include "qzk/ecad/SchematicCompareScene.h"
#include "qzref/CompareSceneInspector.h"

#include <map>

namespace qzref {

class SchematicCompareSceneInspector : public CompareSceneInspector {
public:
    explicit SchematicCompareSceneInspector(qzk::ecad::SchematicCompareScene& scene) noexcept
        : CompareSceneInspector(scene), scene_(scene) {}

    std::map<short, du::SmartPtr<qzk::ecad::CompareColorVis>> GetSublayerColorVisInfo() const;

private:
    qzk::ecad::SchematicCompareScene& scene_;
};

} // namespace qzref
