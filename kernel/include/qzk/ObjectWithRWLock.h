// An object guarded by a reader-writer lock, possibly another object's.
//
// The object that owns the lock creates it; an object built from a lock owner shares that
// owner's lock (an API scene shares its kernel scene's). A null owner means no lock at all: the
// guards then do nothing and every guarded section runs unlocked. The lock itself is shared, so
// it outlives whichever of the sharing objects ends first.
#pragma once

#include "dp/ReadWriteLock.h"
#include "qzk/Object.h"

#include <memory>

namespace qzk {

class ObjectWithRWLock : public Object {
public:
    // Null when the object runs unlocked.
    dp::ReadWriteLock* GetRWLock() const noexcept { return lock_.get(); }
    ObjectWithRWLock const* GetLockOwner() const noexcept { return lockOwner_; }

protected:
    // Owns a lock of its own.
    ObjectWithRWLock();
    // Shares the lock of lockOwner; null runs unlocked.
    explicit ObjectWithRWLock(ObjectWithRWLock const* lockOwner);

private:
    ObjectWithRWLock const* lockOwner_;
    std::shared_ptr<dp::ReadWriteLock> lock_;
};

} // namespace qzk
