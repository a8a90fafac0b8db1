#include "qzkapp/SceneManager.h"

#include "qzk/View.h"
#include "qzref/Journal.h"

namespace qzkapp {
namespace {

char const* const receiver = "SceneManager";

std::string NameOf(du::SmartPtr<qzk::View> const& view) {
    return view ? view->GetObjectName().str() : std::string("null");
}

} // namespace

SceneManager::SceneManager() = default;

SceneManager::~SceneManager() = default;

bool SceneManager::SetActiveView(du::SmartPtr<qzk::View> const& view, bool flag) {
    qzref::Journal::Record(receiver, "SetActiveView", {NameOf(view), qzref::Fmt(flag)});
    du::SmartPtr<qzk::View> old;
    std::lock_guard lock(mutex_);
    calls_.push_back(Call{du::Symbol("SetActiveView"), du::Symbol(NameOf(view)), flag});
    if (!view) {
        return false;
    }
    old = active_;
    active_ = view;
    return true;
}

bool SceneManager::_SetFocus(du::SmartPtr<qzk::View> const& view) {
    qzref::Journal::Record(receiver, "_SetFocus", {NameOf(view)});
    du::SmartPtr<qzk::View> old;
    std::lock_guard lock(mutex_);
    calls_.push_back(Call{du::Symbol("_SetFocus"), du::Symbol(NameOf(view)), false});
    if (!view) {
        return false;
    }
    old = focused_;
    focused_ = view;
    return true;
}

bool SceneManager::_LostFocus(du::SmartPtr<qzk::View> const& view) {
    qzref::Journal::Record(receiver, "_LostFocus", {NameOf(view)});
    du::SmartPtr<qzk::View> old;
    std::lock_guard lock(mutex_);
    calls_.push_back(Call{du::Symbol("_LostFocus"), du::Symbol(NameOf(view)), false});
    if (!view || focused_ != view) {
        return false;
    }
    old = focused_;
    focused_ = nullptr;
    return true;
}

void SceneManager::ForgetView(qzk::View const* view) {
    du::SmartPtr<qzk::View> active;
    du::SmartPtr<qzk::View> focused;
    std::lock_guard lock(mutex_);
    if (active_.Get() == view) {
        active = std::move(active_);
    }
    if (focused_.Get() == view) {
        focused = std::move(focused_);
    }
}

} // namespace qzkapp
