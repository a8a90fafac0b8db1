// Reads the optional "geometry" list of a design object.
#pragma once

#include "qzref/DesignGeometry.h"

#include <nlohmann/json_fwd.hpp>

#include <optional>
#include <string>
#include <vector>

namespace qzref {

// Appends the shapes of list to out; returns "<pointer below the list>: <why>" when the list is
// wrong, and nothing when it is right.
std::optional<std::string> ReadDesignGeometry(nlohmann::json const& list,
                                              std::vector<DesignShape>& out);

} // namespace qzref
