// The view of a schematic scene (and of the schematic side of a board-to-schematic compare
// scene).
#pragma once

#include "du/SmartPtr.h"
#include "qzk/ecad/View.h"

namespace qzk::ecad {

class SchematicViewObserver;

class SchematicView : public View {
public:
    // Control: a new view of scene with pages pages (0 is taken as 1), added to the scene.
    static du::SmartPtr<SchematicView> Create(qzk::Scene& scene, unsigned int pages = 1);
    ~SchematicView() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    // false for an observer registered anywhere already.
    bool RegisterObserver(SchematicViewObserver& observer);
    bool UnregisterObserver(SchematicViewObserver& observer);

    // Control: the user went to the home sheet; told to the observers.
    void NotifyHome();

protected:
    SchematicView(qzk::Scene& scene, unsigned int pages);
};

} // namespace qzk::ecad
