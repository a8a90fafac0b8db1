// The root of every kernel scene observer. A scene observer hears the kernel scene's own events
// as messages; the kernel scene classes add their handlers and ids in their observers.
#pragma once

#include "qzk/Observer.h"

namespace qzk {

class SceneObserver : public Observer {
public:
    SceneObserver();
    ~SceneObserver() override;
};

} // namespace qzk
