#include "qzk/AsyncEvent.h"

namespace qzk {

AsyncEvent::AsyncEvent(bool reportProgress) : reportProgress_(reportProgress) {}

AsyncEvent::~AsyncEvent() = default;

void AsyncEvent::Progress(unsigned char percent) {
    if (reportProgress_) {
        BaseAsyncEvent::Progress(percent);
    }
}

void AsyncEvent::Status(du::Symbol status) {
    if (reportProgress_) {
        BaseAsyncEvent::Status(status);
    }
}

} // namespace qzk
