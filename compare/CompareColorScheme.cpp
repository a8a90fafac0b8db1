#include "compare/CompareColorScheme.h"

#include "dp/Environment.h"

#include <atomic>
#include <sstream>

namespace qzkapp::ecad {
namespace {

int const kUnread = -1;
// Atomic only so that the race between two first reads is no undefined behaviour.
std::atomic<int> cachedScheme{kUnread};

} // namespace

int ParseCompareColorScheme(std::string const& text) {
    std::istringstream stream(text);
    int value = 0;
    if (!stream.good() || !(stream >> value) || !stream.eof()) {
        return 0;
    }
    return value;
}

int ReadCompareColorScheme() {
    int const cached = cachedScheme.load(std::memory_order_relaxed);
    if (cached != kUnread) {
        return cached;
    }
    int const scheme = ParseCompareColorScheme(dp::Environment::Get(kCompareColorSchemeVariable));
    cachedScheme.store(scheme, std::memory_order_relaxed);
    return scheme;
}

void ForgetCompareColorScheme() {
    cachedScheme.store(kUnread, std::memory_order_relaxed);
}

} // namespace qzkapp::ecad
