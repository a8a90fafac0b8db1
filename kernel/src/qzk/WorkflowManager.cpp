#include "qzk/WorkflowManager.h"

#include "qzref/Journal.h"

namespace qzk {
namespace {
bool const registered = ClassType::RegisterClass(classid::WorkflowManager, {classid::Object});
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
    qzref::Journal::Record(GetObjectName().str(), "RunWorkflowAction",
                           {qzref::Fmt(action.str()), qzref::Fmt(parameter.str()),
                            qzref::Fmt(flags), data ? "data" : "null"});
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
