// The undo step of highlights and of isolation: a copy of the item set before the change.
// Undo swaps it with the scene's present set through the scene's GetItems and SetItems (the
// overload for the container's item type); Redo, the default, swaps back.
#pragma once

#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "qzk/OperationStep.h"
#include "scene/BaseScene.h"

namespace qzkapp::ecad {

template <class Container> class ItemsApearnceOperationStep : public qzk::OperationStep {
public:
    ItemsApearnceOperationStep(BaseScene* scene, Container const& items)
        : scene_(scene), items_(items) {}

    du::Symbol GetStepType() override {
        static du::Symbol const type("QzkappEcadHlightIsolateOperationStep");
        return type;
    }

    void Undo() override {
        if (!scene_) {
            return;
        }
        Container present;
        scene_->GetItems(present);
        scene_->SetItems(items_, true);
        items_ = present;
    }

private:
    du::SmartPtr<BaseScene> scene_;
    Container items_;
};

} // namespace qzkapp::ecad
