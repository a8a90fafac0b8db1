// The reference reader's and renderer's name for what a design object draws.
#pragma once

#include "qzk/ecad/DesignObject.h"

namespace qzref {
using DesignShape = qzk::ecad::DesignShape;
}
