#include "qzref/LoaderControl.h"

#include "qzk/EcadDesign.h"
#include "qzloader/EcadDesignLoaderEvent.h"
#include "qzloader/Loader.h"

namespace qzref {

void LoaderControl::SetHolding(bool holding) {
    if (auto loader = qzloader::Loader::GetLoader()) {
        std::lock_guard lock(loader->mutex_);
        loader->holding_ = holding;
    }
}

std::size_t LoaderControl::GetHeldCount() {
    auto loader = qzloader::Loader::GetLoader();
    if (!loader) {
        return 0;
    }
    std::lock_guard lock(loader->mutex_);
    return loader->held_.size();
}

bool LoaderControl::CompleteHeld(int status, long result, unsigned short number,
                                 du::Symbol const& text) {
    auto loader = qzloader::Loader::GetLoader();
    if (!loader) {
        return false;
    }
    qzloader::Loader::Job job;
    {
        std::lock_guard lock(loader->mutex_);
        if (loader->held_.empty()) {
            return false;
        }
        job = std::move(loader->held_.front());
        loader->held_.pop_front();
    }
    job.event->SetResult(result);
    job.event->CompleteWithStatus(status, text, number);
    return true;
}

void LoaderControl::ReleaseHeld() {
    auto loader = qzloader::Loader::GetLoader();
    if (!loader) {
        return;
    }
    {
        std::lock_guard lock(loader->mutex_);
        while (!loader->held_.empty()) {
            loader->queue_.push_back(std::move(loader->held_.front()));
            loader->held_.pop_front();
        }
    }
    loader->wake_.notify_one();
}

std::string LoaderControl::GetHeldUrl() {
    auto loader = qzloader::Loader::GetLoader();
    if (!loader) {
        return {};
    }
    std::lock_guard lock(loader->mutex_);
    return loader->held_.empty() ? std::string() : loader->held_.front().design->GetURL().str();
}

void LoaderControl::WaitUntilIdle() {
    auto loader = qzloader::Loader::GetLoader();
    if (!loader) {
        return;
    }
    std::unique_lock lock(loader->mutex_);
    loader->idle_.wait(lock, [&] { return loader->queue_.empty() && !loader->busy_; });
}

bool LoaderControl::WaitUntilIdleFor(std::chrono::milliseconds timeout) {
    auto loader = qzloader::Loader::GetLoader();
    if (!loader) {
        return true;
    }
    std::unique_lock lock(loader->mutex_);
    return loader->idle_.wait_for(lock, timeout,
                                  [&] { return loader->queue_.empty() && !loader->busy_; });
}

int LoaderControl::GetProgress() {
    auto loader = qzloader::Loader::GetLoader();
    return loader ? loader->progress_.load(std::memory_order_relaxed) : -1;
}

} // namespace qzref
