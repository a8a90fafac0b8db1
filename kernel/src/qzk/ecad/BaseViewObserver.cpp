#include "qzk/ecad/BaseViewObserver.h"

namespace qzk::ecad {

BaseViewObserver::BaseViewObserver() = default;
BaseViewObserver::~BaseViewObserver() = default;

} // namespace qzk::ecad
