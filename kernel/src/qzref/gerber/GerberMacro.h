// An aperture macro (%AM): its statements, kept as written, and what they draw for the parameters
// of one aperture definition.
#pragma once

#include "qzref/DesignGeometry.h"

#include <string>
#include <vector>

namespace qzref::gerber {

class GerberMacro {
public:
    // The statements are the words of the %AM command after its name, without their '*'.
    explicit GerberMacro(std::vector<std::string> statements);

    // The macro's picture about the flash point for the parameters $1, $2, ... in film units,
    // scaled by unit to millimetres: a polygon whose contours are its primitives, negative for
    // those with exposure off. Throws std::invalid_argument naming the statement that is wrong.
    DesignShape Evaluate(std::vector<double> const& parameters, double unit) const;

private:
    std::vector<std::string> statements_;
};

} // namespace qzref::gerber
