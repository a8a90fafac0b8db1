// The reference reader's and renderer's name for a design's object.
#pragma once

#include "qzk/ecad/DesignObject.h"
#include "qzref/DesignGeometry.h"

namespace qzref {
using DesignObject = qzk::ecad::DesignObject;
}
