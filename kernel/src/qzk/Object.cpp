#include "qzk/Object.h"

#include "du/SmartPtr.h"

#include <algorithm>
#include <atomic>

namespace qzk {

struct Object::UserData {
    std::map<unsigned int, void*> plain;
    std::map<unsigned int, du::SmartPtr<du::RefCounted>> counted;
};

namespace {
std::atomic<unsigned long> g_serial{0};
bool const registered = ClassType::RegisterClass(classid::ObjectWithRWLock, {classid::Object});
} // namespace

Object::Object() : serial_(++g_serial) {}

Object::~Object() = default;

du::Symbol Object::GetDebugClassName() const {
    return du::Symbol("qzk::Object");
}

bool Object::IsATypeOfId(unsigned int id) const {
    std::vector<unsigned int> ids;
    GetClassTypes(ids);
    return std::find(ids.begin(), ids.end(), id) != ids.end();
}

void Object::GetClassTypes(std::vector<unsigned int>& out) const {
    out = ClassType::Lineage(GetClassType().GetId());
}

bool Object::IsATypeOf(ClassType const& type) const {
    return IsATypeOfId(type.GetId());
}

void Object::AddUserData(unsigned int key, void* data) {
    std::lock_guard lock(mutex_);
    if (!userData_) {
        userData_ = std::make_unique<UserData>();
    }
    userData_->plain[key] = data;
}

void* Object::GetUserData(unsigned int key) const {
    std::lock_guard lock(mutex_);
    if (!userData_) {
        return nullptr;
    }
    auto found = userData_->plain.find(key);
    return found == userData_->plain.end() ? nullptr : found->second;
}

void Object::RemoveUserData(unsigned int key) {
    std::lock_guard lock(mutex_);
    if (userData_) {
        userData_->plain.erase(key);
        userData_->counted.erase(key);
    }
}

std::string Object::GetObjectDescription() const {
    return std::string(GetDebugClassName().str()) + " " + GetObjectName().str();
}

du::Symbol Object::GetObjectName() const {
    std::lock_guard lock(mutex_);
    if (!name_.empty()) {
        return name_;
    }
    return du::Symbol(GetDebugClassName().str() + "#" + std::to_string(serial_));
}

void Object::SetObjectName(du::Symbol const& name) {
    std::lock_guard lock(mutex_);
    name_ = name;
}

void Object::AddRefCountedUserData(unsigned int key, du::RefCounted* data) {
    std::lock_guard lock(mutex_);
    if (!userData_) {
        userData_ = std::make_unique<UserData>();
    }
    userData_->counted[key] = du::SmartPtr<du::RefCounted>(data);
}

du::RefCounted* Object::GetRefCountedUserData(unsigned int key) const {
    std::lock_guard lock(mutex_);
    if (!userData_) {
        return nullptr;
    }
    auto found = userData_->counted.find(key);
    return found == userData_->counted.end() ? nullptr : found->second.Get();
}

void Object::_OnPostDestroy() {}

} // namespace qzk
