// Holding design loads and completing them by hand, so a test can decide when and how a load ends.
//
// While holding, LoadEcadDesign queues loads in a held list instead of reading them. A held load
// can be completed with any status, result, number and text (nothing is read or stored), or
// released to be read for real.
#pragma once

#include "du/Symbol.h"

#include <chrono>
#include <cstddef>
#include <string>

namespace qzref {

class LoaderControl {
public:
    static void SetHolding(bool holding);
    static std::size_t GetHeldCount();
    // Completes the oldest held load: status 0 Complete, 1 CompleteWithError(text, number),
    // 2 Cancel; result is set first. false if nothing is held.
    static bool CompleteHeld(int status, long result = 0, unsigned short number = 0,
                             du::Symbol const& text = du::Symbol::EMPTY);
    // Sends every held load to be read, in order.
    static void ReleaseHeld();
    // The URL of the oldest held load; empty if none.
    static std::string GetHeldUrl();
    // Waits until the loader has read everything it was asked to (held loads excepted).
    static void WaitUntilIdle();
    // The same for at most timeout; true when the loader is idle.
    static bool WaitUntilIdleFor(std::chrono::milliseconds timeout);
    // How far the load being read has come, in percent as its event is told; -1 when the loader
    // reads nothing.
    static int GetProgress();
};

} // namespace qzref
