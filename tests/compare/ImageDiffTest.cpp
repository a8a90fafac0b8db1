// Image difference cells and grids, alike in every compare scene: overlays of the kernel scene
// the host hands in, grids remembered under the host's number, no event and no undo.
#include "compare/SchematicCompareHarness.h"

#include "qz2d/ecad/Design.h"
#include "qzk/ecad/Overlay.h"
#include "qzref/OverlayInspector.h"

#include <functional>

namespace qztest {
namespace {

using qzref::Journal;
using qzref::Messages;
using qzref::UndoControl;

using Picture = du::SmartPtr<qz2d::ecad::Design>;

Picture MakePicture(char const* name) {
    return qz2d::ecad::Design::Create(name, 2, 2, {}, 0x010000FF);
}

dg::Color Word(unsigned int word) {
    return dg::Color(word, true);
}

// The kernel's lines since mark that name overlays, without their receiver.
std::vector<std::string> OverlayCalls(std::size_t mark) {
    std::vector<std::string> out;
    for (std::string const& line : Journal::Since(mark)) {
        for (char const* op :
             {"CreateOverlay(", "FindOverlay(", "RemoveOverlay(", "SetColor(", "SetVisibility("}) {
            auto const at = line.find(std::string(".") + op);
            if (at != std::string::npos) {
                out.push_back(line.substr(at + 1));
            }
        }
    }
    return out;
}

class ImageDiffTest : public SchematicCompareTest {
protected:
    // Runs check on a board compare and on a schematic compare, each freshly loaded.
    void InEveryCompareScene(
        std::function<void(qzkapp::ecad::CompareScene&, qzk::ecad::BaseScene&)> const& check) {
        {
            SCOPED_TRACE("board compare");
            du::SmartPtr<qzk::Scene> made = factory_->CreateScene(
                qzk::World::GetWorld(), qzk::Instance::Create("first"),
                qzk::ViewableSource::Create(du::Symbol(Example("four-layer-board.json"))),
                qzk::Instance::Create("second"),
                qzk::ViewableSource::Create(du::Symbol(Example("six-layer-board.json"))), 159);
            auto board = du::DynamicCast<qzk::ecad::BaseScene>(made);
            ASSERT_TRUE(board);
            Settle();
            auto* api = dynamic_cast<qzkapp::ecad::CompareScene*>(board->GetApiScene());
            ASSERT_NE(api, nullptr);
            check(*api, *board);
            qzref::Inspect(*board).DestroyScene();
            Messages::PumpUntilIdle();
        }
        {
            SCOPED_TRACE("schematic compare");
            Kernel scene = MakeSchematicCompare(Example("three-sheet-schematic.json"),
                                                Example("three-sheet-schematic-rev-b.json"));
            ASSERT_TRUE(scene);
            Settle();
            check(*Api(scene), *scene);
        }
    }

    static du::SmartPtr<qzk::ecad::Overlay> Find(qzk::ecad::BaseScene& scene, uint64 id) {
        for (auto const& overlay : qzref::Inspect(scene).GetOverlays()) {
            if (overlay->GetId() == id) {
                return overlay;
            }
        }
        return nullptr;
    }
    static bool Shown(qzk::ecad::BaseScene& scene, uint64 id) {
        auto const overlay = Find(scene, id);
        return overlay && qzref::Inspect(*overlay).IsVisible();
    }
};

TEST_F(ImageDiffTest, CellsAreOverlaysInModeOneThatTheMapNeverHolds) {
    InEveryCompareScene([](qzkapp::ecad::CompareScene& api, qzk::ecad::BaseScene& scene) {
        std::size_t const undoCount = UndoControl::GetUndoCount();
        std::size_t const mark = Journal::Size();
        api.AddImageDiffCellOrGrid(41, MakePicture("cell"), Word(0x010000FF), "cell A", 7, false, 3,
                                   false);
        auto const cell = Find(scene, 41);
        ASSERT_TRUE(cell);
        auto const seen = qzref::Inspect(*cell);
        EXPECT_EQ(cell->overlayKind, 1u);
        EXPECT_FALSE(cell->kindOneFlag);
        EXPECT_EQ(seen.GetColorWord(), 0x010000FFu);
        EXPECT_FALSE(seen.IsVisible());
        EXPECT_EQ(seen.GetName(), "cell A");
        EXPECT_EQ(seen.GetParameter(), 7u);
        EXPECT_FALSE(seen.GetPictureFlag());
        // Whatever number it was given, a cell is no grid.
        EXPECT_FALSE(api.IsGridExist(3));

        api.SetCellColor(41, Word(0x0100FF00));
        api.SetImageDiffCellVisibility(41, true);
        EXPECT_EQ(qzref::Inspect(*cell).GetColorWord(), 0x0100FF00u);
        EXPECT_TRUE(Shown(scene, 41));
        std::string const created = "CreateOverlay(\"cell\", 41, false, 0x010000FF, 1, "
                                    "[1 0 0 0 1 0 0 0 1], 7, \"cell A\", false)";
        EXPECT_EQ(OverlayCalls(mark),
                  (std::vector<std::string>{created, "FindOverlay(41)", "SetColor(0x0100FF00)",
                                            "FindOverlay(41)", "SetVisibility(true)"}));

        // Id 0 is none for removal and visibility, and is looked up for the colour.
        std::size_t const zero = Journal::Size();
        api.RemoveImageCell(0);
        api.SetImageDiffCellVisibility(0, false);
        api.SetCellColor(0, Word(0x01FFFFFF));
        EXPECT_EQ(OverlayCalls(zero), (std::vector<std::string>{"FindOverlay(0)"}));

        api.RemoveImageCell(41);
        EXPECT_FALSE(Find(scene, 41));
        // An unknown id is passed over.
        api.SetCellColor(41, Word(0x01FFFFFF));
        api.SetImageDiffCellVisibility(41, true);

        // Nothing of it is posted or can be undone.
        EXPECT_FALSE(Contains(Journal::Since(mark), ".PostObservableEvent("));
        EXPECT_EQ(UndoControl::GetUndoCount(), undoCount);
    });
}

TEST_F(ImageDiffTest, GridsAreRememberedUnderTheHostsNumberAndTheFirstOneStays) {
    InEveryCompareScene([](qzkapp::ecad::CompareScene& api, qzk::ecad::BaseScene& scene) {
        api.AddImageDiffCellOrGrid(10, MakePicture("grid"), Word(0x01000011), "grid one", 0, true,
                                   2, true);
        EXPECT_TRUE(api.IsGridExist(2));
        EXPECT_TRUE(Find(scene, 10)->kindOneFlag);
        // The grid takes its own colour, not the grid colour.
        EXPECT_EQ(qzref::Inspect(*Find(scene, 10)).GetColorWord(), 0x01000011u);
        // A second grid under the same number lives on without an entry.
        api.AddImageDiffCellOrGrid(11, MakePicture("grid"), Word(0x01000022), "grid two", 0, true,
                                   2, true);
        EXPECT_TRUE(api.IsGridExist(2));
        api.ToggleImageGrid(2, false);
        EXPECT_FALSE(Shown(scene, 10));
        EXPECT_TRUE(Shown(scene, 11));

        // Hidden together, and one shown again by its number.
        api.AddImageDiffCellOrGrid(12, MakePicture("grid"), Word(0x01000033), "grid three", 0, true,
                                   5, true);
        api.HideImageGrids();
        EXPECT_FALSE(Shown(scene, 12));
        EXPECT_TRUE(Shown(scene, 11));
        EXPECT_TRUE(api.GetGridVisibilityState());
        api.ToggleImageGrid(5, true);
        EXPECT_TRUE(Shown(scene, 12));

        // The grid colour goes to the mapped grids only, and is kept.
        api.SetImageGridColor(Word(0x01ABCDEF));
        EXPECT_EQ(api.GetImageGridColor().GetAsHexUI(), 0x01ABCDEFu);
        EXPECT_EQ(qzref::Inspect(*Find(scene, 10)).GetColorWord(), 0x01ABCDEFu);
        EXPECT_EQ(qzref::Inspect(*Find(scene, 12)).GetColorWord(), 0x01ABCDEFu);
        EXPECT_EQ(qzref::Inspect(*Find(scene, 11)).GetColorWord(), 0x01000022u);

        // A mapped grid removed as a cell keeps its entry, and its number then finds nothing.
        api.RemoveImageCell(12);
        EXPECT_FALSE(Find(scene, 12));
        EXPECT_TRUE(api.IsGridExist(5));
        std::size_t const mark = Journal::Size();
        api.ToggleImageGrid(5, true);
        EXPECT_EQ(OverlayCalls(mark), (std::vector<std::string>{"FindOverlay(12)"}));

        // An unknown number is entered with the id 0, and its removal asks for the overlay 0.
        EXPECT_FALSE(api.IsGridExist(9));
        api.ToggleImageGrid(9, true);
        EXPECT_TRUE(api.IsGridExist(9));
        std::size_t const removal = Journal::Size();
        api.RemoveImageGrids();
        EXPECT_EQ(OverlayCalls(removal),
                  (std::vector<std::string>{"RemoveOverlay(10)", "RemoveOverlay(12)",
                                            "RemoveOverlay(0)"}));
        EXPECT_FALSE(api.IsGridExist(2));
        EXPECT_FALSE(api.IsGridExist(9));
        EXPECT_FALSE(Find(scene, 10));
        // The unmapped second grid is left to the host.
        EXPECT_TRUE(Find(scene, 11));
        // The number is free again: a new grid takes it.
        api.AddImageDiffCellOrGrid(13, MakePicture("grid"), Word(0x01000044), "grid four", 0, true,
                                   2, false);
        api.ToggleImageGrid(2, true);
        EXPECT_TRUE(Shown(scene, 13));
    });
}

TEST_F(ImageDiffTest, GridColourAndVisibilityStateStartAsGivenAndTouchNoOverlay) {
    InEveryCompareScene([](qzkapp::ecad::CompareScene& api, qzk::ecad::BaseScene& /*scene*/) {
        EXPECT_EQ(api.GetImageGridColor().GetAsHexUI(), 0x01386FD5u);
        EXPECT_TRUE(api.GetGridVisibilityState());
        std::size_t const mark = Journal::Size();
        api.ToggleGridVisibilityState();
        EXPECT_FALSE(api.GetGridVisibilityState());
        api.ToggleGridVisibilityState();
        EXPECT_TRUE(api.GetGridVisibilityState());
        // With no grid, the colour is only stored.
        api.SetImageGridColor(Word(0x01123456));
        EXPECT_EQ(api.GetImageGridColor().GetAsHexUI(), 0x01123456u);
        EXPECT_TRUE(OverlayCalls(mark).empty());
    });
}

} // namespace
} // namespace qztest
