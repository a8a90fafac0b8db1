// Reading design files: the one place where the kernel turns a file into design data.
// The loader calls it on its own thread; tests and tools may call it directly.
#pragma once

#include "du/SmartPtr.h"

#include <functional>
#include <string>

namespace qzk {
class EcadDesignData;
}

namespace qzref {

struct DesignReadResult {
    // 0 read, 1 not read (the file is missing, unreadable, malformed or of the wrong kind).
    unsigned short status = 1;
    // The loader event's GetResult(): 0 read; 3 written by a newer version and read all the same;
    // -8 written by a newer version that this kernel cannot read; other negative numbers name
    // read errors (docs/design-format.md lists them).
    long result = 0;
    // Empty on success; otherwise what went wrong and where: the file and, for JSON, the line and
    // column.
    std::string errorText;
    // Null unless status is 0.
    du::SmartPtr<qzk::EcadDesignData> data;
};

// Never throws. progress, when given, is called with 0..100 as the read goes on. A file whose
// "kind" is not requiredKind (when that is not empty) is not read: the wrong-kind result.
DesignReadResult ReadDesignFile(std::string const& path,
                                std::function<void(unsigned char)> const& progress = {},
                                std::string const& requiredKind = {});

} // namespace qzref
