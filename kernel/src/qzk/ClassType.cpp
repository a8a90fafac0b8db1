#include "qzk/ClassType.h"

#include <algorithm>
#include <map>
#include <mutex>

namespace qzk {
namespace {

struct Registry {
    std::mutex mutex;
    std::map<unsigned int, std::vector<unsigned int>> parents;
};

Registry& GetRegistry() {
    static Registry registry;
    return registry;
}

} // namespace

bool ClassType::RegisterClass(unsigned int id, std::initializer_list<unsigned int> parents) {
    Registry& registry = GetRegistry();
    std::lock_guard lock(registry.mutex);
    registry.parents[id].assign(parents.begin(), parents.end());
    return true;
}

std::vector<unsigned int> ClassType::Lineage(unsigned int id) {
    Registry& registry = GetRegistry();
    std::lock_guard lock(registry.mutex);
    std::vector<unsigned int> out{id};
    for (std::size_t i = 0; i < out.size(); ++i) {
        auto found = registry.parents.find(out[i]);
        if (found == registry.parents.end()) {
            continue;
        }
        for (unsigned int parent : found->second) {
            if (std::find(out.begin(), out.end(), parent) == out.end()) {
                out.push_back(parent);
            }
        }
    }
    return out;
}

} // namespace qzk
