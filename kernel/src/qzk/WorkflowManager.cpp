#include "qzk/WorkflowManager.h"

#include "qzk/ecad/RotateData.h"
#include "qzref/Journal.h"

#include <string>

namespace qzk {
namespace {
bool const registered = ClassType::RegisterClass(classid::WorkflowManager, {classid::Object});

// A turn's data shows its angle; other data only that there is some.
std::string DataText(du::SmartPtr<du::RefCounted> const& data) {
    if (!data) {
        return "null";
    }
    if (auto const* rotate = dynamic_cast<ecad::RotateData const*>(data.Get())) {
        return "RotateData(" + qzref::Fmt(static_cast<int>(rotate->angle)) + ")";
    }
    return "data";
}
} // namespace

WorkflowManager::WorkflowManager() = default;

WorkflowManager::~WorkflowManager() = default;

ClassType const& WorkflowManager::GetClassType() const {
    static ClassType const type(classid::WorkflowManager);
    return type;
}

du::Symbol WorkflowManager::GetDebugClassName() const {
    return du::Symbol("qzk::WorkflowManager");
}

bool WorkflowManager::RunWorkflowAction(du::Symbol const& action, du::Symbol const& parameter,
                                        int flags, du::SmartPtr<du::RefCounted> const& data) {
    qzref::Journal::Record(
        GetObjectName().str(), "RunWorkflowAction",
        {qzref::Fmt(action.str()), qzref::Fmt(parameter.str()), qzref::Fmt(flags), DataText(data)});
    std::lock_guard lock(mutex_);
    actions_.push_back(Action{action, parameter, flags, data});
    return true;
}

std::vector<WorkflowManager::Action> WorkflowManager::GetActions() const {
    std::lock_guard lock(mutex_);
    return actions_;
}

void WorkflowManager::ClearActions() {
    std::vector<Action> old;
    std::lock_guard lock(mutex_);
    old.swap(actions_);
}

void WorkflowManager::_OnDestroy() {
    ClearActions();
}

} // namespace qzk
