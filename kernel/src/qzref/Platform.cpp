#include "qzref/Platform.h"

#include "qzk/Kernel.h"
#include "qzk/MessageLoop.h"
#include "qzk/World.h"
#include "qzloader/Loader.h"

#include <mutex>

namespace qzref {
namespace {

std::mutex g_platformMutex;
bool g_running = false;

} // namespace

bool Platform::Start() {
    std::lock_guard lock(g_platformMutex);
    if (g_running) {
        return false;
    }
    qzk::Kernel::SetKernel(du::SmartPtr<qzk::Kernel>(new qzk::Kernel()));
    qzk::World::SetWorld(du::SmartPtr<qzk::World>(new qzk::World()));
    qzloader::Loader::SetLoader(du::SmartPtr<qzloader::Loader>(new qzloader::Loader()));
    g_running = true;
    return true;
}

bool Platform::Stop() {
    std::lock_guard lock(g_platformMutex);
    if (!g_running) {
        return false;
    }
    qzk::MessageLoop& loop = qzk::MessageLoop::Get();
    du::SmartPtr<qzk::World> world = qzk::World::GetWorld();
    world->NotifyWorldDestroyed();
    loop.PumpUntilIdle();
    loop.StopDispatcher();

    du::SmartPtr<qzloader::Loader> loader = qzloader::Loader::GetLoader();
    qzloader::Loader::SetLoader(nullptr);
    loader->Stop();
    loader = nullptr;

    // The kernel lets go of what it keeps while the world still exists: the objects it releases
    // may deregister from the world as they end.
    du::SmartPtr<qzk::Kernel> kernel = qzk::Kernel::GetKernel();
    qzk::Kernel::SetKernel(nullptr);
    kernel->_OnDestroy();
    kernel = nullptr;

    qzk::World::SetWorld(nullptr);
    world = nullptr;
    loop.DiscardPending();
    g_running = false;
    return true;
}

bool Platform::IsRunning() {
    std::lock_guard lock(g_platformMutex);
    return g_running;
}

} // namespace qzref
