// Every allocation of a small viewer session made to fail in turn: a board opened through the
// factory, a sublayer and a group colour changed, a highlight, undo and redo, the scene closed. For
// each failed allocation the failure must reach someone (an exception at the caller, a handler
// error, a load completed with an error), the scene's lock must be free afterwards, the scene must
// still take a colour change and its undo (or have ended cleanly), and once it is closed both
// kernel heaps must hold as many blocks as before the session.
//
// The suite tries every allocation up to a stride; the full walk is
//     QZ_FAULT_STRIDE=1 build/tests/trust_tests --gtest_filter='AllocationFault*'
#include "board/PCBScene.h"
#include "board/PCBSceneObserver.h"
#include "component/EntryPoints.h"
#include "qzk/Instance.h"
#include "qzk/Operation.h"
#include "qzk/ViewableSource.h"
#include "qzk/World.h"
#include "qzk/ecad/GroupCVInfoSet.h"
#include "qzk/ecad/PCBScene.h"
#include "qzk/ecad/SelectionItem.h"
#include "qzk/ecad/SublayerPCB_CV.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"
#include "qzkapp/SceneApiFactory.h"
#include "qzref/AllocationFaults.h"
#include "qzref/Inspect.h"
#include "qzref/LoaderControl.h"
#include "qzref/Messages.h"
#include "qzref/Platform.h"
#include "qzref/UndoControl.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <new>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace {

using qzref::AllocationFaults;
using qzref::Messages;
using qzref::UndoControl;

class LoadListener : public qzkapp::ecad::PCBSceneObserver {
public:
    ~LoadListener() override { DetachFromMessageLoop(); }
    void DetachObserver() override {}
    void OnDesignLoaded(unsigned short error, du::Symbol const& /*text*/) override {
        lastError = error;
        ++loads;
    }
    unsigned short lastError = 0;
    int loads = 0;
};

// The kernel's colour of the first sublayer, as the renderer would see it.
unsigned int KernelFirstColour(qzk::ecad::PCBScene& scene) {
    auto const info = qzref::Inspect(scene).GetColorVisInfo();
    return info.empty() ? 0 : info.begin()->color;
}

// One session, kept in stages so that a failure anywhere leaves what was built for the checks.
class Session {
public:
    explicit Session(qzkapp::SceneApiFactory& factory) : factory_(factory) {}

    void Run() {
        stage = "open";
        bool flag = false;
        auto const created =
            factory_.CreateScene(qzk::World::GetWorld(), qzk::Instance::Create("faults"),
                                 qzk::ViewableSource::Create(
                                     du::Symbol(QZ_EXAMPLES_DIR "/designs/four-layer-board.json")),
                                 74, flag);
        scene = du::DynamicCast<qzk::ecad::PCBScene>(created);
        api = static_cast<qzkapp::ecad::PCBScene*>(scene->GetApiScene());
        stage = "register";
        listener = du::MakeCounted<LoadListener>();
        registered = api->RegisterObserver(*listener);
        stage = "load";
        qzref::LoaderControl::WaitUntilIdle();
        Messages::PumpUntilIdle();
        loaded = api->IsDesignLoaded();
        stage = "colour";
        ChangeColour(0x01123456u);
        stage = "group colour";
        api->UpdateGroups({qzkapp::ecad::GroupInfo("power", true, dg::Color(0x010000FFu, true))});
        api->OnGroupContentAdded("power", {Item("U1")});
        qzk::ecad::GroupCVInfoSet groups(false);
        api->GetGroupColorVisInfo(groups);
        auto group = *groups.begin();
        group.color = 0x0100FF00u;
        groups.erase(groups.begin());
        groups.insert(group);
        auto const operation = NewOperation();
        api->SetGroupColorVisInfo(groups, operation, qzkapp::ecad::ChangeSourceScene);
        qzk::RecordOperation(operation);
        Messages::PumpUntilIdle();
        stage = "highlight";
        api->Highlight({Item("R1"), Item("C1")}, NewOperation());
        Messages::PumpUntilIdle();
        stage = "undo";
        UndoControl::Undo();
        UndoControl::Redo();
        UndoControl::Undo();
        Messages::PumpUntilIdle();
        Close();
    }

    du::SmartPtr<qzk::SelectionItem> Item(char const* name) const {
        return du::MakeCounted<qzk::ecad::SelectionItem>(api->GetDesignData(),
                                                         api->GetDesignData()->FindObject(name),
                                                         nullptr, nullptr, dg::DPoint3D(), 0, 0);
    }

    void ChangeColour(unsigned int colour) {
        qzk::ecad::SublayerPCB_CVSet set;
        api->GetColorVisInfo(set);
        auto entry = *set.begin();
        entry.color = colour;
        set.erase(set.begin());
        set.insert(entry);
        auto const operation = NewOperation();
        api->SetColorVisInfo(set, operation, qzkapp::ecad::ChangeSourceScene);
        qzk::RecordOperation(operation);
        Messages::PumpUntilIdle();
    }

    void Close() {
        stage = "close";
        if (registered) {
            api->UnregisterObserver(*listener);
            registered = false;
        }
        if (scene) {
            auto const ending = scene;
            scene = nullptr;
            api = nullptr;
            qzref::Inspect(*ending).DestroyScene();
        }
        listener = nullptr;
        Messages::PumpUntilIdle();
    }

    du::SmartPtr<qzk::Operation> NewOperation() const {
        return du::MakeCounted<qzk::Operation>("faults", du::SmartPtr<qzk::Scene>(scene), false);
    }

    char const* stage = "";
    du::SmartPtr<qzk::ecad::PCBScene> scene;
    qzkapp::ecad::PCBScene* api = nullptr;
    du::SmartPtr<LoadListener> listener;
    bool registered = false;
    bool loaded = false;

private:
    qzkapp::SceneApiFactory& factory_;
};

// Where the scene and the kernel disagree on what a failed change left: the sublayer colours, or
// the highlighted items. "" when they agree.
std::string Disagreement(Session const& session) {
    auto const inspect = qzref::Inspect(*session.scene);
    qzk::ecad::SublayerPCB_CVSet sublayers;
    session.api->GetColorVisInfo(sublayers);
    if (qzk::ecad::SublayerPCB_CV::AreDifferent(sublayers, inspect.GetColorVisInfo())) {
        return "the scene's sublayer colours are not the kernel's";
    }
    std::set<void*> kernelHighlights;
    for (auto const& [item, look] : inspect.GetLooks(1)) {
        kernelHighlights.insert(item.object);
    }
    qzk::ecad::ItemContainer<qzk::ecad::HighlightItem> highlights;
    session.api->GetHighlights(highlights);
    std::set<void*> sceneHighlights;
    for (auto const& item : highlights) {
        sceneHighlights.insert(item.object);
    }
    if (sceneHighlights != kernelHighlights) {
        return "the scene highlights " + std::to_string(sceneHighlights.size()) +
               " items, the kernel " + std::to_string(kernelHighlights.size());
    }
    return {};
}

std::size_t FromEnvironment(char const* name, std::size_t fallback) {
    char const* text = std::getenv(name);
    return text != nullptr && *text != 0 ? std::strtoull(text, nullptr, 10) : fallback;
}

class AllocationFault : public ::testing::Test {
protected:
    void SetUp() override {
        qzref::Platform::Start();
        du::SmartPtr<du::RefCounted> component;
        ASSERT_TRUE(QZDllCreateComponent("qzapi", nullptr, "sceneapifactory", &component));
        factory_ = du::DynamicCast<qzkapp::SceneApiFactory>(component);
        ASSERT_TRUE(factory_);
    }
    void TearDown() override {
        AllocationFaults::Disarm();
        factory_ = nullptr;
        qzref::Platform::Stop();
    }

    static void Settle() {
        qzref::LoaderControl::WaitUntilIdle();
        Messages::PumpUntilIdle();
    }

    // The live block count once it is back at want, or as it stands after a second: the loader
    // thread may drop its last reference to a load a moment after it reports itself idle.
    static std::uint64_t LiveBlocksReturningTo(std::uint64_t want) {
        auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(1);
        while (AllocationFaults::LiveBlockCount() != want &&
               std::chrono::steady_clock::now() < deadline) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            Settle();
        }
        return AllocationFaults::LiveBlockCount();
    }

    // Runs the session with the n-th allocation failing and checks what it left; "" when fine.
    std::string WalkOne(std::uint64_t n) {
        std::uint64_t const liveBefore = AllocationFaults::LiveBlockCount();
        std::size_t const undoBefore = UndoControl::GetUndoCount();
        std::uint64_t const failuresBefore = AllocationFaults::FailureCount();
        Session session(*factory_);
        bool thrown = false;
        {
            qzref::ScopedAllocationFault fault(n);
            try {
                session.Run();
            } catch (std::bad_alloc const&) {
                thrown = true;
            }
            // A load the session started reads on even when the session gave up.
            Settle();
        }
        std::string const where = "allocation " + std::to_string(n) + " (" + session.stage + "): ";
        if (AllocationFaults::FailureCount() != failuresBefore + 1) {
            return where + "no allocation failed";
        }
        auto const errors = Messages::TakeHandlerErrors();
        bool const inHandler = std::any_of(errors.begin(), errors.end(), [](auto const& e) {
            return e.find("bad_alloc") != std::string::npos;
        });
        bool const inLoad = session.listener && session.listener->lastError != 0;
        if (!thrown && !inHandler && !inLoad) {
            return where + "the failure reached nobody";
        }
        if (session.scene) {
            if (!qzref::Inspect(*session.scene->GetRWLock()).IsFree()) {
                return where + "the scene's lock is still held";
            }
            if (auto const why = Disagreement(session); !why.empty()) {
                return where + why;
            }
            if (session.api->IsDesignLoaded()) {
                unsigned int const before = KernelFirstColour(*session.scene);
                session.ChangeColour(0x01ABCDEFu);
                if (KernelFirstColour(*session.scene) != 0x01ABCDEFu) {
                    return where + "a later colour change did not reach the kernel";
                }
                if (!UndoControl::Undo()) {
                    return where + "a later colour change left nothing to undo";
                }
                Messages::PumpUntilIdle();
                if (KernelFirstColour(*session.scene) != before) {
                    return where + "undoing a later colour change did not restore the colour";
                }
            }
            session.Close();
        }
        Settle();
        if (auto const left = Messages::TakeHandlerErrors(); !left.empty()) {
            return where + "a handler failed after the fault: " + left.front();
        }
        if (UndoControl::GetUndoCount() != undoBefore) {
            return where + "the closed scene left operations on the undo list";
        }
        if (std::uint64_t const live = LiveBlocksReturningTo(liveBefore); live != liveBefore) {
            return where + std::to_string(static_cast<std::int64_t>(live - liveBefore)) +
                   " blocks left behind";
        }
        return {};
    }

    du::SmartPtr<qzkapp::SceneApiFactory> factory_;
};

TEST_F(AllocationFault, EveryFailedAllocationOfASessionLeavesTheSceneUsableAndNothingBehind) {
    // A clean run first: it must pass the same checks, and it counts the session's allocations.
    std::uint64_t const liveBefore = AllocationFaults::LiveBlockCount();
    std::uint64_t const start = AllocationFaults::AllocationCount();
    {
        Session session(*factory_);
        session.Run();
        ASSERT_TRUE(session.loaded);
    }
    Settle();
    std::uint64_t const total = AllocationFaults::AllocationCount() - start;
    ASSERT_GT(total, 10U);
    ASSERT_EQ(LiveBlocksReturningTo(liveBefore), liveBefore);
    ASSERT_TRUE(Messages::TakeHandlerErrors().empty());

    std::size_t const stride = std::max<std::size_t>(1, FromEnvironment("QZ_FAULT_STRIDE", 1));
    // One allocation alone, to follow a failure in a debugger.
    std::uint64_t const only = FromEnvironment("QZ_FAULT_ONLY", 0);
    std::vector<std::string> failures;
    std::size_t walked = 0;
    for (std::uint64_t n = only != 0 ? only : 1; n <= (only != 0 ? only : total); n += stride) {
        ++walked;
        if (auto why = WalkOne(n); !why.empty()) {
            failures.push_back(std::move(why));
        }
    }
    EXPECT_GT(walked, 0U);
    for (auto const& why : failures) {
        ADD_FAILURE() << why;
    }
    std::cout << "[ walk     ] " << walked << " of " << total << " allocations failed in turn\n";
}

} // namespace
