// Whether the process runs one thread only. The C library clears the flag before a second thread
// starts and never sets it again, and nothing another thread could see is in question while it is
// set, so an atomic read-modify-write may then be a plain read and write. The C library's own
// locks and the standard library's shared counts use it the same way.
#pragma once

#if defined(__has_include)
#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#define QZ_HAS_SINGLE_THREADED 1
#endif
#endif

namespace du {

inline bool ProcessHasOneThread() noexcept {
#ifdef QZ_HAS_SINGLE_THREADED
    return __libc_single_threaded != 0;
#else
    return false;
#endif
}

} // namespace du
