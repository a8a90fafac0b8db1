#include "qzk/ecad/SceneObserver.h"

namespace qzk::ecad {

SceneObserver::SceneObserver() = default;
SceneObserver::~SceneObserver() = default;

} // namespace qzk::ecad
