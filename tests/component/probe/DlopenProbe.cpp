// Loads the built layer as a host does: by path, with dlopen, through its C entry points only.
// Exits 0 when every check holds; prints each failed check.
#include "component/EntryPoints.h"
#include "du/RefCounted.h"
#include "du/SmartPtr.h"
#include "qzkapp/SceneApiFactory.h"

#include <dlfcn.h>

#include <cstdio>
#include <string>

namespace {

int failures = 0;
int checks = 0;

void Check(bool ok, char const* what) {
    ++checks;
    if (!ok) {
        ++failures;
        std::fprintf(stderr, "failed: %s\n", what);
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <path of libqzecad>\n", argv[0]);
        return 2;
    }
    void* library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        std::fprintf(stderr, "dlopen: %s\n", dlerror());
        return 1;
    }
    auto create = reinterpret_cast<QZDllCreateComponentFn>(dlsym(library, "QZDllCreateComponent"));
    auto init = reinterpret_cast<QZDllInitFn>(dlsym(library, "QZDllInit"));
    auto terminate = reinterpret_cast<QZDllTerminateFn>(dlsym(library, "QZDllTerminate"));
    Check(create != nullptr && init != nullptr && terminate != nullptr,
          "the three entry points are found by their plain names");
    // Internal classes stay hidden: a step of the display priority is no part of the boundary.
    Check(dlsym(library, "_ZN6qzkapp4ecad28DisplayPriorityOperationStep4UndoEv") == nullptr,
          "internal symbols are not exported");
    if (create == nullptr || init == nullptr || terminate == nullptr) {
        return 1;
    }
    init();

    du::SmartPtr<du::RefCounted> first;
    du::SmartPtr<du::RefCounted> second;
    Check(create("qzapi", nullptr, "sceneapifactory", &first), "the exact names give a factory");
    Check(create("qzapi", nullptr, "sceneapifactory", &second), "a second call gives one too");
    Check(first && second && first.Get() != second.Get(), "every call makes a new factory");
    Check(du::DynamicCast<qzkapp::SceneApiFactory>(first) != nullptr,
          "the component is a scene factory");

    du::SmartPtr<du::RefCounted> untouched = first;
    Check(!create("qzapi ", nullptr, "sceneapifactory", &untouched), "a trailing blank is refused");
    Check(!create("QZAPI", nullptr, "sceneapifactory", &untouched), "capitals are refused");
    Check(!create("qzapi", nullptr, "SceneApiFactory", &untouched), "the name is case-sensitive");
    Check(!create("qzap", nullptr, "sceneapifactory", &untouched), "a prefix is refused");
    Check(untouched.Get() == first.Get(), "a refusal leaves the result alone");

    untouched = nullptr;
    first = nullptr;
    second = nullptr;
    terminate();
    dlclose(library);
    std::printf("%d passed, %d failed\n", checks - failures, failures);
    return failures == 0 ? 0 : 1;
}
