// The costs of the kernel's lock and message loop next to the standard library's plain
// equivalents. Run together so the ratios come from one machine state.
//
// The C library takes a mutex without atomic operations while the process has one thread, so the
// plain queue costs half as much before any second thread has run. A viewer's process has one
// from its first design on (the loader's), so the message pair is measured in both states: the
// OneThread pair first, as the process starts (skipped when a benchmark before it started a
// thread: run it alone with --benchmark_filter=OneThread), then the Threads pair after a thread
// has run.
#include "dom/MessageReader.h"
#include "dom/Observable.h"
#include "dom/Observer.h"
#include "dom/ObserverProxy.h"
#include "dp/ReadWriteLock.h"
#include "du/CommonAllocatorImpl.h"
#include "du/SingleThread.h"
#include "qzk/Observable.h"
#include "qzref/Journal.h"
#include "qzref/Messages.h"

#include <benchmark/benchmark.h>

#include <deque>
#include <mutex>
#include <shared_mutex>
#include <string>
#include <thread>

namespace {

void BM_ReadWriteLockWrite(benchmark::State& state) {
    dp::ReadWriteLock lock;
    for (auto _ : state) {
        dp::WriteLocker writer(&lock);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_ReadWriteLockWrite);

void BM_SharedMutexWrite(benchmark::State& state) {
    std::shared_mutex mutex;
    for (auto _ : state) {
        std::unique_lock writer(mutex);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_SharedMutexWrite);

void BM_ReadWriteLockReadInsideWrite(benchmark::State& state) {
    dp::ReadWriteLock lock;
    dp::WriteLocker outer(&lock);
    for (auto _ : state) {
        dp::ReadLocker reader(&lock);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_ReadWriteLockReadInsideWrite);

void BM_SharedMutexRead(benchmark::State& state) {
    std::shared_mutex mutex;
    for (auto _ : state) {
        std::shared_lock reader(mutex);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_SharedMutexRead);

class Sink : public dom::Observer {
public:
    ~Sink() override { DetachFromMessageLoop(); }
    void EventHandler(dom::MessageReader& reader) override {
        unsigned char id = 0;
        reader.GetUInt8Value(id);
        reader.GetUInt32Value(value);
    }
    unsigned int value = 0;
};

bool StillOneThread(benchmark::State& state) {
    if (!du::ProcessHasOneThread()) {
        state.SkipWithError(
            "a thread has run in this process: run with --benchmark_filter=OneThread");
        return false;
    }
    return true;
}

void StartASecondThread() {
    static bool const started = [] {
        std::thread([] {}).join();
        return true;
    }();
    (void)started;
}

void EventPostAndDeliver(benchmark::State& state) {
    qzref::Journal::SetEnabled(false);
    dom::Observable observable;
    Sink sink;
    void* block = du::CommonAllocatorImpl::Allocate(sizeof(dom::ObserverProxy), nullptr);
    observable.AddObserver(sink,
                           du::SmartPtr<dom::ObserverProxy>(new (block) dom::ObserverProxy(sink)));
    unsigned int value = 0;
    for (auto _ : state) {
        observable.PostEvent(qzk::Observable::UInt32Event(20, ++value));
        qzref::Messages::PumpOne();
    }
    benchmark::DoNotOptimize(sink.value);
    observable.RemoveAllObservers();
}

// The same bytes an event message carries (tagged id and 32-bit value), through a plain
// mutex-guarded queue.
void MutexDequePushPop(benchmark::State& state) {
    std::mutex mutex;
    std::deque<std::string> queue;
    unsigned int value = 0;
    for (auto _ : state) {
        std::string bytes(7, '\0');
        bytes[0] = 'b';
        bytes[1] = 20;
        bytes[2] = 'w';
        ++value;
        bytes.replace(3, 4, reinterpret_cast<char const*>(&value), 4);
        {
            std::lock_guard lock(mutex);
            queue.push_back(std::move(bytes));
        }
        std::string taken;
        {
            std::lock_guard lock(mutex);
            taken = std::move(queue.front());
            queue.pop_front();
        }
        benchmark::DoNotOptimize(taken);
    }
}

void BM_OneThread_EventPostAndDeliver(benchmark::State& state) {
    if (StillOneThread(state)) {
        EventPostAndDeliver(state);
    }
}
BENCHMARK(BM_OneThread_EventPostAndDeliver);

void BM_OneThread_MutexDequePushPop(benchmark::State& state) {
    if (StillOneThread(state)) {
        MutexDequePushPop(state);
    }
}
BENCHMARK(BM_OneThread_MutexDequePushPop);

void BM_Threads_EventPostAndDeliver(benchmark::State& state) {
    StartASecondThread();
    EventPostAndDeliver(state);
}
BENCHMARK(BM_Threads_EventPostAndDeliver);

void BM_Threads_MutexDequePushPop(benchmark::State& state) {
    StartASecondThread();
    MutexDequePushPop(state);
}
BENCHMARK(BM_Threads_MutexDequePushPop);

} // namespace
