#include "qzref/DesignObjects.h"

#include <mutex>
#include <unordered_map>

namespace qzref {
namespace {

struct Index {
    std::mutex mutex;
    std::unordered_map<void const*, std::string> names;
};

Index& GetIndex() {
    static Index index;
    return index;
}

} // namespace

std::string DesignObjects::NameOf(void const* object) {
    if (object == nullptr) {
        return "null";
    }
    Index& index = GetIndex();
    std::lock_guard lock(index.mutex);
    auto found = index.names.find(object);
    return found == index.names.end() ? "?" : found->second;
}

std::size_t DesignObjects::GetLiveCount() {
    Index& index = GetIndex();
    std::lock_guard lock(index.mutex);
    return index.names.size();
}

void DesignObjects::Enter(void const* object, std::string const& name) {
    Index& index = GetIndex();
    std::lock_guard lock(index.mutex);
    index.names[object] = name;
}

void DesignObjects::Leave(void const* object) {
    Index& index = GetIndex();
    std::lock_guard lock(index.mutex);
    index.names.erase(object);
}

} // namespace qzref
