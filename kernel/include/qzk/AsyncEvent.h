// A completion event for jobs outside the loader (load requirements, waits).
#pragma once

#include "qzk/BaseAsyncEvent.h"

namespace qzk {

class AsyncEvent : public BaseAsyncEvent {
public:
    // reportProgress false: Progress and Status calls queue nothing; only the completion is told.
    explicit AsyncEvent(bool reportProgress);
    ~AsyncEvent() override;

    bool ReportsProgress() const noexcept { return reportProgress_; }

    void Progress(unsigned char percent) override;
    void Status(du::Symbol status) override;

private:
    bool const reportProgress_;
};

} // namespace qzk
