// Observer of an ECAD kernel scene of one design; adds nothing to BaseSceneObserver.
#pragma once

#include "qzk/ecad/BaseSceneObserver.h"

namespace qzk::ecad {

class SceneObserver : public BaseSceneObserver {
public:
    SceneObserver();
    ~SceneObserver() override;
};

} // namespace qzk::ecad
