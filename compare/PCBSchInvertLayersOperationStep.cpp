#include "compare/PCBSchInvertLayersOperationStep.h"

#include "compare/PCBSchCompareScene.h"

namespace qzkapp::ecad {

PCBSchInvertLayersOperationStep::PCBSchInvertLayersOperationStep(BaseScene* scene)
    : InvertLayersOperationStep(scene) {}

du::Symbol PCBSchInvertLayersOperationStep::GetStepType() {
    static du::Symbol const type("QzkappEcadPCBSchInvertLayersStep");
    return type;
}

void PCBSchInvertLayersOperationStep::Undo() {
    if (auto* scene = dynamic_cast<PCBSchCompareScene*>(target_.Get())) {
        scene->PCBSchDrawOrderInvertLayers(du::SmartPtr<qzk::Operation>());
    }
}

} // namespace qzkapp::ecad
