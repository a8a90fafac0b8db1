#include "du/SpinLock.h"

#include <thread>

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#endif

namespace du {
namespace {

inline void Relax() noexcept {
#if defined(__x86_64__) || defined(__i386__)
    _mm_pause();
#endif
}

} // namespace

void SpinLock::LockContended() noexcept {
    // A holder that is running lets go within the spin; one that is not is waited for by giving
    // the core up to it.
    constexpr int kSpins = 100;
    for (;;) {
        for (int spin = 0; spin < kSpins; ++spin) {
            if (!held_.load(std::memory_order_relaxed) &&
                !held_.exchange(true, std::memory_order_acquire)) {
                return;
            }
            Relax();
        }
        std::this_thread::yield();
    }
}

} // namespace du
