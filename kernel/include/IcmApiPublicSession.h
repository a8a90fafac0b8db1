// The common root of the design query sessions, and the owner of their iterator handles.
//
// Iterator handles are opaque; every handle that a session gives out stays valid until it is
// passed to IcmIteratorDelete, also after the iteration reached its end. Handles are kept in one
// process-wide table, so a handle can be released without knowing its session and an unknown or
// already released handle is ignored instead of corrupting memory.
#pragma once

#include <cstddef>

class IcmApiPublicSession {
public:
    IcmApiPublicSession() = default;
    IcmApiPublicSession(IcmApiPublicSession const&) = delete;
    IcmApiPublicSession& operator=(IcmApiPublicSession const&) = delete;
    virtual ~IcmApiPublicSession();

    // Releases the iterator and sets the handle to null. Null and unknown handles are ignored
    // (the handle is still set to null).
    static void IcmIteratorDelete(void*& iterator);

    // Handles given out and not yet released, over the whole process; tests use it to prove that
    // a caller released what it was given.
    static std::size_t GetLiveIteratorCount();
};
