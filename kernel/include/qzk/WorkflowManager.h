// A view's workflow manager: runs named workflow actions on the view ("rotate" about "Y" or "Z"
// for a board's flip and turn) and keeps each call for tests to read.
//
// What an action does to the picture is the workflow's business; the reference kernel only
// records it. Data objects are kept by counted reference, so a test can read the layer's payload
// back with a dynamic cast.
#pragma once

#include "du/RefCounted.h"
#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "qzk/Object.h"

#include <mutex>
#include <vector>

namespace qzk {

class WorkflowManager : public Object {
public:
    struct Action {
        du::Symbol action;
        du::Symbol parameter;
        int flags;
        du::SmartPtr<du::RefCounted> data;
    };

    WorkflowManager();
    ~WorkflowManager() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    // Journalled; always true.
    virtual bool RunWorkflowAction(du::Symbol const& action, du::Symbol const& parameter, int flags,
                                   du::SmartPtr<du::RefCounted> const& data);

    // Recorded state: every action, oldest first.
    std::vector<Action> GetActions() const;
    void ClearActions();

protected:
    void _OnDestroy() override;

private:
    mutable std::mutex mutex_;
    std::vector<Action> actions_;
};

} // namespace qzk
