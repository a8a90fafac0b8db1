// qzhost: opens a design the way a viewer does, through the scene layer's factory, and runs a
// scripted session on it.
//
//     qzhost open DESIGN [--compare DESIGN] [--kind N] [--script FILE] [--render FILE.png|FILE.svg]
//                 [--events] [--journal]
//
// The layer is the libqzecad the host was linked with, loaded again with dlopen and entered
// through QZDllCreateComponent as any host does. Relative design paths that do not exist from
// the working directory are looked up in the installed data (share/qzecad) beside the host.
// Whenever the host ends with a non-zero status it says why in one line on stderr.
#include "BoardSchematicSession.h"
#include "CompareSession.h"
#include "HostEvents.h"
#include "OverlayCompareHostEvents.h"
#include "OverlayCompareSession.h"
#include "SceneKind.h"
#include "SchematicCompareSession.h"
#include "SchematicSession.h"
#include "Session.h"
#include "board/PCBScene.h"
#include "compare/PCBCompareScene.h"
#include "compare/PCBOvlCompareScene.h"
#include "compare/PCBSchCompareScene.h"
#include "compare/SchematicCompareScene.h"
#include "component/EntryPoints.h"
#include "qzk/EcadDesign.h"
#include "qzk/Instance.h"
#include "qzk/ViewableSource.h"
#include "qzk/World.h"
#include "qzk/ecad/PCBCompareScene.h"
#include "qzk/ecad/PCBCompareView.h"
#include "qzk/ecad/PCBOvlCompareScene.h"
#include "qzk/ecad/PCBScene.h"
#include "qzk/ecad/PCBSchCompareScene.h"
#include "qzk/ecad/PCBView.h"
#include "qzk/ecad/SchematicCompareScene.h"
#include "qzk/ecad/SchematicCompareView.h"
#include "qzk/ecad/SchematicData.h"
#include "qzk/ecad/SchematicScene.h"
#include "qzk/ecad/SchematicView.h"
#include "qzkapp/SceneApiFactory.h"
#include "qzref/Inspect.h"
#include "qzref/Journal.h"
#include "qzref/LoaderControl.h"
#include "qzref/Messages.h"
#include "qzref/Platform.h"
#include "qzref/UndoControl.h"
#include "schematic/SchematicScene.h"

#include <CLI/CLI.hpp>
#include <dlfcn.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>

#ifndef QZ_VERSION
#define QZ_VERSION "unknown"
#endif
#ifndef QZ_SOURCE_DIR
#define QZ_SOURCE_DIR "."
#endif
#ifndef QZ_INSTALL_DATADIR
#define QZ_INSTALL_DATADIR "share"
#endif

namespace {

namespace fs = std::filesystem;

struct Options {
    std::string design;
    std::string compare;
    std::optional<unsigned int> kind;
    std::string script;
    std::string render;
    bool events = false;
    bool journal = false;
    std::string library;
};

int Fail(std::string const& why) {
    std::fprintf(stderr, "qzhost: %s\n", why.c_str());
    return 1;
}

fs::path ExecutableDir() {
    std::error_code error;
    auto const self = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::path() : self.parent_path();
}

// The path as given when it exists; otherwise the same relative path under the installed data
// directory, then under the source tree the host was built from.
std::string Resolve(std::string const& given) {
    fs::path const path(given);
    std::error_code error;
    if (path.is_absolute() || fs::exists(path, error)) {
        return given;
    }
    for (fs::path const& base :
         {ExecutableDir() / ".." / QZ_INSTALL_DATADIR / "qzecad", fs::path(QZ_SOURCE_DIR)}) {
        if (fs::exists(base / path, error)) {
            return (base / path).lexically_normal().string();
        }
    }
    return given;
}

// The libqzecad this program was linked with: the file that holds one of its exported symbols.
std::string LinkedLayerPath() {
    Dl_info info{};
    auto const symbol = reinterpret_cast<void*>(&qzkapp::ecad::PCBScene::GetBaseEventId);
    if (dladdr(symbol, &info) != 0 && info.dli_fname != nullptr) {
        return info.dli_fname;
    }
    return "libqzecad.so";
}

// Waits for the loader, showing how far it has come on a terminal (or wherever stderr goes when
// QZHOST_PROGRESS is set): the percentage as the loader reads, each time it rises.
void WaitForLoad(std::string const& path) {
    char const* const forced = std::getenv("QZHOST_PROGRESS");
    bool const show = isatty(STDERR_FILENO) != 0 || (forced != nullptr && *forced != 0);
    int shown = -1;
    auto report = [&](int percent) {
        if (show && percent > shown) {
            shown = percent;
            std::fprintf(stderr, "\rloading %s ... %3d%%", path.c_str(), percent);
            std::fflush(stderr);
        }
    };
    while (!qzref::LoaderControl::WaitUntilIdleFor(std::chrono::milliseconds(50))) {
        report(qzref::LoaderControl::GetProgress());
    }
    report(100);
    if (show) {
        std::fputc('\n', stderr);
    }
    qzref::Messages::PumpUntilIdle();
}

class JournalPrinter {
public:
    explicit JournalPrinter(bool on) : on_(on), mark_(qzref::Journal::Size()) {}
    void Flush() {
        if (!on_) {
            return;
        }
        for (auto const& line : qzref::Journal::Since(mark_)) {
            std::printf("journal: %s\n", line.c_str());
        }
        mark_ = qzref::Journal::Size();
    }

private:
    bool on_;
    std::size_t mark_;
};

// Waits for the scene's load, then runs the session made for it (script, then picture). make
// may take the observer, to read what the loads said.
template <class Events, class Api, class MakeSession>
int RunScene(Options const& options, Api& api, JournalPrinter& journal, MakeSession make) {
    auto observer = du::MakeCounted<Events>(options.events);
    api.RegisterObserver(*observer);
    WaitForLoad(options.design);
    journal.Flush();
    std::printf("design: %s\n", options.design.c_str());

    int status = 0;
    if (!api.IsDesignLoaded()) {
        status = Fail("cannot load " + options.design + ": " + observer->GetLoadError());
    } else {
        std::unique_ptr<qzhost::ScriptRunner> session;
        if constexpr (std::is_invocable_v<MakeSession, Events&>) {
            session = make(*observer);
        } else {
            session = make();
        }
        qzref::Messages::PumpUntilIdle();
        session->SetAfterLine([&journal] { journal.Flush(); });
        if (!options.script.empty()) {
            std::string const script = Resolve(options.script);
            std::ifstream in(script);
            std::string error;
            if (!in) {
                status = Fail("cannot open the script " + options.script);
            } else if (!session->Run(in, options.script, error)) {
                status = Fail(error);
            }
        }
        // The picture shows the state the session ended in; none after a failed session.
        std::string why;
        if (status == 0 && !options.render.empty() && !session->RenderTo(options.render, why)) {
            status = Fail("cannot render: " + why);
        }
    }
    std::fflush(stdout);
    api.UnregisterObserver(*observer);
    return status;
}

int RunBoard(qzkapp::SceneApiFactory& factory, Options const& options,
             du::SmartPtr<qzk::ecad::PCBScene> const& scene, JournalPrinter& journal) {
    // Kind 74 always wraps a board scene of the layer.
    auto* api = static_cast<qzkapp::ecad::PCBScene*>(scene->GetApiScene());
    return RunScene<qzhost::HostEvents>(options, *api, journal, [&] {
        // One view, as a viewer's window: it draws the crosshair.
        auto view = qzk::ecad::PCBView::Create(*scene, 1);
        factory.ViewCreated(du::SmartPtr<qzk::Scene>(scene), du::SmartPtr<qzk::View>(view));
        return std::make_unique<qzhost::Session>(
            *api, scene, stdout, std::filesystem::path(options.design).parent_path().string());
    });
}

// A schematic is seen through one view with a page per sheet, made once the design is known,
// as a viewer makes its window.
int RunSchematic(qzkapp::SceneApiFactory& factory, Options const& options,
                 du::SmartPtr<qzk::ecad::SchematicScene> const& scene, JournalPrinter& journal) {
    // Kinds 73 and 77 always wrap a schematic scene of the layer.
    auto* api = static_cast<qzkapp::ecad::SchematicScene*>(scene->GetApiScene());
    return RunScene<qzhost::SchematicHostEvents>(options, *api, journal, [&] {
        auto const* data =
            dynamic_cast<qzk::ecad::SchematicData const*>(api->GetDesignData().Get());
        unsigned int const sheets = data != nullptr ? data->GetNumSheets() : 1;
        auto view = qzk::ecad::SchematicView::Create(*scene, sheets);
        factory.ViewCreated(du::SmartPtr<qzk::Scene>(scene), du::SmartPtr<qzk::View>(view));
        return std::make_unique<qzhost::SchematicSession>(*api, scene, view, stdout);
    });
}

// A board compare is seen through one view, as a viewer makes its window; its session changes
// the compare rows.
int RunBoardCompare(qzkapp::SceneApiFactory& factory, Options const& options,
                    du::SmartPtr<qzk::ecad::PCBCompareScene> const& scene,
                    JournalPrinter& journal) {
    // Kind 159 without a Gerber source always wraps a board compare scene of the layer.
    auto* api = static_cast<qzkapp::ecad::PCBCompareScene*>(scene->GetApiScene());
    return RunScene<qzhost::CompareHostEvents>(options, *api, journal, [&] {
        auto view = qzk::ecad::PCBCompareView::Create(*scene, 1);
        factory.ViewCreated(du::SmartPtr<qzk::Scene>(scene), du::SmartPtr<qzk::View>(view));
        return std::make_unique<qzhost::CompareSession>(*api, scene, stdout);
    });
}

// A board compared with a schematic is seen through two views, the board's and the schematic's
// with a page per sheet, as a viewer makes its windows; its session changes either side.
int RunBoardSchematic(qzkapp::SceneApiFactory& factory, Options const& options,
                      du::SmartPtr<qzk::ecad::PCBSchCompareScene> const& scene,
                      JournalPrinter& journal) {
    // Kind 171 always wraps a board-against-schematic compare scene of the layer.
    auto* api = static_cast<qzkapp::ecad::PCBSchCompareScene*>(scene->GetApiScene());
    return RunScene<qzhost::BoardSchematicHostEvents>(options, *api, journal, [&] {
        auto board = qzk::ecad::PCBView::Create(*scene, 1);
        factory.ViewCreated(du::SmartPtr<qzk::Scene>(scene), du::SmartPtr<qzk::View>(board));
        auto const* data = dynamic_cast<qzk::ecad::SchematicData const*>(api->GetSchData().Get());
        auto sheets =
            qzk::ecad::SchematicView::Create(*scene, data != nullptr ? data->GetNumSheets() : 1);
        factory.ViewCreated(du::SmartPtr<qzk::Scene>(scene), du::SmartPtr<qzk::View>(sheets));
        return std::make_unique<qzhost::BoardSchematicSession>(*api, scene, sheets, stdout);
    });
}

// Two schematics are seen through one view with a page per sheet of the longer one, made once
// both are known; its session goes from sheet to sheet and changes the compare records.
int RunSchematicCompare(qzkapp::SceneApiFactory& factory, Options const& options,
                        du::SmartPtr<qzk::ecad::SchematicCompareScene> const& scene,
                        JournalPrinter& journal) {
    // Kind 161 always wraps a schematic compare scene of the layer.
    auto* api = static_cast<qzkapp::ecad::SchematicCompareScene*>(scene->GetApiScene());
    return RunScene<qzhost::SchematicCompareHostEvents>(options, *api, journal, [&] {
        auto view = qzk::ecad::SchematicCompareView::Create(*scene, api->GetNumSheets());
        factory.ViewCreated(du::SmartPtr<qzk::Scene>(scene), du::SmartPtr<qzk::View>(view));
        return std::make_unique<qzhost::SchematicCompareSession>(*api, scene, view, stdout);
    });
}

// A board compared with a Gerber overlay is seen through one view, as a board compare is. The
// scene counts as loaded with the board alone: a film that cannot be read is said on stderr, and
// the session runs on the board.
int RunOverlayCompare(qzkapp::SceneApiFactory& factory, Options const& options,
                      du::SmartPtr<qzk::ecad::PCBOvlCompareScene> const& scene,
                      JournalPrinter& journal) {
    // Kind 159 with a Gerber source always wraps a board-overlay compare scene of the layer.
    auto* api = static_cast<qzkapp::ecad::PCBOvlCompareScene*>(scene->GetApiScene());
    return RunScene<qzhost::OverlayCompareHostEvents>(
        options, *api, journal, [&](qzhost::OverlayCompareHostEvents const& events) {
            for (bool const second : {false, true}) {
                du::SmartPtr<qzk::EcadDesign> design;
                scene->GetEcadDesign(design, second ? 1 : 0);
                auto const& data = second ? api->GetSecondDesignData() : api->GetFirstDesignData();
                if (design && design->IsGerber() && !data) {
                    std::string const& why = events.GetLoadError(second);
                    std::fprintf(stderr,
                                 "qzhost: the overlay %s did not load%s; the board is "
                                 "shown alone\n",
                                 design->GetURL().str().c_str(),
                                 why.empty() ? "" : (": " + why).c_str());
                }
            }
            auto view = qzk::ecad::PCBCompareView::Create(*scene, 1);
            factory.ViewCreated(du::SmartPtr<qzk::Scene>(scene), du::SmartPtr<qzk::View>(view));
            return std::make_unique<qzhost::OverlayCompareSession>(*api, scene, stdout);
        });
}

int Open(qzkapp::SceneApiFactory& factory, Options options) {
    options.design = Resolve(options.design);
    std::string error;
    auto const firstKind = qzhost::SceneKind::ReadDesignKind(options.design, error);
    if (!firstKind) {
        return Fail(error);
    }
    std::string secondKind;
    if (!options.compare.empty()) {
        options.compare = Resolve(options.compare);
        auto const kind = qzhost::SceneKind::ReadDesignKind(options.compare, error);
        if (!kind) {
            return Fail(error);
        }
        secondKind = *kind;
    }
    auto const kind = qzhost::SceneKind::Choose(*firstKind, secondKind, options.kind, error);
    if (!kind) {
        return Fail(error);
    }

    JournalPrinter journal(options.journal);
    bool flag = false;
    du::SmartPtr<qzk::Scene> created;
    if (options.compare.empty()) {
        created = factory.CreateScene(qzk::World::GetWorld(), qzk::Instance::Create("host"),
                                      qzk::ViewableSource::Create(du::Symbol(options.design)),
                                      *kind, flag);
    } else {
        created =
            factory.CreateScene(qzk::World::GetWorld(), qzk::Instance::Create("first"),
                                qzk::ViewableSource::Create(du::Symbol(options.design)),
                                qzk::Instance::Create("second"),
                                qzk::ViewableSource::Create(du::Symbol(options.compare)), *kind);
    }
    if (!created) {
        journal.Flush();
        return Fail("scene kind " + std::to_string(*kind) + " (" +
                    qzhost::SceneKind::Describe(*kind) +
                    ") is not available yet in this build of the layer");
    }
    int status = 0;
    if (auto board = du::DynamicCast<qzk::ecad::PCBScene>(created)) {
        status = RunBoard(factory, options, board, journal);
    } else if (auto schematic = du::DynamicCast<qzk::ecad::SchematicScene>(created)) {
        status = RunSchematic(factory, options, schematic, journal);
    } else if (auto compare = du::DynamicCast<qzk::ecad::PCBCompareScene>(created)) {
        status = RunBoardCompare(factory, options, compare, journal);
    } else if (auto pair = du::DynamicCast<qzk::ecad::PCBSchCompareScene>(created)) {
        status = RunBoardSchematic(factory, options, pair, journal);
    } else if (auto schematics = du::DynamicCast<qzk::ecad::SchematicCompareScene>(created)) {
        status = RunSchematicCompare(factory, options, schematics, journal);
    } else if (auto overlay = du::DynamicCast<qzk::ecad::PCBOvlCompareScene>(created)) {
        status = RunOverlayCompare(factory, options, overlay, journal);
    } else {
        status = Fail("the host has no session commands for scene kind " + std::to_string(*kind) +
                      " yet");
    }
    qzref::UndoControl::Clear();
    auto* ecad = dynamic_cast<qzk::ecad::BaseScene*>(created.Get());
    if (ecad != nullptr) {
        qzref::Inspect(*ecad).DestroyScene();
    }
    qzref::Messages::PumpUntilIdle();
    journal.Flush();
    std::printf("scene closed\n");
    return status;
}

int RunWithLayer(Options const& options) {
    std::string const library = options.library.empty() ? LinkedLayerPath() : options.library;
    void* handle = dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        return Fail("cannot load the scene layer " + library + ": " + dlerror());
    }
    auto create = reinterpret_cast<QZDllCreateComponentFn>(dlsym(handle, "QZDllCreateComponent"));
    if (create == nullptr) {
        dlclose(handle);
        return Fail("no QZDllCreateComponent in " + library);
    }
    qzref::Platform::Start();
    int status = 1;
    {
        du::SmartPtr<du::RefCounted> component;
        qzkapp::SceneApiFactory* factory = nullptr;
        if (create("qzapi", nullptr, "sceneapifactory", &component)) {
            factory = dynamic_cast<qzkapp::SceneApiFactory*>(component.Get());
        }
        status = factory != nullptr ? Open(*factory, options)
                                    : Fail("the scene layer " + library + " made no scene factory");
    }
    qzref::Platform::Stop();
    dlclose(handle);
    return status;
}

int Run(int argc, char** argv) {
    CLI::App app{"qzhost: drives the qzecad scene layer the way a viewer does"};
    app.set_version_flag("--version", std::string("qzhost ") + QZ_VERSION);
    app.require_subcommand(1, 1);
    Options options;
    auto* open = app.add_subcommand("open", "open a design in a scene and run a session on it");
    open->add_option("design", options.design, "the design file (JSON)")->required();
    open->add_option("--compare", options.compare, "a second design to compare with the first");
    open->add_option("--kind", options.kind,
                     "the scene kind (73 schematic, 74 board, 159, 161, 171 compare); "
                     "default: from the designs' kinds");
    open->add_option("--script", options.script, "a session script to run (docs/sessions.md)");
    open->add_option("--render", options.render,
                     "draw the scene as the session left it to a .png or .svg file");
    open->add_flag("--events", options.events, "print every event the observer hears");
    open->add_flag("--journal", options.journal, "print the kernel calls the layer made");
    open->add_option("--library", options.library,
                     "the libqzecad to load (default: the linked one)");
    try {
        app.parse(argc, argv);
    } catch (CLI::CallForHelp const& e) {
        return app.exit(e);
    } catch (CLI::CallForVersion const& e) {
        return app.exit(e);
    } catch (CLI::ParseError const& e) {
        std::fprintf(stderr, "qzhost: %s\n%s", e.what(), app.help().c_str());
        return 2;
    }
    if (options.design.empty()) {
        return Fail("the design path is empty");
    }
    return RunWithLayer(options);
}

} // namespace

int main(int argc, char** argv) {
    // Whatever escapes still ends with one line that says why.
    try {
        return Run(argc, argv);
    } catch (std::exception const& e) {
        std::fprintf(stderr, "qzhost: %s\n", e.what());
    } catch (...) {
        std::fprintf(stderr, "qzhost: an unexpected error\n");
    }
    return 1;
}
