// Isolation on the board scene: the set, what reaches the kernel and when, and undo.
#include "design/SceneHarness.h"

#include "IcmApiEcad.h"
#include "dg/DPoint3D.h"
#include "qzk/ObjectSelectionItem.h"
#include "qzk/Operation.h"
#include "qzk/ecad/EcadDesignData.h"
#include "qzk/ecad/SelectionItem.h"

#include "qzref/Inspect.h"
#include <set>

namespace qztest {
namespace {

using qzref::Journal;
using Items = std::vector<du::SmartPtr<qzk::SelectionItem>>;
using IsolateSet = qzk::ecad::ItemContainer<qzk::ecad::IsolateItem>;

class IsolationTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        scene_ = MakeBoard(Example("four-layer-board.json"));
        api_ = Api(scene_);
        Settle();
        ASSERT_TRUE(api_->IsDesignLoaded());
        qzref::UndoControl::Clear();
    }

    du::SmartPtr<qzk::SelectionItem> Item(char const* name) const {
        auto const& data = api_->GetDesignData();
        return du::SmartPtr<qzk::SelectionItem>(
            new qzk::ecad::SelectionItem(data, data->FindObject(name, IcmApiEcad::COMPONENT),
                                         nullptr, nullptr, dg::DPoint3D(), 5, 0));
    }
    du::SmartPtr<qzk::Operation> NewOperation() const {
        return du::SmartPtr<qzk::Operation>(
            new qzk::Operation("isolate", du::SmartPtr<qzk::Scene>(scene_), false));
    }
    static std::set<qzk::ecad::AppearanceItem> Keys(Items const& items) {
        std::set<qzk::ecad::AppearanceItem> out;
        for (auto const& item : items) {
            out.insert(qzk::ecad::AppearanceItem(du::DynamicCast<qzk::ecad::SelectionItem>(item)));
        }
        return out;
    }
    std::set<qzk::ecad::AppearanceItem> KernelSet() const {
        auto const list = qzref::Inspect(*scene_).GetIsolated();
        return std::set<qzk::ecad::AppearanceItem>(list.begin(), list.end());
    }
    // The isolate calls the kernel scene heard since mark.
    static std::vector<std::string> KernelCalls(std::size_t mark) {
        return Ops(Journal::Since(mark),
                   {"SetIsolated", "ClearIsolated", "SetViewsDirty", "AddStep", "RecordOperation"});
    }

    du::SmartPtr<qzk::ecad::PCBScene> scene_;
    qzkapp::ecad::PCBScene* api_ = nullptr;
};

TEST_F(IsolationTest, EachMutatorRecordsFirstThenPushesTheWholeSetOnlyWhenItChanged) {
    auto const u1 = Item("U1");
    std::size_t mark = Journal::Size();
    api_->Isolate({u1}, NewOperation());
    EXPECT_EQ(KernelCalls(mark),
              (std::vector<std::string>{
                  "AddStep(\"isolate\", QzkappEcadHlightIsolateOperationStep)",
                  "RecordOperation(\"isolate\")", "SetIsolated([U1])", "SetViewsDirty()"}));
    // The same list again clears and adds: it reaches the kernel again.
    mark = Journal::Size();
    api_->Isolate({u1}, nullptr);
    EXPECT_EQ(KernelCalls(mark),
              (std::vector<std::string>{"SetIsolated([U1])", "SetViewsDirty()"}));

    // Changes that change nothing still record, and call no kernel.
    mark = Journal::Size();
    api_->AddToIsolated({u1}, NewOperation());
    api_->Deisolate({Item("C1")}, NewOperation());
    EXPECT_EQ(Ops(Journal::Since(mark), {"SetIsolated", "ClearIsolated", "SetViewsDirty"}),
              std::vector<std::string>{});
    EXPECT_EQ(qzref::UndoControl::GetUndoCount(), 3u);

    // A foreign item among board items is passed over.
    du::SmartPtr<qzk::SelectionItem> foreign(new qzk::ObjectSelectionItem(scene_));
    api_->AddToIsolated({foreign, Item("R1"), nullptr}, nullptr);
    EXPECT_EQ(api_->GetIsolateCount(), 2u);
    EXPECT_EQ(KernelSet(), Keys({u1, Item("R1")}));
    EXPECT_TRUE(qzref::Inspect(*scene_).IsIsolating());
}

TEST_F(IsolationTest, AnEmptiedSetReachesTheKernelAsAClearAndAnEmptySetStaysQuiet) {
    api_->Isolate({Item("U1"), Item("R1")}, nullptr);
    std::size_t mark = Journal::Size();
    api_->Deisolate({Item("R1")}, nullptr);
    api_->Deisolate({Item("U1")}, nullptr);
    EXPECT_EQ(KernelCalls(mark), (std::vector<std::string>{"SetIsolated([U1])", "SetViewsDirty()",
                                                           "ClearIsolated()", "SetViewsDirty()"}));
    EXPECT_FALSE(qzref::Inspect(*scene_).IsIsolating());

    // Isolating nothing on a set with entries empties it.
    api_->Isolate({Item("C1")}, nullptr);
    mark = Journal::Size();
    api_->Isolate({}, nullptr);
    EXPECT_EQ(KernelCalls(mark), (std::vector<std::string>{"ClearIsolated()", "SetViewsDirty()"}));

    // On the empty set nothing reaches the kernel, but each given operation holds a step.
    mark = Journal::Size();
    auto const op = NewOperation();
    api_->Isolate({}, op);
    api_->ClearAllIsolated(op);
    EXPECT_EQ(Ops(Journal::Since(mark), {"SetIsolated", "ClearIsolated", "SetViewsDirty"}),
              std::vector<std::string>{});
    EXPECT_EQ(qzref::Inspect(*op).GetStepCount(), 2u);

    api_->Isolate({Item("C1")}, nullptr);
    mark = Journal::Size();
    api_->ClearAllIsolated(nullptr);
    EXPECT_EQ(KernelCalls(mark), (std::vector<std::string>{"ClearIsolated()", "SetViewsDirty()"}));
    EXPECT_EQ(api_->GetIsolateCount(), 0u);
}

TEST_F(IsolationTest, UndoSwapsTheWholeFormerSetBackAndRedoSwapsAgain) {
    auto const u1 = Item("U1");
    auto const r1 = Item("R1");
    auto const c1 = Item("C1");
    api_->Isolate({u1}, NewOperation());
    api_->Isolate({r1, c1}, NewOperation());
    ASSERT_EQ(qzref::UndoControl::GetUndoCount(), 2u);

    std::size_t mark = Journal::Size();
    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_EQ(KernelCalls(mark),
              (std::vector<std::string>{"SetIsolated([U1])", "SetViewsDirty()"}));
    EXPECT_EQ(KernelSet(), Keys({u1}));
    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_FALSE(qzref::Inspect(*scene_).IsIsolating());
    EXPECT_EQ(api_->GetIsolateCount(), 0u);

    ASSERT_TRUE(qzref::UndoControl::Redo());
    ASSERT_TRUE(qzref::UndoControl::Redo());
    EXPECT_EQ(KernelSet(), Keys({r1, c1}));
    EXPECT_TRUE(api_->IsIsolated(du::DynamicCast<qzk::ecad::SelectionItem>(c1)));
    EXPECT_FALSE(api_->IsIsolated(du::DynamicCast<qzk::ecad::SelectionItem>(u1)));
    // Undo and redo recorded nothing of their own.
    EXPECT_EQ(qzref::UndoControl::GetUndoCount(), 2u);
}

TEST_F(IsolationTest, SetItemsRestoresWithoutRecordingAndApplyPushesAgain) {
    std::size_t mark = Journal::Size();
    api_->SetItems(IsolateSet(), false);
    EXPECT_TRUE(Journal::Since(mark).empty());

    api_->Isolate({Item("U1")}, nullptr);
    IsolateSet saved;
    api_->GetItems(saved);
    ASSERT_EQ(saved.size(), 1u);
    // The first name stays: the key does not look at it.
    EXPECT_EQ(saved.begin()->name, du::Symbol("U1"));

    mark = Journal::Size();
    api_->SetItems(IsolateSet(), false);
    EXPECT_EQ(KernelCalls(mark), std::vector<std::string>{"ClearIsolated()"});
    api_->SetItems(saved, true);
    api_->ApplyIsolatedList();
    EXPECT_EQ(KernelCalls(mark),
              (std::vector<std::string>{"ClearIsolated()", "SetIsolated([U1])", "SetViewsDirty()",
                                        "SetIsolated([U1])"}));
    EXPECT_EQ(qzref::UndoControl::GetUndoCount(), 0u);
}

} // namespace
} // namespace qztest
