// Item keys and the item sets that the scenes keep.
#include "qzk/ecad/ItemContainer.h"
#include "qzk/ecad/SelectionItem.h"

#include <gtest/gtest.h>

namespace {

using qzk::ecad::AppearanceItem;
using qzk::ecad::HighlightItem;
using qzk::ecad::IsolateItem;
using qzk::ecad::ItemContainer;

int objects[4];
IcmApiEcad* const sessionA = reinterpret_cast<IcmApiEcad*>(&objects[2]);
IcmApiEcad* const sessionB = reinterpret_cast<IcmApiEcad*>(&objects[3]);

TEST(AppearanceItem, KeyIsObjectHandlesAndSessionOnly) {
    HighlightItem const stored(&objects[0], 4, 14, sessionA, du::Symbol("U1"), 0x010000FFu, true);
    HighlightItem const key(&objects[0], 4, 14, sessionA);
    EXPECT_TRUE(stored == key);
    EXPECT_FALSE(stored < key);
    EXPECT_FALSE(key < stored);

    HighlightItem const otherSecond(&objects[0], 4, 15, sessionA);
    HighlightItem const otherFirst(&objects[0], 5, 14, sessionA);
    HighlightItem const otherSession(&objects[0], 4, 14, sessionB);
    HighlightItem const otherObject(&objects[1], 4, 14, sessionA);
    for (HighlightItem const* other : {&otherSecond, &otherFirst, &otherSession, &otherObject}) {
        EXPECT_FALSE(stored == *other);
        EXPECT_NE(stored < *other, *other < stored);
    }
    EXPECT_TRUE(AppearanceItem::s_emptyAppItem.IsEmpty());
    EXPECT_TRUE(AppearanceItem::s_emptyAppItem == AppearanceItem());
}

TEST(ItemContainer, KeysDifferingOnlyInNameColourOrFontedAreOneEntry) {
    ItemContainer<HighlightItem> highlights;
    EXPECT_TRUE(highlights
                    .insert(HighlightItem(&objects[0], 1, 2, sessionA, du::Symbol("R1"),
                                          0x010000FFu, false))
                    .second);
    EXPECT_FALSE(highlights
                     .insert(HighlightItem(&objects[0], 1, 2, sessionA, du::Symbol("other"),
                                           0x01DC0000u, true))
                     .second);
    ASSERT_EQ(highlights.size(), 1u);
    // The entry that was there first stays, with its own name and colour.
    EXPECT_EQ(highlights.begin()->name, du::Symbol("R1"));
    EXPECT_EQ(highlights.begin()->color, 0x010000FFu);

    // A plain AppearanceItem finds the stored entry, as a search key of the layer does.
    auto found = highlights.find(AppearanceItem(&objects[0], 1, 2, sessionA));
    ASSERT_NE(found, highlights.end());
    EXPECT_FALSE(found->fonted);
    EXPECT_EQ(highlights.erase(HighlightItem(&objects[0], 1, 2, sessionA)), 1u);
    EXPECT_TRUE(highlights.empty());
}

TEST(ItemContainer, CopyEmptiesTheTargetFirst) {
    ItemContainer<IsolateItem> source;
    source.insert(IsolateItem(&objects[0], 0, 0, sessionA, du::Symbol("new name")));
    source.insert(IsolateItem(&objects[1], 0, 0, sessionA, du::Symbol("C1")));

    ItemContainer<IsolateItem> target;
    target.insert(IsolateItem(&objects[0], 0, 0, sessionA, du::Symbol("old name")));
    target.insert(IsolateItem(&objects[2], 0, 0, sessionA, du::Symbol("gone")));

    target = source;
    ASSERT_EQ(target.size(), 2u);
    EXPECT_FALSE(target.contains(AppearanceItem(&objects[2], 0, 0, sessionA)));
    EXPECT_EQ(target.find(AppearanceItem(&objects[0], 0, 0, sessionA))->name,
              du::Symbol("new name"));

    auto const& alias = target;
    target = alias;
    EXPECT_EQ(target.size(), 2u);

    ItemContainer<IsolateItem> const copy(source);
    EXPECT_EQ(copy.size(), 2u);
    source.clear();
    EXPECT_EQ(copy.size(), 2u);
}

TEST(AppearanceItem, AssigningAnItemKeepsTheDerivedFields) {
    HighlightItem item(&objects[0], 1, 1, sessionA, du::Symbol("kept"), 0x01123456u, true);
    item = du::SmartPtr<qzk::ecad::SelectionItem>();
    EXPECT_TRUE(item.IsEmpty());
    EXPECT_EQ(item.firstHandle, 0);
    EXPECT_EQ(item.name, du::Symbol("kept"));
    EXPECT_EQ(item.color, 0x01123456u);
}

} // namespace
