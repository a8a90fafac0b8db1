// Every kind of session by the scene it drives. A new kind adds its line to kFamilies.
#include "CompareSession.h"
#include "SchematicSession.h"
#include "ScriptRunner.h"
#include "Session.h"

#include <algorithm>

namespace qzhost {
namespace {

struct Family {
    char const* scene;
    std::vector<std::string> (*commands)();
};

Family const kFamilies[] = {
    {"board", &Session::CommandNames},
    {"schematic", &SchematicSession::CommandNames},
    {"board compare", &CompareSession::CommandNames},
};

} // namespace

std::string SceneNeededBy(std::string const& command) {
    for (auto const& family : kFamilies) {
        auto const names = family.commands();
        if (std::find(names.begin(), names.end(), command) != names.end()) {
            return family.scene;
        }
    }
    return {};
}

} // namespace qzhost
