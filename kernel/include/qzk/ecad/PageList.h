// The pages of a compare scene: as many as the longer of its two designs has sheets (1 for a
// board), fixed when the list is made.
#pragma once

#include "du/RefCounted.h"

namespace qzk::ecad {

class PageList : public du::RefCounted {
public:
    explicit PageList(unsigned int count) noexcept : count_(count) {}
    ~PageList() override;

    virtual unsigned int Count() const;

private:
    unsigned int const count_;
};

} // namespace qzk::ecad
