// The view of a schematic compare scene.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/ecad/CompareView.h"

namespace qzk::ecad {

class SchematicCompareViewObserver;

class SchematicCompareView : public CompareView {
public:
    // Control: a new view of scene with pages pages (0 is taken as 1), added to the scene.
    static du::SmartPtr<SchematicCompareView> Create(qzk::Scene& scene, unsigned int pages = 1);
    ~SchematicCompareView() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    // false for an observer registered anywhere already.
    bool RegisterObserver(SchematicCompareViewObserver& observer);
    bool UnregisterObserver(SchematicCompareViewObserver& observer);

    // Control: the user went to the home sheet; told to the observers.
    void NotifyHome();

protected:
    SchematicCompareView(qzk::Scene& scene, unsigned int pages);
};

} // namespace qzk::ecad
