// The process-wide index of live design objects by address, for printing items by name.
//
// Design objects enter themselves on construction and leave on destruction, so an address is
// only ever resolved while its object lives. Thread-safe.
#pragma once

#include <cstddef>
#include <string>

namespace qzref {

class DesignObjects {
public:
    // The object's name; "null" for a null pointer and "?" for an address that is no live
    // design object.
    static std::string NameOf(void const* object);
    static std::size_t GetLiveCount();

    // Called by DesignObject itself.
    static void Enter(void const* object, std::string const& name);
    static void Leave(void const* object);
};

} // namespace qzref
