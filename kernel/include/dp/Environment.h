// The process environment.
//
// Get returns the variable's value, or an empty string when it is unset; callers that must
// tell unset from empty use Has. Set and Unset are controls for hosts and tests; they and Get
// share one lock, so the kernel's own readers never race the kernel's own writers.
#pragma once

#include <string>

namespace dp {

class Environment {
public:
    static std::string Get(char const* name);
    static bool Has(char const* name);
    static void Set(char const* name, std::string const& value);
    static void Unset(char const* name);
};

} // namespace dp
