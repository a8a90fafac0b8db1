// Starting and stopping the reference platform: the kernel, the world with its preferences and
// the loader. Tests start it per test (ScopedPlatform); the host program once.
//
// Stop tells world observers that the world ends, delivers what is queued (unless the dispatcher
// thread does), stops the dispatcher and the loader thread, drops undelivered messages and
// releases the singletons, so that GetKernel, GetWorld and GetLoader are null again.
#pragma once

namespace qzref {

class Platform {
public:
    // false if it was running already.
    static bool Start();
    static bool Stop();
    static bool IsRunning();
};

// Starts the platform for the life of the object (a test fixture's member).
class ScopedPlatform {
public:
    ScopedPlatform() { Platform::Start(); }
    ~ScopedPlatform() { Platform::Stop(); }
    ScopedPlatform(ScopedPlatform const&) = delete;
    ScopedPlatform& operator=(ScopedPlatform const&) = delete;
};

} // namespace qzref
