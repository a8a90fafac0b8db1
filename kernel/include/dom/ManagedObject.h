// An object known to the kernel's message loop, and a keeper of other such objects.
//
// ManageObject makes this object hold a counted reference to another until UnmanageObject or
// this object's end; the kernel (qzk::Kernel is a ManagedObject) keeps the observers and
// events that the layer creates for itself this way, so that they live as long as the kernel
// needs them even when the layer has let them go. The reflective operations answer for the
// object's own class only; the kernel has no timers, so HandleTimeoutEvent and HandleOnIdleEvent
// are never called by it.
#pragma once

#include "du/RefCounted.h"
#include "du/SmartPtr.h"

#include <mutex>
#include <vector>

namespace qzref {
class ManagedObjectInspector;
}

namespace dom {

class MessageReader;

class ManagedObject : public virtual du::RefCounted {
public:
    ManagedObject() = default;
    ManagedObject(ManagedObject const&) = delete;
    ManagedObject& operator=(ManagedObject const&) = delete;
    ~ManagedObject() override;

    // 0 when name is the object's class, -1 otherwise.
    virtual long BaseClassOffsetByName(char const* name) const;
    virtual unsigned int GetBaseClassCount() const;
    // Null for every index: classes do not publish their bases.
    virtual char const* GetBaseClassParent(unsigned int index) const;
    virtual char const* GetBaseClass(unsigned int index) const;
    // The readable name of the dynamic class, e.g. "qzk::World".
    virtual char const* GetObjectClass() const;
    // One delivered message; observers decode it.
    virtual void HandleMessage(MessageReader& reader);
    virtual void HandleTimeoutEvent();
    virtual void HandleOnIdleEvent();
    // Told when a keeper starts to manage this object.
    virtual void OnManage();

    // false for null, for this object itself and for an object already managed here.
    bool ManageObject(du::SmartPtr<ManagedObject> const& object);
    // Lets go of object; false if it was not managed here. The reference is released after the
    // keeper's own lock is left, so the object's destructor may call back.
    bool UnmanageObject(ManagedObject const* object);

protected:
    // Lets go of every managed object; a keeper calls this when it ends.
    void UnmanageAll();

private:
    friend class qzref::ManagedObjectInspector;
    bool IsManaging(ManagedObject const* object) const;
    std::size_t GetManagedCount() const;

    mutable std::mutex managedMutex_;
    std::vector<du::SmartPtr<ManagedObject>> managed_;
};

} // namespace dom
