#include "du/RefCounted.h"

#include <cassert>

namespace du {

RefCounted::~RefCounted() {
    assert(count_.load() == 0 && "reference-counted object destroyed with references left");
}

bool RefCounted::ZeroReferenceCountHook() const {
    return true;
}

int RefCounted::AddReference(void* /*holder*/) const {
    return count_.fetch_add(1, std::memory_order_relaxed) + 1;
}

int RefCounted::RemoveReference(void* /*holder*/) const {
    return count_.fetch_sub(1, std::memory_order_acq_rel) - 1;
}

void ReleaseReference(RefCounted const* object, void* holder) {
    if (object == nullptr || object->RemoveReference(holder) != 0) {
        return;
    }
    object->AddReference(holder);
    if (!object->ZeroReferenceCountHook()) {
        return;
    }
    if (object->RemoveReference(holder) == 0) {
        delete object; // NOLINT(cppcoreguidelines-owning-memory): the count owns it
    }
}

} // namespace du
