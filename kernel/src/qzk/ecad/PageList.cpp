#include "qzk/ecad/PageList.h"

namespace qzk::ecad {

PageList::~PageList() = default;

unsigned int PageList::Count() const {
    return count_;
}

} // namespace qzk::ecad
