// The undo step of highlights and of isolation: a copy of the item set before the change.
// Undo swaps it with the scene's present set through the scene's GetItems and SetItems (the
// overload for the container's item type); Redo, the default, swaps back.
#pragma once

#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "scene/BaseScene.h"
#include "scene/SwapStep.h"

namespace qzkapp::ecad {

template <class Container>
class ItemsApearnceOperationStep
    : public SwapStep<ItemsApearnceOperationStep<Container>, du::SmartPtr<BaseScene>, Container> {
    using Frame =
        SwapStep<ItemsApearnceOperationStep<Container>, du::SmartPtr<BaseScene>, Container>;

public:
    ItemsApearnceOperationStep(BaseScene* scene, Container const& items)
        : Frame(du::SmartPtr<BaseScene>(scene), items) {}

    du::Symbol GetStepType() override {
        static du::Symbol const type("QzkappEcadHlightIsolateOperationStep");
        return type;
    }

private:
    friend Frame;
    void Read(Container& present) const { this->target_->GetItems(present); }
    void Apply(Container const& held) const { this->target_->SetItems(held, true); }
};

} // namespace qzkapp::ecad
