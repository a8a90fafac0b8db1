// The design loader: reads design files on a thread of its own and completes each load's event.
// Exists between qzref::Platform::Start and Stop; GetLoader() is null outside that span.
//
// A load reads the design's URL with qzref::ReadDesignFile, reports progress through the event,
// stores the data in the design on success, sets the event's result and completes it: Complete
// (status 0) when read, CompleteWithError (status 1) when not, with the reader's text and as
// number the magnitude of a negative result (1 otherwise). A load whose event was cancelled
// stores nothing; the event has completed with status 2 already. Loads run one at a time in the
// order they were asked for. Tests can hold loads instead and complete them by hand
// (qzref::LoaderControl).
#pragma once

#include "du/SmartPtr.h"
#include "qzk/Object.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace qzk {
class EcadDesign;
}

namespace qzref {
class LoaderControl;
class Platform;
} // namespace qzref

namespace qzloader {

class EcadDesignLoaderEvent;

class Loader : public qzk::Object {
public:
    ~Loader() override;

    static du::SmartPtr<Loader> GetLoader();

    qzk::ClassType const& GetClassType() const override;

    // Queues the load. false for a null design or event, or a loader that has stopped; the event
    // is then not completed.
    bool LoadEcadDesign(du::SmartPtr<qzk::EcadDesign> const& design, EcadDesignLoaderEvent* event);

protected:
    void _OnDestroy() override;

private:
    friend class qzref::LoaderControl;
    friend class qzref::Platform;

    struct Job {
        du::SmartPtr<qzk::EcadDesign> design;
        du::SmartPtr<EcadDesignLoaderEvent> event;
    };

    Loader();
    static void SetLoader(du::SmartPtr<Loader> const& loader);
    void Run();
    void Stop();
    void Read(Job& job);

    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<Job> queue_;
    std::deque<Job> held_;
    bool holding_ = false;
    bool stopping_ = false;
    bool busy_ = false;
    // The percentage of the load being read, -1 when none is.
    std::atomic<int> progress_{-1};
    std::condition_variable idle_;
    std::thread thread_;
};

} // namespace qzloader
