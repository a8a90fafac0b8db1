// The completion of one design load. Beyond the status that OnCompleted gets, the result says
// more: 0 read; 3 written by a newer version and read all the same; -8 written by a newer
// version and not readable; other negative numbers name read errors.
#pragma once

#include "qzk/AsyncEvent.h"

namespace qzloader {

class EcadDesignLoaderEvent : public qzk::AsyncEvent {
public:
    EcadDesignLoaderEvent();
    ~EcadDesignLoaderEvent() override;

    long GetResult() const noexcept { return result_.load(std::memory_order_acquire); }
    // Loader side: set before the event is completed.
    void SetResult(long result) noexcept { result_.store(result, std::memory_order_release); }

private:
    std::atomic<long> result_{0};
};

} // namespace qzloader
