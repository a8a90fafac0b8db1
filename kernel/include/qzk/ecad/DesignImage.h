// A raster image that a design brings with it: what the kernel turns into an image annotation.
#pragma once

#include "du/SmartPtr.h"
#include "du/Types.h"
#include "qz2d/ecad/Design.h"
#include "qzk/ecad/DesignObject.h"

#include <string>

namespace qzk::ecad {

struct DesignImage : DesignObject {
    explicit DesignImage(std::string name);
    ~DesignImage() override;

    uint64 id = 0;                   // 0: the scene draws an id of its own
    int kind = 0;                    // 0 and 1 plain images, 2 an area image
    unsigned int color = 0x01FFFFFF; // colour word
    unsigned int parameter = 0;      // handed to the overlay unchanged
    bool visible = true;
    std::string overlayName;                  // UTF-8
    du::SmartPtr<qz2d::ecad::Design> picture; // null for an image without a picture
};

} // namespace qzk::ecad
