#include "qzk/ObjectWithRWLock.h"

namespace qzk {

ObjectWithRWLock::ObjectWithRWLock()
    : lockOwner_(this), lock_(std::make_shared<dp::ReadWriteLock>()) {}

ObjectWithRWLock::ObjectWithRWLock(ObjectWithRWLock const* lockOwner)
    : lockOwner_(lockOwner), lock_(lockOwner != nullptr ? lockOwner->lock_ : nullptr) {}

} // namespace qzk
