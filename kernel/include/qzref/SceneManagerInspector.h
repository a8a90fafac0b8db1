// What a test reads back from the application's scene manager, and its reset; reached through
// qzref::Inspect.
#pragma once

#include "du/SmartPtr.h"
#include "qzkapp/SceneManager.h"

#include <vector>

namespace qzk {
class View;
}

namespace qzref {

class SceneManagerInspector {
public:
    using Call = qzkapp::SceneManager::Call;

    explicit SceneManagerInspector(qzkapp::SceneManager& manager) noexcept : manager_(manager) {}

    du::SmartPtr<qzk::View> GetActiveView() const;
    du::SmartPtr<qzk::View> GetFocusedView() const;
    std::vector<Call> GetCalls() const;
    // Forgets the views and the calls.
    void Reset();

private:
    qzkapp::SceneManager& manager_;
};

} // namespace qzref
