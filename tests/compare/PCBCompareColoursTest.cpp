// The rows of a board compare: the scheme the environment names, the fixed schemes, the two
// setters and their undo, and the user's change of the kernel's compare colours.
#include "compare/CompareHarness.h"

#include "qzk/OperationStep.h"
#include "qzref/PreferencesControl.h"

namespace qztest {
namespace {

using qzref::Messages;
using qzref::UndoControl;

std::string const kFour = Example("four-layer-board.json");
std::string const kSix = Example("six-layer-board.json");

// The colours, mode and flag of a row, without its keys and visibility.
std::string Look(std::string const& row) {
    auto const start = row.find(' ') + 1;
    return row.substr(start, row.size() - start - 2);
}

class PCBCompareColoursTest : public CompareTest {
protected:
    void SetUp() override {
        CompareTest::SetUp();
        qzref::PreferencesControl::SetColorWord("Compare/Ecad_Compare/compare_color_a", 0x01112233);
        qzref::PreferencesControl::SetColorWord("Compare/Ecad_Compare/compare_color_b", 0x01445566);
        qzref::PreferencesControl::SetColorWord("Compare/Ecad_Compare/compare_color_common",
                                                0x01778899);
        HoldInMemory(kFour, kSix);
    }
    void TearDown() override {
        CompareTest::TearDown();
        qzref::PreferencesControl::Clear();
    }
};

TEST_F(PCBCompareColoursTest, TheEnvironmentChoosesTheSchemeOfTheFirstRows) {
    struct Case {
        char const* value;     // null: unset
        char const* paired;    // the look of the paired ground plane row, "" for no rows
        char const* firstOnly; // the look of the four-layer board's own power plane row
    };
    // Colours: kernel 112233 / 445566 / 778899; the ground plane's own 0100A000 and the power
    // plane's own 0100A0A0.
    Case const cases[] = {
        {nullptr, "01112233 01445566 01778899 0 0", "01112233 01445566 01778899 0 0"},
        {"", "01112233 01445566 01778899 0 0", "01112233 01445566 01778899 0 0"},
        {"1", "01112233 01445566 0100A000 0 1", "01112233 01445566 0100A0A0 0 1"},
        {" +2", "0100A000 0100A000 0100A000 0 1", "0100A0A0 0100A0A0 0100A0A0 0 1"},
        {"3", "01112233 01445566 0100A000 6 0", "01112233 01445566 0100A0A0 6 0"},
        {"4", "0100A000 0100A000 0100A000 5 0", "0100A0A0 0100A0A0 0100A0A0 5 0"},
        {"5", "", ""},
        {"3x", "01112233 01445566 01778899 0 0", "01112233 01445566 01778899 0 0"},
        {"2 ", "01112233 01445566 01778899 0 0", "01112233 01445566 01778899 0 0"},
        {"99999999999", "01112233 01445566 01778899 0 0", "01112233 01445566 01778899 0 0"},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.value == nullptr ? "unset" : std::string("\"") + c.value + "\"");
        SetScheme(c.value);
        std::size_t const mark = qzref::Journal::Size();
        auto scene = MakeCompare(kFour, kSix);
        std::vector<std::string> const rows = ApiRows(scene);
        // The kernel was told the same rows, even an empty list.
        EXPECT_TRUE(Contains(qzref::Journal::Since(mark), ".SetColorVisInfo("));
        EXPECT_EQ(KernelRows(scene), rows);
        if (*c.paired == '\0') {
            EXPECT_TRUE(rows.empty());
        } else {
            ASSERT_EQ(rows.size(), 32u);
            EXPECT_EQ(Look(FindRow(rows, "3,33|3,33")), c.paired);
            EXPECT_EQ(Look(FindRow(rows, "4,33|-")), c.firstOnly);
        }
        EndCompare(scene);
    }

    // Read once: a change of the variable doesn't reach the next scene.
    SetScheme("4");
    MakeCompare(kFour, kSix);
    dp::Environment::Set(qzkapp::ecad::kCompareColorSchemeVariable, "1");
    auto later = MakeCompare(kFour, kSix);
    EXPECT_EQ(Look(FindRow(ApiRows(later), "3,33|3,33")), "0100A000 0100A000 0100A000 5 0");
    // ...except after -1, which isn't kept.
    SetScheme("-1");
    EXPECT_EQ(qzkapp::ecad::ReadCompareColorScheme(), -1);
    dp::Environment::Set(qzkapp::ecad::kCompareColorSchemeVariable, "1");
    EXPECT_EQ(qzkapp::ecad::ReadCompareColorScheme(), 1);
}

TEST_F(PCBCompareColoursTest, FixedSchemeUndoneRedoneAndUndoneAgain) {
    auto scene = MakeCompare(kFour, kSix);
    auto* api = Api(scene);
    auto observer = du::MakeCounted<CompareObserver>();
    ASSERT_TRUE(api->RegisterObserver(*observer));
    Messages::PumpUntilIdle();
    observer->Take();
    std::vector<std::string> const loaded = ApiRows(scene);

    auto op = NewOperation(scene);
    api->UseRedBlueGreenDefault(op, qzkapp::ecad::ChangeSourceScene);
    ASSERT_EQ(op->GetSteps().size(), 1u);
    EXPECT_EQ(op->GetSteps()[0]->GetStepType(),
              du::Symbol("QzkappEcadColorVisPCBCompareOperationStep"));
    qzk::RecordOperation(op);
    std::vector<std::string> const green = ApiRows(scene);
    EXPECT_EQ(Look(FindRow(green, "3,33|3,33")), "010000DC 01DC0000 0100DC00 0 0");

    ASSERT_TRUE(UndoControl::Undo());
    EXPECT_EQ(ApiRows(scene), loaded);
    EXPECT_EQ(KernelRows(scene), loaded);
    ASSERT_TRUE(UndoControl::Redo());
    EXPECT_EQ(ApiRows(scene), green);
    ASSERT_TRUE(UndoControl::Undo());
    EXPECT_EQ(ApiRows(scene), loaded);
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer->Take(), (std::vector<std::string>{"SublayerCV 1", "SublayerCV 3",
                                                          "SublayerCV 3", "SublayerCV 3"}));

    // The dim scheme keeps each row's own colour as common.
    api->UseRedBlueDimDefault(nullptr, qzkapp::ecad::ChangeSourceScene);
    EXPECT_EQ(Look(FindRow(ApiRows(scene), "4,33|-")), "010000DC 01DC0000 0100A0A0 0 1");
}

TEST_F(PCBCompareColoursTest, PlainSetterAlwaysPostsTheTwoFamilySetterOnlyWhatDiffers) {
    auto scene = MakeCompare(kFour, kSix);
    auto* api = Api(scene);
    auto observer = du::MakeCounted<CompareObserver>();
    ASSERT_TRUE(api->RegisterObserver(*observer));
    Messages::PumpUntilIdle();
    observer->Take();

    qzk::ecad::CompareColorVisPtrVec rows;
    api->GetColorVisInfo(rows);
    qzk::ecad::GroupCVInfoSet groups(false);
    api->GetGroupColorVisInfo(groups);

    // Equal rows: the plain setter still reaches the kernel and posts.
    auto op = NewOperation(scene);
    api->SetColorVisInfo(rows, op, qzkapp::ecad::ChangeSourceScene);
    EXPECT_EQ(op->GetSteps().size(), 1u);
    // Nothing differs: nothing recorded, nothing posted.
    auto quiet = NewOperation(scene);
    api->SetColorVisInfo(groups, rows, quiet, qzkapp::ecad::ChangeSourceScene);
    EXPECT_TRUE(quiet->GetSteps().empty());

    // The caller's list is not the scene's: changing it afterwards reaches nobody.
    rows[0]->firstColor = 0x01ABCDEF;
    EXPECT_NE(ApiRows(scene)[0], RowText(*rows[0]));

    // Rows alone differ: one step, one event.
    auto changed = NewOperation(scene);
    api->SetColorVisInfo(groups, rows, changed, qzkapp::ecad::ChangeSourceScene);
    ASSERT_EQ(changed->GetSteps().size(), 1u);
    EXPECT_EQ(changed->GetSteps()[0]->GetStepType(),
              du::Symbol("QzkappEcadColorVisPCBCompareOperationStep"));
    EXPECT_EQ(KernelRows(scene)[0], RowText(*rows[0]));

    // A partial list leaves only its rows.
    qzk::ecad::CompareColorVisPtrVec partial;
    partial.push_back(rows[1]);
    api->ApplyColorVisInfo(partial, nullptr);
    EXPECT_EQ(ApiRows(scene), (std::vector<std::string>{RowText(*rows[1])}));
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer->Take(),
              (std::vector<std::string>{"SublayerCV 1", "SublayerCV 1", "SublayerCV 1"}));
}

TEST_F(PCBCompareColoursTest, KernelCompareColoursOverwriteEveryRowWithoutUndo) {
    SetScheme("2");
    auto scene = MakeCompare(kFour, kSix);
    auto* api = Api(scene);
    auto observer = du::MakeCounted<CompareObserver>();
    ASSERT_TRUE(api->RegisterObserver(*observer));
    Messages::PumpUntilIdle();
    observer->Take();
    std::size_t const undoCount = UndoControl::GetUndoCount();

    qzref::Inspect(*scene).ChangeItemColors(
        dg::Color(0x01000011, true), dg::Color(0x01000022, true), dg::Color(0x01000033, true));
    Messages::PumpUntilIdle();
    std::vector<std::string> const rows = ApiRows(scene);
    ASSERT_EQ(rows.size(), 32u);
    for (std::string const& row : rows) {
        EXPECT_NE(row.find(" 01000011 01000022 01000033 0 1 "), std::string::npos) << row;
    }
    EXPECT_EQ(KernelRows(scene), rows);
    EXPECT_EQ(UndoControl::GetUndoCount(), undoCount);
    EXPECT_EQ(observer->Take(), (std::vector<std::string>{"SublayerCV 1"}));

    // Once the scene has ended, a change of the colours reaches nothing.
    EndCompare(scene);
    Messages::PumpUntilIdle();
    qzref::Inspect(*scene).ChangeItemColors(
        dg::Color(0x01000044, true), dg::Color(0x01000044, true), dg::Color(0x01000044, true));
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer->Take(), (std::vector<std::string>{"Detach"}));
    EXPECT_TRUE(Messages::TakeHandlerErrors().empty());
}

} // namespace
} // namespace qztest
