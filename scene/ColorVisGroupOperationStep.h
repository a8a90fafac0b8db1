// Undo step of a change of group colours: the group set before the change, swapped with the
// present one through UpdateGroupCV, which posts only when the merge changed something.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/ecad/GroupCVInfoSet.h"
#include "scene/BaseScene.h"
#include "scene/SwapStep.h"

namespace qzkapp::ecad {

class ColorVisGroupOperationStep
    : public SwapStep<ColorVisGroupOperationStep, du::SmartPtr<BaseScene>,
                      qzk::ecad::GroupCVInfoSet> {
    using Frame =
        SwapStep<ColorVisGroupOperationStep, du::SmartPtr<BaseScene>, qzk::ecad::GroupCVInfoSet>;

public:
    ColorVisGroupOperationStep(BaseScene* scene, qzk::ecad::GroupCVInfoSet const& groups);
    du::Symbol GetStepType() override;

private:
    friend Frame;
    qzk::ecad::GroupCVInfoSet MakeScratch() const { return qzk::ecad::GroupCVInfoSet(false); }
    void Read(qzk::ecad::GroupCVInfoSet& out) const;
    void Apply(qzk::ecad::GroupCVInfoSet const& held) const;
    void Keep(qzk::ecad::GroupCVInfoSet&& present);
};

} // namespace qzkapp::ecad
