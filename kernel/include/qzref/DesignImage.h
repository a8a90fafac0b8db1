// The reference reader's and renderer's name for a design's image.
#pragma once

#include "qzk/ecad/DesignImage.h"

namespace qzref {
using DesignImage = qzk::ecad::DesignImage;
}
