#include "qzk/SceneObserver.h"

namespace qzk {

SceneObserver::SceneObserver() = default;

SceneObserver::~SceneObserver() = default;

} // namespace qzk
