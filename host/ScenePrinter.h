// What a session prints of a board scene, one value per query. Every reading of the kernel's
// own state (looks, selection channels, undo list) happens here, in one place.
#pragma once

#include "du/SmartPtr.h"

#include <optional>
#include <string>
#include <vector>

namespace qzk::ecad {
class PCBScene;
}
namespace qzkapp::ecad {
class PCBScene;
}

namespace qzhost {

class ScenePrinter {
public:
    ScenePrinter(qzkapp::ecad::PCBScene& api, du::SmartPtr<qzk::ecad::PCBScene> scene);

    // The value of a query (its words after the query's name); nothing when the query is
    // unknown or its arguments are wrong, with why in error.
    std::optional<std::string> Query(std::vector<std::string> const& words,
                                     std::string& error) const;

    // The sublayer table, one row per sublayer.
    std::string Rows() const;

    static std::vector<std::string> QueryNames();

private:
    qzkapp::ecad::PCBScene& api_;
    du::SmartPtr<qzk::ecad::PCBScene> scene_;
};

} // namespace qzhost
