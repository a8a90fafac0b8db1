#include "compare/ColorVisSchematicCompareOperationStep.h"

namespace qzkapp::ecad {

ColorVisSchematicCompareOperationStep::ColorVisSchematicCompareOperationStep(
    SchematicCompareScene* scene, SchematicCompareScene::CompareMap const& map)
    : Frame(du::SmartPtr<SchematicCompareScene>(scene), map) {}

du::Symbol ColorVisSchematicCompareOperationStep::GetStepType() {
    static du::Symbol const type("QzkappEcadColorVisSchematicCompareOperationStep");
    return type;
}

void ColorVisSchematicCompareOperationStep::Read(SchematicCompareScene::CompareMap& out) const {
    target_->GetSublayerColorVisInfo(out);
}

void ColorVisSchematicCompareOperationStep::Apply(
    SchematicCompareScene::CompareMap const& held) const {
    target_->SetSublayerColorVisInfo(held, du::SmartPtr<qzk::Operation>(), ChangeSourceUndo);
}

} // namespace qzkapp::ecad
