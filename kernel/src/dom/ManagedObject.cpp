#include "dom/ManagedObject.h"

#include <cxxabi.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <typeindex>
#include <unordered_map>
#include <utility>

namespace dom {
namespace {

// Demangled class names, made once per class; the strings never move, so callers may keep the
// pointers.
char const* ReadableName(std::type_info const& type) {
    static std::mutex mutex;
    static std::unordered_map<std::type_index, std::string> names;
    std::lock_guard lock(mutex);
    auto found = names.find(type);
    if (found != names.end()) {
        return found->second.c_str();
    }
    int status = 0;
    std::unique_ptr<char, void (*)(void*)> demangled(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), std::free);
    std::string name = status == 0 && demangled ? demangled.get() : type.name();
    return names.emplace(type, std::move(name)).first->second.c_str();
}

} // namespace

ManagedObject::~ManagedObject() {
    UnmanageAll();
}

long ManagedObject::BaseClassOffsetByName(char const* name) const {
    return name != nullptr && std::strcmp(name, GetObjectClass()) == 0 ? 0 : -1;
}

unsigned int ManagedObject::GetBaseClassCount() const {
    return 0;
}

char const* ManagedObject::GetBaseClassParent(unsigned int /*index*/) const {
    return nullptr;
}

char const* ManagedObject::GetBaseClass(unsigned int /*index*/) const {
    return nullptr;
}

char const* ManagedObject::GetObjectClass() const {
    return ReadableName(typeid(*this));
}

void ManagedObject::HandleMessage(MessageReader& /*reader*/) {}

void ManagedObject::HandleTimeoutEvent() {}

void ManagedObject::HandleOnIdleEvent() {}

void ManagedObject::OnManage() {}

bool ManagedObject::ManageObject(du::SmartPtr<ManagedObject> const& object) {
    if (!object || object.Get() == this) {
        return false;
    }
    {
        std::lock_guard lock(managedMutex_);
        if (std::find(managed_.begin(), managed_.end(), object) != managed_.end()) {
            return false;
        }
        managed_.push_back(object);
    }
    object->OnManage();
    return true;
}

bool ManagedObject::UnmanageObject(ManagedObject const* object) {
    du::SmartPtr<ManagedObject> released;
    {
        std::lock_guard lock(managedMutex_);
        auto found = std::find_if(managed_.begin(), managed_.end(),
                                  [object](auto const& held) { return held.Get() == object; });
        if (found == managed_.end()) {
            return false;
        }
        released = std::move(*found);
        managed_.erase(found);
    }
    return true;
}

bool ManagedObject::IsManaging(ManagedObject const* object) const {
    std::lock_guard lock(managedMutex_);
    return std::any_of(managed_.begin(), managed_.end(),
                       [object](auto const& held) { return held.Get() == object; });
}

std::size_t ManagedObject::GetManagedCount() const {
    std::lock_guard lock(managedMutex_);
    return managed_.size();
}

void ManagedObject::UnmanageAll() {
    std::vector<du::SmartPtr<ManagedObject>> released;
    {
        std::lock_guard lock(managedMutex_);
        released.swap(managed_);
    }
    // Newest first, the reverse of the order they were handed over.
    while (!released.empty()) {
        released.pop_back();
    }
}

} // namespace dom
