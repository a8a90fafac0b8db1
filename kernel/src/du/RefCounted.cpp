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

bool RefCounted::TryAddReference(void* /*holder*/) const {
    int count = count_.load(std::memory_order_acquire);
    while (count > 0) {
        if (count_.compare_exchange_weak(count, count + 1, std::memory_order_acq_rel)) {
            return true;
        }
    }
    return false;
}

bool RefCounted::RemoveReferenceUnlessLast() const {
    int count = count_.load(std::memory_order_acquire);
    while (count > 1) {
        if (count_.compare_exchange_weak(count, count - 1, std::memory_order_acq_rel)) {
            return true;
        }
    }
    return false;
}

bool RefCounted::RemoveLastReference() const {
    int one = 1;
    return count_.compare_exchange_strong(one, 0, std::memory_order_acq_rel);
}

void ReleaseReference(RefCounted const* object, void* /*holder*/) {
    if (object == nullptr) {
        return;
    }
    for (;;) {
        if (object->RemoveReferenceUnlessLast()) {
            return;
        }
        // The caller holds the last reference. A hook that keeps the object keeps that
        // reference too, for whoever lets go later (the message loop after a delivery).
        if (!object->ZeroReferenceCountHook()) {
            return;
        }
        if (object->RemoveLastReference()) {
            delete object; // NOLINT(cppcoreguidelines-owning-memory): the count owns it
            return;
        }
        // Someone took a reference while the hook ran: theirs is now the last.
    }
}

} // namespace du
