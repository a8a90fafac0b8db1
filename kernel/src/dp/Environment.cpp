#include "dp/Environment.h"

#include <cstdlib>
#include <mutex>

namespace dp {
namespace {

std::mutex& EnvMutex() {
    static std::mutex mutex;
    return mutex;
}

} // namespace

std::string Environment::Get(char const* name) {
    if (name == nullptr) {
        return {};
    }
    std::lock_guard lock(EnvMutex());
    char const* value = std::getenv(name);
    return value != nullptr ? std::string(value) : std::string();
}

bool Environment::Has(char const* name) {
    if (name == nullptr) {
        return false;
    }
    std::lock_guard lock(EnvMutex());
    return std::getenv(name) != nullptr;
}

void Environment::Set(char const* name, std::string const& value) {
    std::lock_guard lock(EnvMutex());
    ::setenv(name, value.c_str(), 1);
}

void Environment::Unset(char const* name) {
    std::lock_guard lock(EnvMutex());
    ::unsetenv(name);
}

} // namespace dp
