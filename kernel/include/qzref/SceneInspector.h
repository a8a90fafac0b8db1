// Inspection of a single-design ECAD kernel scene; see BaseSceneInspector.
#pragma once

#include "qzk/ecad/Scene.h"
#include "qzref/BaseSceneInspector.h"

namespace qzref {

class SceneInspector : public BaseSceneInspector {
public:
    explicit SceneInspector(qzk::ecad::Scene& scene) noexcept
        : BaseSceneInspector(scene), scene_(scene) {}

    bool IsDesignLoadedFlag() const;

private:
    qzk::ecad::Scene& scene_;
};

} // namespace qzref
