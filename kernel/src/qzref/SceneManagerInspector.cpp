#include "qzref/SceneManagerInspector.h"

#include "qzk/View.h"

#include <mutex>

namespace qzref {

du::SmartPtr<qzk::View> SceneManagerInspector::GetActiveView() const {
    std::lock_guard lock(manager_.mutex_);
    return manager_.active_;
}

du::SmartPtr<qzk::View> SceneManagerInspector::GetFocusedView() const {
    std::lock_guard lock(manager_.mutex_);
    return manager_.focused_;
}

std::vector<SceneManagerInspector::Call> SceneManagerInspector::GetCalls() const {
    std::lock_guard lock(manager_.mutex_);
    return manager_.calls_;
}

void SceneManagerInspector::Reset() {
    // Let go of the views after the lock: a view's end may reach the manager again.
    du::SmartPtr<qzk::View> active;
    du::SmartPtr<qzk::View> focused;
    std::vector<Call> calls;
    std::lock_guard lock(manager_.mutex_);
    active = std::move(manager_.active_);
    focused = std::move(manager_.focused_);
    calls.swap(manager_.calls_);
}

} // namespace qzref
