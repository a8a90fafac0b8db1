// The data of a view's "rotate" workflow action about "Z": the angle to turn the board by, in
// degrees. Reference counted, made on the heap and handed to the workflow manager.
#pragma once

#include "du/RefCounted.h"

namespace qzk::ecad {

struct RotateData : du::RefCounted {
    explicit RotateData(short angle) noexcept : angle(angle) {}
    ~RotateData() override;

    short angle;
};

} // namespace qzk::ecad
