// Every kind of session by the scene it drives. A new kind adds its line to kFamilies.
#include "BoardSchematicSession.h"
#include "CompareSession.h"
#include "OverlayCompareSession.h"
#include "SchematicCompareSession.h"
#include "SchematicSession.h"
#include "ScriptRunner.h"
#include "Session.h"

#include <algorithm>

namespace qzhost {
namespace {

struct Family {
    char const* scene;
    std::vector<std::string> (*commands)();
    std::vector<std::string> (*queries)();
};

Family const kFamilies[] = {
    {"board", &Session::CommandNames, &ScenePrinter::QueryNames},
    {"schematic", &SchematicSession::CommandNames, &SchematicSession::QueryNames},
    {"board compare", &CompareSession::CommandNames, &CompareSession::QueryNames},
    {"board-schematic compare", &BoardSchematicSession::CommandNames,
     &BoardSchematicSession::QueryNames},
    {"schematic compare", &SchematicCompareSession::CommandNames,
     &SchematicCompareSession::QueryNames},
    {"board-overlay compare", &OverlayCompareSession::CommandNames,
     &OverlayCompareSession::QueryNames},
};

bool Has(std::vector<std::string> const& names, std::string const& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

} // namespace

std::string SceneNeededBy(std::string const& command) {
    for (auto const& family : kFamilies) {
        if (Has(family.commands(), command)) {
            return family.scene;
        }
    }
    return {};
}

std::string SceneNeededByQuery(std::string const& query, std::string const& scene) {
    for (auto const& own : kFamilies) {
        if (own.scene == scene && Has(own.queries(), query)) {
            return {};
        }
    }
    for (auto const& family : kFamilies) {
        if (family.scene != scene && Has(family.queries(), query)) {
            return family.scene;
        }
    }
    return {};
}

} // namespace qzhost
