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
    int GetReferenceCount() const { return count_.load(std::memory_order_acquire); }

private:
    mutable std::atomic<int> count_{0};
};

// The release protocol: RemoveReference; at 0, AddReference again and ask the hook; if the hook
// lets go, RemoveReference again and delete when that leaves 0. Null is allowed.
void ReleaseReference(RefCounted const* object, void* holder);

} // namespace du
