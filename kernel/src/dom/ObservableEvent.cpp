#include "dom/ObservableEvent.h"

namespace dom {

ObservableEvent::~ObservableEvent() = default;

} // namespace dom
