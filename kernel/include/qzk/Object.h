// Root of the kernel's object model: a class type, user data and a name.
//
// Objects are pool allocated and reference counted (du::RefCounted is a virtual base, so an
// object that reaches it through several paths still has one count). The virtual table keeps the
// platform's order, which concrete kernel and API classes extend.
#pragma once

#include "du/RefCounted.h"
#include "du/Symbol.h"
#include "qzk/ClassType.h"
#include "qzk/MemoryPoolAllocated.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace qzk {

class Object : public MemoryPoolAllocated, public virtual du::RefCounted {
public:
    Object();
    Object(Object const&) = delete;
    Object& operator=(Object const&) = delete;

    ~Object() override;
    virtual du::Symbol GetDebugClassName() const;
    virtual ClassType const& GetClassType() const = 0;
    virtual bool IsATypeOfId(unsigned int id) const;
    virtual void GetClassTypes(std::vector<unsigned int>& out) const;
    virtual void AddUserData(unsigned int key, void* data);
    virtual void* GetUserData(unsigned int key) const;
    virtual void RemoveUserData(unsigned int key);
    virtual std::string GetObjectDescription() const;
    // The name the journal uses for this object: the one given with SetObjectName, or the debug
    // class name followed by "#" and a process-wide serial number.
    virtual du::Symbol GetObjectName() const;
    virtual void AddRefCountedUserData(unsigned int key, du::RefCounted* data);
    virtual du::RefCounted* GetRefCountedUserData(unsigned int key) const;

    bool IsATypeOf(ClassType const& type) const;
    void SetObjectName(du::Symbol const& name);

protected:
    virtual void _OnDestroy() = 0;
    virtual void _OnPostDestroy();

private:
    struct UserData;
    mutable std::mutex mutex_;
    unsigned long serial_;
    du::Symbol name_;
    std::unique_ptr<UserData> userData_;
};

} // namespace qzk
