// The merge of two layer stacks into compare rows, on boards built here (to reach the handle and
// identity rules one at a time) and on the sample boards.
#include "compare/BoardCompareMerge.h"
#include "compare/CompareHarness.h"
#include "qzk/ecad/CompareColorVisPtrComparator.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/SublayerPCB.h"

#include <algorithm>
#include <memory>
#include <random>

namespace qztest {
namespace {

using qzk::ecad::EcadPCBData;
using qzk::ecad::SublayerPCB;
using qzkapp::ecad::CompareRowLook;

struct Sub {
    short layer;
    short sublayer;
    unsigned int color;
    uint64 identity;
    bool visible = true;
};

du::SmartPtr<EcadPCBData> Board(std::vector<Sub> const& subs, short bottom, short top = 9) {
    auto board = EcadPCBData::Create(du::Symbol("board"), false);
    for (Sub const& sub : subs) {
        board->AddLayer(sub.layer, "L" + std::to_string(sub.layer));
        std::string const name = std::to_string(sub.layer) + "/" + std::to_string(sub.sublayer);
        board->AddSublayer(std::make_unique<SublayerPCB>(sub.layer, sub.sublayer, name, sub.color,
                                                         sub.visible, sub.identity),
                           name);
    }
    board->SetTopBottom(top, bottom);
    return board;
}

CompareRowLook const kOwnColours{CompareRowLook::kOwnColor, CompareRowLook::kOwnColor,
                                 CompareRowLook::kOwnColor, qzk::ecad::CompareColorVis::eShowAll,
                                 false};

std::vector<std::string> Merge(du::SmartPtr<qzk::ecad::EcadDesignData> const& a,
                               du::SmartPtr<qzk::ecad::EcadDesignData> const& b,
                               CompareRowLook const& look = kOwnColours) {
    qzk::ecad::CompareColorVisPtrVec rows;
    qzkapp::ecad::MergeBoardSublayers(a, b, look, rows);
    return RowTexts(rows);
}

// Only the keys of each row.
std::vector<std::string> Keys(std::vector<std::string> const& rows) {
    std::vector<std::string> out;
    for (std::string const& row : rows) {
        out.push_back(row.substr(0, row.find(' ')));
    }
    return out;
}

class BoardCompareMergeTest : public CompareTest {};

TEST_F(BoardCompareMergeTest, DesignOwnHandlesPairByIdentityAndRegionsOnlyByHandle) {
    // Layer 3 is past the bottom (2) on both: handles from 33 up pair by identity whatever
    // their number; region handles (1000 up) pair only with the same handle.
    auto first = Board({{3, 40, 0x01000001, 7},
                        {3, 1000, 0x01000002, 1},
                        {3, 1001, 0x01000003, 2},
                        {3, 50, 0x01000004, 9}},
                       2);
    auto second =
        Board({{3, 60, 0x01000011, 7}, {3, 1000, 0x01000012, 1}, {3, 1002, 0x01000013, 3}}, 2);
    std::vector<std::string> const rows = Merge(first, second);
    EXPECT_EQ(Keys(rows), (std::vector<std::string>{"3,40|3,60", "3,50|-", "3,1000|3,1000",
                                                    "3,1001|-", "-|3,1002"}));
    // A pair takes the first board's colour; each one-sided row its own board's.
    EXPECT_EQ(FindRow(rows, "3,40|3,60"), "3,40|3,60 01000001 01000001 01000001 0 0 1");
    EXPECT_EQ(FindRow(rows, "-|3,1002"), "-|3,1002 01000013 01000013 01000013 0 0 0");
}

TEST_F(BoardCompareMergeTest, AboveTheBottomLayersLineUpByHandlePastItTheyDoNot) {
    // Bottom 3: layer 2 lies above it on both boards and lines up by layer handle; from layer 3
    // on, fixed handles pair whatever layer each board has them on.
    auto first = Board({{2, 10, 0x01000001, 0}, {3, 10, 0x01000002, 0}, {5, 14, 0x01000003, 0}}, 3);
    auto second =
        Board({{2, 11, 0x01000011, 0}, {4, 10, 0x01000012, 0}, {6, 14, 0x01000013, 0}}, 3);
    EXPECT_EQ(Keys(Merge(first, second)),
              (std::vector<std::string>{"2,10|-", "-|2,11", "3,10|4,10", "5,14|6,14"}));

    // A board with nothing gives one-sided rows of the other, with the empty side at 0, 0.
    auto empty = Board({}, 3);
    std::vector<std::string> const firstOnly = Merge(first, empty);
    EXPECT_EQ(Keys(firstOnly), (std::vector<std::string>{"2,10|-", "3,10|-", "5,14|-"}));
    EXPECT_EQ(Keys(Merge(empty, second)), (std::vector<std::string>{"-|2,11", "-|4,10", "-|6,14"}));
    // Not both boards: nothing at all.
    EXPECT_TRUE(Merge(first, nullptr).empty());
}

TEST_F(BoardCompareMergeTest, GivenColoursStayAndRowsAlreadyThereAreSortedIn) {
    auto first = Board({{3, 20, 0x01000001, 0, false}}, 2);
    auto second = Board({{3, 20, 0x01000011, 0}, {3, 21, 0x01000012, 0}}, 2);
    qzk::ecad::CompareColorVisPtrVec rows;
    rows.push_back(du::MakeCounted<qzk::ecad::SublayerPCBCompareCV>(
        3, 30, 1u, 0, 0, 2u, 3u, qzk::ecad::CompareColorVis::eShowAll, false, true));
    CompareRowLook const look{0x010000DC, CompareRowLook::kOwnColor, 0x0100DC00,
                              qzk::ecad::CompareColorVis::eShowDimmedCommon, true};
    qzkapp::ecad::MergeBoardSublayers(first, second, look, rows);
    EXPECT_EQ(RowTexts(rows),
              (std::vector<std::string>{"3,20|3,20 010000DC 01000001 0100DC00 5 1 0",
                                        "-|3,21 010000DC 01000012 0100DC00 5 1 1",
                                        "3,30|- 00000001 00000002 00000003 0 0 1"}));
}

TEST_F(BoardCompareMergeTest, RowsComeOutInTheKernelComparatorsOrder) {
    // Stacks that share part of their sublayers, in handles and identities that interleave, with
    // rows already there of every kind the comparator ranks: null, a plain record, pairs.
    std::mt19937 random(7);
    std::vector<Sub> a;
    std::vector<Sub> b;
    for (short layer = 2; layer <= 6; ++layer) {
        for (short handle : {10, 11, 17, 33, 34, 35, 36, 1000, 1001}) {
            auto const identity = static_cast<uint64>(random() % 6);
            if (random() % 3 != 0) {
                a.push_back({layer, handle, 0x01000001, identity});
            }
            if (random() % 3 != 0) {
                b.push_back({static_cast<short>(layer + 1), handle, 0x01000002, identity});
            }
        }
    }
    a.push_back({1, 3, 0x01000003, 0});
    b.push_back({1, 3, 0x01000004, 0});
    a.push_back({-2, 40, 0x01000005, 4});
    b.push_back({-2, 41, 0x01000006, 4});
    qzk::ecad::CompareColorVisPtrVec rows;
    rows.push_back(du::MakeCounted<qzk::ecad::SublayerPCBCompareCV>(
        4, 35, 1u, 0, 0, 2u, 3u, qzk::ecad::CompareColorVis::eShowAll, false, true));
    rows.push_back(du::MakeCounted<qzk::ecad::CompareColorVis>(
        1u, 2u, 3u, qzk::ecad::CompareColorVis::eShowAll, false, true));
    rows.push_back(nullptr);
    qzkapp::ecad::MergeBoardSublayers(Board(a, 3), Board(b, 4), kOwnColours, rows);
    ASSERT_GT(rows.size(), 40u);
    EXPECT_EQ(rows.front(), nullptr);
    EXPECT_TRUE(
        std::is_sorted(rows.begin(), rows.end(), qzk::ecad::CompareColorVisPtrComparator()));
    // Sorting again by the comparator itself changes nothing.
    std::vector<std::string> const merged = RowTexts(rows);
    std::stable_sort(rows.begin(), rows.end(), qzk::ecad::CompareColorVisPtrComparator());
    EXPECT_EQ(RowTexts(rows), merged);
}

TEST_F(BoardCompareMergeTest, FourLayerAgainstSixLayerSampleBoards) {
    HoldInMemory(Example("four-layer-board.json"), Example("six-layer-board.json"));
    auto four = SceneTest::Api(scenes_[0])->GetDesignData();
    auto six = SceneTest::Api(scenes_[1])->GetDesignData();
    ASSERT_TRUE(four);
    ASSERT_TRUE(six);

    // The same stack twice: every sublayer a pair.
    std::vector<std::string> const same = Keys(Merge(four, four));
    EXPECT_EQ(same.size(), 20u);
    for (std::string const& key : same) {
        EXPECT_TRUE(IsPair(key)) << key;
    }

    std::vector<std::string> const rows = Merge(four, six);
    ASSERT_EQ(rows.size(), 32u);
    std::vector<std::string> const keys = Keys(rows);
    auto has = [&](char const* key) {
        return std::find(keys.begin(), keys.end(), key) != keys.end();
    };
    // Layers above the bottom and the bottom layer itself line up.
    EXPECT_TRUE(has("-2,33|-2,33"));
    EXPECT_TRUE(has("1,3|1,3"));
    EXPECT_TRUE(has("2,33|2,33"));
    EXPECT_TRUE(has("3,33|3,33"));
    // Pour and split are region sublayers with fixed handles of their own: no pair.
    EXPECT_TRUE(has("3,17|-"));
    EXPECT_TRUE(has("-|3,18"));
    // Past the bottom the signal sublayers pair by identity, across layers.
    EXPECT_TRUE(has("5,33|4,33"));
    EXPECT_TRUE(has("4,33|-"));
    EXPECT_TRUE(has("4,1000|-"));
    EXPECT_TRUE(has("-|6,1001"));
    EXPECT_TRUE(has("-|7,10"));
    // The paired ground plane takes the four-layer board's colour.
    EXPECT_EQ(FindRow(rows, "3,33|3,33"), "3,33|3,33 0100A000 0100A000 0100A000 0 0 1");
    // Hidden by the design, hidden in the row.
    EXPECT_EQ(FindRow(rows, "2,11|2,11").back(), '0');

    std::vector<short> order;
    qzkapp::ecad::MergedDrawOrder(four, six, order);
    EXPECT_EQ(order, (std::vector<short>{1, 2, 3, 4, 5, 6, 7, -2}));
    qzkapp::ecad::MergedDrawOrder(four, nullptr, order);
    EXPECT_TRUE(order.empty());
}

} // namespace
} // namespace qztest
