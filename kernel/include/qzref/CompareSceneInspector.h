// Inspection of an ECAD kernel scene over two designs; see BaseSceneInspector.
#pragma once

#include "dg/Color.h"
#include "qzk/ecad/CompareScene.h"
#include "qzref/BaseSceneInspector.h"

namespace qzref {

class CompareSceneInspector : public BaseSceneInspector {
public:
    explicit CompareSceneInspector(qzk::ecad::CompareScene& scene) noexcept
        : BaseSceneInspector(scene), scene_(scene) {}

    // The three colours as the kernel holds them.
    dg::Color GetFirstItemColor() const;
    dg::Color GetSecondItemColor() const;
    dg::Color GetCommonItemColor() const;
    // Whether FinishDesignLoad was told of the first (false) or second (true) design.
    bool IsDesignFinished(bool second) const;

    // The user changed the compare colours: stored and told to the observers
    // (OnCompareColorChanged).
    void ChangeItemColors(dg::Color const& first, dg::Color const& second, dg::Color const& common);

private:
    qzk::ecad::CompareScene& scene_;
};

} // namespace qzref
