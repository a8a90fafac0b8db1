// Driving the kernel's message loop.
//
// Messages are delivered in the order they were queued, by whoever pumps: a test or a host's
// main loop calls PumpOne or PumpUntilIdle, or a host starts the dispatcher thread, which then
// is the only one to deliver. While the dispatcher runs, the pump calls from other threads wait
// for it instead (PumpUntilIdle returns once the queue is empty and no delivery runs). A handler
// may pump too; it then delivers later messages inside its own delivery.
//
// An exception thrown out of a handler is caught by the loop, kept, and the loop goes on.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace qzref {

class Messages {
public:
    // Delivers the oldest message; false if there was none. A message for an observer that has
    // gone is dropped and counts as delivered.
    static bool PumpOne();
    // Delivers until the queue is empty, including messages queued by the handlers; returns
    // how many were taken from the queue.
    static std::size_t PumpUntilIdle();
    static std::size_t GetPendingCount();
    // Drops every queued message undelivered; returns how many.
    static std::size_t DiscardPending();

    static bool StartDispatcher();
    static bool StopDispatcher();
    static bool IsDispatcherRunning();

    // The texts of the exceptions handlers threw, oldest first, as
    // "<observer class>: <what()>"; taking them empties the list.
    static std::vector<std::string> TakeHandlerErrors();
    // Messages dropped because their observer had gone, since the process started.
    static std::size_t GetDroppedCount();
};

} // namespace qzref
