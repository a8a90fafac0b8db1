#include "qzk/ecad/CompareViewObserver.h"

namespace qzk::ecad {

CompareViewObserver::CompareViewObserver() = default;
CompareViewObserver::~CompareViewObserver() = default;

} // namespace qzk::ecad
