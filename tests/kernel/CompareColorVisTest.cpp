// Compare colour lists: deep clones, comparison and the merged sublayer order.
#include "qzk/ecad/CompareColorVisPtrComparator.h"
#include "qzk/ecad/CompareColorVisPtrVec.h"
#include "qzk/ecad/SublayerPCBCompareCV.h"
#include "qzref/RecordFmt.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using qzk::ecad::CompareColorVis;
using qzk::ecad::CompareColorVisPtrVec;
using qzk::ecad::SublayerPCBCompareCV;

du::SmartPtr<CompareColorVis> Row(short l1, short s1, short l2, short s2) {
    return du::SmartPtr<CompareColorVis>(
        new SublayerPCBCompareCV(l1, s1, 0x010000DCu, l2, s2, 0x01DC0000u, 0xFFFFFFFFu,
                                 CompareColorVis::eShowAll, true, true));
}

TEST(CompareColorVisPtrVec, CloneIsDeepAndKeepsTheDynamicType) {
    CompareColorVisPtrVec source;
    source.push_back(Row(4, 14, 4, 14));
    source.push_back(du::SmartPtr<CompareColorVis>(
        new CompareColorVis(1u, 2u, 3u, CompareColorVis::eShowDimmedCommon, false, true)));
    source.push_back(nullptr);

    CompareColorVisPtrVec target;
    target.push_back(Row(9, 9, 9, 9));
    source.Clone(target);
    ASSERT_EQ(target.size(), 3u);
    EXPECT_FALSE(CompareColorVisPtrVec::AreDifferent(source, target));
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_NE(target[i].Get(), source[i].Get());
        EXPECT_EQ(target[i]->GetReferenceCount(), 1);
    }
    EXPECT_FALSE(target[2]);
    auto const* pair = dynamic_cast<SublayerPCBCompareCV const*>(target[0].Get());
    ASSERT_NE(pair, nullptr);
    EXPECT_EQ(pair->secondSublayer.sublayer, 14);
    EXPECT_EQ(dynamic_cast<SublayerPCBCompareCV const*>(target[1].Get()), nullptr);

    target[0]->visible = false;
    EXPECT_TRUE(source[0]->visible);
    EXPECT_TRUE(CompareColorVisPtrVec::AreDifferent(source, target));

    // A plain copy shares the entries; cloning into itself unshares them.
    CompareColorVisPtrVec shared = source;
    EXPECT_EQ(shared[0].Get(), source[0].Get());
    shared.Clone(shared);
    EXPECT_NE(shared[0].Get(), source[0].Get());
    EXPECT_FALSE(CompareColorVisPtrVec::AreDifferent(shared, source));
}

TEST(CompareColorVisPtrVec, AreDifferentLooksAtEveryFieldAndThePair) {
    auto differs = [](auto change) {
        CompareColorVisPtrVec a;
        a.push_back(Row(4, 14, 4, 14));
        CompareColorVisPtrVec b;
        a.Clone(b);
        change(*static_cast<SublayerPCBCompareCV*>(b[0].Get()));
        return CompareColorVisPtrVec::AreDifferent(a, b);
    };
    EXPECT_FALSE(differs([](SublayerPCBCompareCV&) {}));
    EXPECT_TRUE(differs([](SublayerPCBCompareCV& r) { r.firstColor = 0; }));
    EXPECT_TRUE(differs([](SublayerPCBCompareCV& r) { r.secondColor = 0; }));
    EXPECT_TRUE(differs([](SublayerPCBCompareCV& r) { r.commonColor = 0; }));
    EXPECT_TRUE(differs(
        [](SublayerPCBCompareCV& r) { r.showMode = CompareColorVis::eShowColoredDifferences; }));
    EXPECT_TRUE(differs([](SublayerPCBCompareCV& r) { r.flag = false; }));
    EXPECT_TRUE(differs([](SublayerPCBCompareCV& r) { r.secondSublayer.layer = 0; }));

    CompareColorVisPtrVec one;
    one.push_back(Row(4, 14, 4, 14));
    CompareColorVisPtrVec withNull;
    withNull.push_back(nullptr);
    EXPECT_TRUE(CompareColorVisPtrVec::AreDifferent(one, withNull));
    EXPECT_TRUE(CompareColorVisPtrVec::AreDifferent(one, CompareColorVisPtrVec()));

    CompareColorVisPtrVec plain;
    plain.push_back(du::SmartPtr<CompareColorVis>(new CompareColorVis(
        0x010000DCu, 0x01DC0000u, 0xFFFFFFFFu, CompareColorVis::eShowAll, true, true)));
    EXPECT_TRUE(CompareColorVisPtrVec::AreDifferent(one, plain));
}

TEST(CompareColorVisPtrComparator, SortsByTheShownSublayerWithSecondOnlyBeforePaired) {
    CompareColorVisPtrVec rows;
    rows.push_back(Row(4, 15, 0, 0));
    rows.push_back(Row(4, 14, 4, 14));
    rows.push_back(Row(0, 0, 4, 14));
    rows.push_back(Row(2, 33, 2, 40));
    rows.push_back(Row(0, 0, 3, 10));
    std::sort(rows.begin(), rows.end(), qzk::ecad::CompareColorVisPtrComparator());
    std::vector<std::string> order;
    for (auto const& row : rows) {
        auto const& pair = dynamic_cast<SublayerPCBCompareCV const&>(*row);
        order.push_back(std::to_string(pair.firstSublayer.layer) + "," +
                        std::to_string(pair.firstSublayer.sublayer) + "/" +
                        std::to_string(pair.secondSublayer.layer) + "," +
                        std::to_string(pair.secondSublayer.sublayer));
    }
    EXPECT_EQ(order, (std::vector<std::string>{"2,33/2,40", "0,0/3,10", "0,0/4,14", "4,14/4,14",
                                               "4,15/0,0"}));

    qzk::ecad::CompareColorVisPtrComparator const less;
    du::SmartPtr<CompareColorVis> const plain(
        new CompareColorVis(0, 0, 0, CompareColorVis::eShowAll, false, false));
    EXPECT_TRUE(less(nullptr, plain));
    EXPECT_TRUE(less(plain, rows[0]));
    EXPECT_FALSE(less(rows[0], plain));
    EXPECT_FALSE(less(plain, plain));
    EXPECT_FALSE(less(rows[1], rows[1]));
}

TEST(CompareColorVis, JournalFormShowsPairColoursAndMode) {
    EXPECT_EQ(qzref::Fmt(*Row(4, 14, 0, 0)),
              "(4,14)/(0,0){0x010000DC 0x01DC0000 0xFFFFFFFF mode0 flag visible}");
}

} // namespace
