#include "component/EntryPoints.h"

#include "component/SceneApiFactory.h"

#include <cstring>

namespace {

// Length first, then the bytes: case and trailing blanks count.
bool Equals(std::string const& given, char const* expected) {
    std::size_t const length = std::strlen(expected);
    return given.size() == length && std::memcmp(given.data(), expected, length) == 0;
}

} // namespace

extern "C" {

bool QZDllCreateComponent(std::string const& family, void const* /*unused*/,
                          std::string const& name, du::SmartPtr<du::RefCounted>* out) {
    if (!Equals(family, "qzapi") || !Equals(name, "sceneapifactory")) {
        return false;
    }
    // The ordinary heap, not the kernel's pool: the factory is no kernel object.
    *out = du::MakeCounted<qzkapp::ecad::SceneApiFactory>();
    return true;
}

void QZDllInit() {}
void QZDllTerminate() {}
}
