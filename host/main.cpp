// The host program: opens a board the way a viewer does, through the scene layer's factory, and
// walks one undoable colour change.
//
//     qzhost [--library <path to libqzecad>] [design-file]
//
// Without a design file it opens the four-layer sample board. It prints the load's progress and
// notice, the draw order and the sublayer table, changes one sublayer's colour, undoes and redoes
// it, and closes the scene. A design that cannot be read prints the loader's number and text and
// ends with status 1, after the scene has been closed all the same.
#include "board/PCBScene.h"
#include "board/PCBSceneObserver.h"
#include "component/EntryPoints.h"
#include "du/StringConversion.h"
#include "qzk/Instance.h"
#include "qzk/Operation.h"
#include "qzk/ViewableSource.h"
#include "qzk/World.h"
#include "qzk/ecad/PCBScene.h"
#include "qzkapp/SceneApiFactory.h"
#include "qzref/LoaderControl.h"
#include "qzref/Messages.h"
#include "qzref/Platform.h"
#include "qzref/UndoControl.h"

#include <dlfcn.h>

#include <cstdio>
#include <string>
#include <vector>

#ifndef QZ_EXAMPLES_DIR
#define QZ_EXAMPLES_DIR "examples"
#endif
#ifndef QZECAD_LIBRARY_PATH
#define QZECAD_LIBRARY_PATH "libqzecad.so"
#endif

namespace {

unsigned int const kBoardSceneKind = 74;

// What the host hears of its board scene. Handlers run on the thread that pumps messages.
class HostObserver : public qzkapp::ecad::PCBSceneObserver {
public:
    ~HostObserver() override { DetachFromMessageLoop(); }

    void DetachObserver() override {}
    void OnDesignLoaded(unsigned short error, du::Symbol const& text) override {
        if (error == 0) {
            std::printf("design loaded\n");
        } else {
            std::printf("design not loaded: error %u: %s\n", error, text.str().c_str());
        }
    }
    void OnDrawOrderChanged() override { std::printf("draw order changed\n"); }
    void OnSublayerColorVisChanged(unsigned int source) override {
        std::printf("sublayer colours changed (source %u)\n", source);
    }
};

struct Options {
    std::string library = QZECAD_LIBRARY_PATH;
    std::string design = std::string(QZ_EXAMPLES_DIR) + "/designs/four-layer-board.json";
};

bool ParseOptions(int argc, char** argv, Options& options) {
    for (int i = 1; i < argc; ++i) {
        std::string const arg = argv[i];
        if (arg == "--library" && i + 1 < argc) {
            options.library = argv[++i];
        } else if (!arg.empty() && arg[0] == '-') {
            std::fprintf(stderr, "usage: qzhost [--library <path>] [design-file]\n");
            return false;
        } else {
            options.design = arg;
        }
    }
    return true;
}

void PrintSublayers(qzkapp::ecad::PCBScene& api) {
    qzk::ecad::SublayerPCB_CVSet set;
    api.GetColorVisInfo(set);
    std::printf("%6s %8s  %-20s %-10s %s\n", "layer", "sublayer", "label", "colour", "visible");
    for (auto const& entry : set) {
        std::string const label =
            du::WideStrToUtf8(api.GetSublayerLabel(entry.layer, entry.sublayer));
        std::printf("%6d %8d  %-20s 0x%08X %s\n", entry.layer, entry.sublayer, label.c_str(),
                    entry.color, entry.visible ? "yes" : "no");
    }
}

unsigned int ColourOf(qzkapp::ecad::PCBScene& api, qzk::ecad::SublayerPCBBase const& key) {
    qzk::ecad::SublayerPCB_CVSet set;
    api.GetColorVisInfo(set);
    auto const found = set.find(qzk::ecad::SublayerPCB_CV(key));
    return found != set.end() ? found->color : 0;
}

// Recolours the first sublayer through an operation on the kernel's undo list, then undoes and
// redoes it.
void ChangeOneColour(qzkapp::ecad::PCBScene& api, du::SmartPtr<qzk::ecad::PCBScene> const& scene) {
    qzk::ecad::SublayerPCB_CVSet set;
    api.GetColorVisInfo(set);
    if (set.empty()) {
        return;
    }
    qzk::ecad::SublayerPCB_CV entry = *set.begin();
    qzk::ecad::SublayerPCBBase const key(entry.layer, entry.sublayer);
    set.erase(entry);
    entry.color = 0x01FF00FF;
    set.insert(entry);

    std::printf("sublayer (%d,%d) colour 0x%08X\n", key.layer, key.sublayer, ColourOf(api, key));
    du::SmartPtr<qzk::Operation> op(
        new qzk::Operation("Sublayer colour", du::SmartPtr<qzk::Scene>(scene), false));
    api.SetColorVisInfo(set, op, qzkapp::ecad::ChangeSourceScene);
    qzk::RecordOperation(op);
    qzref::Messages::PumpUntilIdle();
    std::printf("changed:  0x%08X\n", ColourOf(api, key));
    qzref::UndoControl::Undo();
    qzref::Messages::PumpUntilIdle();
    std::printf("undone:   0x%08X\n", ColourOf(api, key));
    qzref::UndoControl::Redo();
    qzref::Messages::PumpUntilIdle();
    std::printf("redone:   0x%08X\n", ColourOf(api, key));
}

// Runs one session on the factory; returns the exit status.
int RunSession(qzkapp::SceneApiFactory& factory, std::string const& path) {
    bool flag = false;
    // Loads are held while the scene starts, so that the host sees its load queued, read and
    // delivered one stage at a time.
    qzref::LoaderControl::SetHolding(true);
    du::SmartPtr<qzk::Scene> created =
        factory.CreateScene(qzk::World::GetWorld(), qzk::Instance::Create("host"),
                            qzk::ViewableSource::Create(du::Symbol(path)), kBoardSceneKind, flag);
    auto scene = du::DynamicCast<qzk::ecad::PCBScene>(created);
    if (!scene) {
        std::fprintf(stderr, "the layer made no board scene\n");
        return 1;
    }
    // Kind 74 always wraps a board scene of the layer.
    auto* api = static_cast<qzkapp::ecad::PCBScene*>(scene->GetApiScene());
    du::SmartPtr<HostObserver> observer(new HostObserver());
    api->RegisterObserver(*observer);

    if (qzref::LoaderControl::GetHeldCount() != 0) {
        std::printf("load queued: %s\n", qzref::LoaderControl::GetHeldUrl().c_str());
    }
    qzref::LoaderControl::SetHolding(false);
    qzref::LoaderControl::ReleaseHeld();
    std::printf("reading on the loader's thread\n");
    qzref::LoaderControl::WaitUntilIdle();
    std::printf("read; delivering the completion\n");
    qzref::Messages::PumpUntilIdle();

    int status = 0;
    if (!api->IsDesignLoaded()) {
        status = 1;
    } else {
        std::vector<short> order;
        api->GetDrawOrder(order);
        std::printf("draw order:");
        for (short layer : order) {
            std::printf(" %d", layer);
        }
        std::printf("\n");
        PrintSublayers(*api);
        ChangeOneColour(*api, scene);
    }
    api->UnregisterObserver(*observer);
    qzref::UndoControl::Clear();
    scene->DestroyScene();
    qzref::Messages::PumpUntilIdle();
    std::printf("scene closed\n");
    return status;
}

} // namespace

int main(int argc, char** argv) {
    Options options;
    if (!ParseOptions(argc, argv, options)) {
        return 2;
    }
    void* library = dlopen(options.library.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        std::fprintf(stderr, "cannot load %s: %s\n", options.library.c_str(), dlerror());
        return 1;
    }
    auto create = reinterpret_cast<QZDllCreateComponentFn>(dlsym(library, "QZDllCreateComponent"));
    if (create == nullptr) {
        std::fprintf(stderr, "no QZDllCreateComponent in %s\n", options.library.c_str());
        dlclose(library);
        return 1;
    }

    qzref::Platform::Start();
    int status = 1;
    {
        du::SmartPtr<du::RefCounted> component;
        if (create("qzapi", nullptr, "sceneapifactory", &component)) {
            auto* factory = dynamic_cast<qzkapp::SceneApiFactory*>(component.Get());
            if (factory != nullptr) {
                status = RunSession(*factory, options.design);
            }
        } else {
            std::fprintf(stderr, "the library made no scene factory\n");
        }
    }
    qzref::Platform::Stop();
    dlclose(library);
    return status;
}
