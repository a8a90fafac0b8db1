#include "dom/Observer.h"

#include "qzk/MessageLoop.h"

namespace dom {

Observer::Observer() : handle_(qzk::MessageLoop::Get().AddObserver(this)) {}

Observer::~Observer() {
    DetachFromMessageLoop();
}

void Observer::HandleMessage(MessageReader& reader) {
    EventHandler(reader);
}

bool Observer::ZeroReferenceCountHook() const {
    return qzk::MessageLoop::Get().ReleaseIfIdle(handle_);
}

void Observer::DetachFromMessageLoop() noexcept {
    qzk::MessageLoop::Get().RemoveObserver(handle_);
}

} // namespace dom
