// Inspection of the board part the four board scenes share: colour set, isolation and the two
// board switches. Derives from the inspector of the scene's place in the hierarchy, so the base
// readers come along.
#pragma once

#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/BoardScene.h"
#include "qzk/ecad/CompareScene.h"
#include "qzk/ecad/Scene.h"
#include "qzref/CompareSceneInspector.h"
#include "qzref/SceneInspector.h"

#include <type_traits>
#include <vector>

namespace qzref {

template <class Base, class ColorSet>
class BoardSceneInspector
    : public std::conditional_t<std::is_base_of_v<qzk::ecad::CompareScene, Base>,
                                CompareSceneInspector, SceneInspector> {
    using Parent = std::conditional_t<std::is_base_of_v<qzk::ecad::CompareScene, Base>,
                                      CompareSceneInspector, SceneInspector>;

public:
    explicit BoardSceneInspector(qzk::ecad::BoardScene<Base, ColorSet>& scene) noexcept
        : Parent(scene), scene_(scene) {}

    ColorSet GetColorVisInfo() const;
    // The isolated items as last set; empty and IsIsolating false after ClearIsolated.
    std::vector<qzk::ecad::AppearanceItem> GetIsolated() const;
    bool IsIsolating() const;
    bool GetIsolateOnlyVisible() const;
    bool GetShowLogicalConnection() const;

private:
    qzk::ecad::BoardScene<Base, ColorSet>& scene_;
};

} // namespace qzref
