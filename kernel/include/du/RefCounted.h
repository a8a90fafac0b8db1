// Intrusive reference count, the base of every du::SmartPtr target.
//
// The count is atomic; AddReference and RemoveReference return the count left. The holder
// argument is the address of the holding pointer and is only there for tracing. When the last
// reference goes, du::SmartPtr runs the release protocol (see ReleaseReference): the object may
// keep itself alive by answering false from ZeroReferenceCountHook.
#pragma once

#include <atomic>

namespace du {

class RefCounted {
public:
    RefCounted() noexcept = default;
    // A copy is a new object: it starts with no references of its own.
    RefCounted(RefCounted const&) noexcept {}
    RefCounted& operator=(RefCounted const&) noexcept { return *this; }

    // Destroying an object that still has references is a bug; debug builds stop here.
    virtual ~RefCounted();
    // Called when the count reaches 0, with one reference added back. true lets the object go.
    virtual bool ZeroReferenceCountHook() const;

    int AddReference(void* holder) const;
    int RemoveReference(void* holder) const;
    // Adds a reference only while the object has one: false once its last reference has gone
    // (or for an object that was never counted), when it may already be on its way out.
    bool TryAddReference(void* holder) const;
    int GetReferenceCount() const { return count_.load(std::memory_order_acquire); }

private:
    friend void ReleaseReference(RefCounted const* object, void* holder);
    bool RemoveReferenceUnlessLast() const;
    bool RemoveLastReference() const;

    mutable std::atomic<int> count_{0};
};

// The release protocol: a reference that is not the last is removed. The holder of the last asks
// the hook while the count still reads 1; if the hook lets go and nobody took a reference in the
// meantime (TryAddReference), the count drops to 0 and the object is deleted. The count never
// reads 0 for an object that lives on, so TryAddReference cannot revive one being deleted.
// Null is allowed.
void ReleaseReference(RefCounted const* object, void* holder);

} // namespace du
