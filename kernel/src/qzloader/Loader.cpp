#include "qzloader/Loader.h"

#include "qzk/EcadDesign.h"
#include "qzloader/EcadDesignLoaderEvent.h"
#include "qzref/DesignFile.h"
#include "qzref/Journal.h"

#include <stdexcept>
#include <utility>

namespace qzloader {
namespace {

std::mutex g_loaderMutex;
du::SmartPtr<Loader> g_loader;

enum : unsigned int { LoaderClassId = 60 };
bool const registered = qzk::ClassType::RegisterClass(LoaderClassId, {qzk::classid::Object});

// The one place where a read design enters the design.
void StoreDesignData(qzk::EcadDesign& design, du::SmartPtr<qzk::EcadDesignData> const& data) {
    design.SetEcadDesignData(data);
}

unsigned short ErrorNumber(long result) {
    return result < 0 ? static_cast<unsigned short>(-result) : 1;
}

} // namespace

Loader::Loader() : thread_([this] { Run(); }) {}

Loader::~Loader() {
    Stop();
}

du::SmartPtr<Loader> Loader::GetLoader() {
    std::lock_guard lock(g_loaderMutex);
    return g_loader;
}

void Loader::SetLoader(du::SmartPtr<Loader> const& loader) {
    du::SmartPtr<Loader> old;
    {
        std::lock_guard lock(g_loaderMutex);
        old = std::exchange(g_loader, loader);
    }
}

qzk::ClassType const& Loader::GetClassType() const {
    static qzk::ClassType const type(LoaderClassId);
    return type;
}

bool Loader::LoadEcadDesign(du::SmartPtr<qzk::EcadDesign> const& design,
                            EcadDesignLoaderEvent* event) {
    qzref::Journal::Record("Loader", "LoadEcadDesign",
                           {design ? qzref::Fmt(design->GetURL().str()) : std::string("null")});
    if (!design || event == nullptr) {
        return false;
    }
    std::lock_guard lock(mutex_);
    if (stopping_) {
        return false;
    }
    (holding_ ? held_ : queue_).push_back(Job{design, du::SmartPtr<EcadDesignLoaderEvent>(event)});
    wake_.notify_one();
    return true;
}

void Loader::Run() {
    for (;;) {
        Job job;
        {
            std::unique_lock lock(mutex_);
            wake_.wait(lock, [this] { return stopping_ || !queue_.empty(); });
            if (stopping_) {
                return;
            }
            job = std::move(queue_.front());
            queue_.pop_front();
            busy_ = true;
        }
        Read(job);
        progress_.store(-1, std::memory_order_relaxed);
        {
            std::lock_guard lock(mutex_);
            busy_ = false;
        }
        idle_.notify_all();
    }
}

void Loader::Read(Job& job) {
    EcadDesignLoaderEvent* event = job.event.Get();
    if (event->IsCanceled()) {
        return;
    }
    // Throwing from the progress callback is the reader's way to stop early.
    qzref::DesignReadResult result = qzref::ReadDesignFile(
        job.design->GetURL().str(),
        [this, event](unsigned char percent) {
            if (event->IsCanceled()) {
                throw std::runtime_error("cancelled");
            }
            progress_.store(percent, std::memory_order_relaxed);
            event->Progress(percent);
        },
        job.design->GetRequiredKind());
    // A cancelled load completed already and must leave the design as it was.
    if (event->IsCanceled()) {
        return;
    }
    event->SetResult(result.result);
    if (result.status == 0) {
        StoreDesignData(*job.design, result.data);
    }
    // Whoever hears the completion may end the design at once: the loader must not be the one
    // still holding it then.
    result.data = nullptr;
    job.design = nullptr;
    if (result.status == 0) {
        event->Complete();
    } else {
        event->CompleteWithError(du::Symbol(result.errorText), ErrorNumber(result.result));
    }
}

void Loader::Stop() {
    {
        std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    wake_.notify_all();
    if (thread_.joinable() && thread_.get_id() != std::this_thread::get_id()) {
        thread_.join();
    }
    std::deque<Job> queued;
    std::deque<Job> held;
    {
        std::lock_guard lock(mutex_);
        queued.swap(queue_);
        held.swap(held_);
    }
}

void Loader::_OnDestroy() {
    Stop();
}

} // namespace qzloader
