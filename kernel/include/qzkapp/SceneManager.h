// The application's scene manager: which view is active and which has the keyboard focus, as the
// view observers tell it. It keeps what it was told for tests.
//
// The active and focused views are held by counted reference; a scene that lets a view go asks
// the manager to forget it (ForgetView), so no view outlives its scene here.
#pragma once

#include "du/RefCounted.h"
#include "du/SmartPtr.h"
#include "du/Symbol.h"

#include <mutex>
#include <vector>

namespace qzk {
class View;
}

namespace qzref {
class SceneManagerInspector;
}

namespace qzkapp {

class SceneManager : public du::RefCounted {
    friend class qzref::SceneManagerInspector;

public:
    // One call the manager was told, in order: "SetActiveView", "_SetFocus" or "_LostFocus",
    // the view's journal name, and the flag (false for the focus calls).
    struct Call {
        du::Symbol operation;
        du::Symbol view;
        bool flag;
    };

    SceneManager();
    SceneManager(SceneManager const&) = delete;
    SceneManager& operator=(SceneManager const&) = delete;
    ~SceneManager() override;

    // Journalled. Makes view the active one; false, and no change, for null.
    virtual bool SetActiveView(du::SmartPtr<qzk::View> const& view, bool flag);
    // Journalled. The view has the focus; false for null.
    virtual bool _SetFocus(du::SmartPtr<qzk::View> const& view);
    // Journalled. The view lost the focus; false when it did not have it (nothing changes).
    virtual bool _LostFocus(du::SmartPtr<qzk::View> const& view);

    // Kernel side: a view that closes is neither active nor focused any more.
    void ForgetView(qzk::View const* view);

private:
    mutable std::mutex mutex_;
    du::SmartPtr<qzk::View> active_;
    du::SmartPtr<qzk::View> focused_;
    std::vector<Call> calls_;
};

} // namespace qzkapp
