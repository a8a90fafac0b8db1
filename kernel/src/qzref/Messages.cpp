#include "qzref/Messages.h"

#include "qzk/MessageLoop.h"

namespace qzref {

bool Messages::PumpOne() {
    return qzk::MessageLoop::Get().PumpOne();
}

std::size_t Messages::PumpUntilIdle() {
    return qzk::MessageLoop::Get().PumpUntilIdle();
}

std::size_t Messages::GetPendingCount() {
    return qzk::MessageLoop::Get().GetPendingCount();
}

std::size_t Messages::DiscardPending() {
    return qzk::MessageLoop::Get().DiscardPending();
}

bool Messages::StartDispatcher() {
    return qzk::MessageLoop::Get().StartDispatcher();
}

bool Messages::StopDispatcher() {
    return qzk::MessageLoop::Get().StopDispatcher();
}

bool Messages::IsDispatcherRunning() {
    return qzk::MessageLoop::Get().IsDispatcherRunning();
}

std::vector<std::string> Messages::TakeHandlerErrors() {
    return qzk::MessageLoop::Get().TakeHandlerErrors();
}

std::size_t Messages::GetDroppedCount() {
    return qzk::MessageLoop::Get().GetDroppedCount();
}

} // namespace qzref
