// Undo step of a change of a schematic compare's records: the map before the change, swapped
// with the present one through the scene's SetSublayerColorVisInfo.
//
// The map holds the scene's own record objects, not copies: a change the kernel's compare
// colours make to those records in place reaches the step too, so undo brings back records that
// hold the new colours.
#pragma once

#include "compare/SchematicCompareScene.h"
#include "du/SmartPtr.h"
#include "scene/SwapStep.h"

namespace qzkapp::ecad {

class ColorVisSchematicCompareOperationStep
    : public SwapStep<ColorVisSchematicCompareOperationStep, du::SmartPtr<SchematicCompareScene>,
                      SchematicCompareScene::CompareMap> {
    using Frame = SwapStep<ColorVisSchematicCompareOperationStep,
                           du::SmartPtr<SchematicCompareScene>, SchematicCompareScene::CompareMap>;

public:
    ColorVisSchematicCompareOperationStep(SchematicCompareScene* scene,
                                          SchematicCompareScene::CompareMap const& map);
    du::Symbol GetStepType() override;

private:
    friend Frame;
    void Read(SchematicCompareScene::CompareMap& out) const;
    void Apply(SchematicCompareScene::CompareMap const& held) const;
};

} // namespace qzkapp::ecad
