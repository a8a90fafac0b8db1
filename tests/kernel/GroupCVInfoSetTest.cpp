// Group colours: their order, the two merges, reset and comparison.
#include "qzk/ecad/GroupCVInfoSet.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using qzk::ecad::GroupCVInfo;
using qzk::ecad::GroupCVInfoSet;

GroupCVInfoSet Set(std::vector<GroupCVInfo> const& entries) {
    GroupCVInfoSet set(false);
    for (auto const& entry : entries) {
        set.insert(entry);
    }
    return set;
}

GroupCVInfo const& At(GroupCVInfoSet const& set, char const* name) {
    auto found = set.find(GroupCVInfo(name));
    EXPECT_NE(found, set.end()) << name;
    return *found;
}

std::vector<std::string> Names(GroupCVInfoSet const& set) {
    std::vector<std::string> out;
    for (auto const& entry : set) {
        out.push_back(entry.name.str());
    }
    return out;
}

TEST(GroupCVInfo, NamesOrderAsSignedBytesWithPrefixFirst) {
    auto const set =
        Set({GroupCVInfo("b", 0, true), GroupCVInfo("ab", 0, true), GroupCVInfo("a", 0, true),
             GroupCVInfo("\xC3\xA9", 0, true), GroupCVInfo("B", 0, true)});
    EXPECT_EQ(Names(set), (std::vector<std::string>{"\xC3\xA9", "B", "a", "ab", "b"}));
}

TEST(GroupCVInfoSet, UpdateFromSourceChangesColoursAndAddsNewNames) {
    auto set =
        Set({GroupCVInfo("power", 0x010000FFu, true), GroupCVInfo("gnd", 0x0100FF00u, true)});
    EXPECT_FALSE(set.Update(Set({GroupCVInfo("gnd", 0x0100FF00u, true)})));
    EXPECT_TRUE(set.Update(Set({GroupCVInfo("gnd", 0x0100FF00u, false)})));
    EXPECT_FALSE(At(set, "gnd").visible);

    GroupCVInfo recoloured("power", 0x01DC0000u, true);
    recoloured.groupFlag = true;
    EXPECT_TRUE(set.Update(Set({recoloured, GroupCVInfo("clk", 0x01FFFFFFu, true)})));
    ASSERT_EQ(set.size(), 3u);
    EXPECT_EQ(At(set, "power").color, 0x01DC0000u);
    // The flag and the default belong to the group list, not to a colour update.
    EXPECT_FALSE(At(set, "power").groupFlag);
    EXPECT_EQ(At(set, "power").defaultColor, 0x010000FFu);
    EXPECT_EQ(At(set, "clk").color, 0x01FFFFFFu);

    EXPECT_FALSE(set.Update(set));
}

TEST(GroupCVInfoSet, UpdateWithFreshListKeepsOwnThenPendingThenFreshColours) {
    auto set =
        Set({GroupCVInfo("kept", 0x01000001u, true), GroupCVInfo("dropped", 0x01000002u, true)});
    GroupCVInfo keptFresh("kept", 0x01AAAAAAu, false);
    keptFresh.groupFlag = true;
    auto fresh = Set({keptFresh, GroupCVInfo("pending", 0x01BBBBBBu, false),
                      GroupCVInfo("new", 0x01CCCCCCu, false)});
    auto const pending =
        Set({GroupCVInfo("pending", 0x01000003u, true), GroupCVInfo("kept", 0x01000004u, true),
             GroupCVInfo("absent", 0x01000005u, true)});

    EXPECT_TRUE(set.Update(fresh, pending));
    EXPECT_EQ(Names(set), (std::vector<std::string>{"kept", "new", "pending"}));
    EXPECT_EQ(At(set, "kept").color, 0x01000001u);
    EXPECT_TRUE(At(set, "kept").visible);
    EXPECT_TRUE(At(set, "kept").groupFlag);
    EXPECT_EQ(At(set, "pending").color, 0x01000003u);
    EXPECT_EQ(At(set, "new").color, 0x01CCCCCCu);
    EXPECT_FALSE(At(set, "new").visible);
    EXPECT_EQ(fresh.size(), 3u);

    EXPECT_FALSE(set.Update(fresh, pending));

    // Back to the host's colours for every group.
    set.ResetToDefault();
    EXPECT_EQ(At(set, "kept").color, 0x01AAAAAAu);
    EXPECT_FALSE(At(set, "kept").visible);
    EXPECT_EQ(At(set, "pending").color, 0x01BBBBBBu);
}

TEST(GroupCVInfoSet, SetInfoAndCopyCarryEntriesButSetInfoKeepsTheFlag) {
    GroupCVInfoSet schematic(true);
    GroupCVInfoSet board(false);
    board.insert(GroupCVInfo("a", 1u, true));
    schematic.SetInfo(board);
    EXPECT_TRUE(schematic.IsSchematic());
    EXPECT_EQ(schematic.size(), 1u);
    GroupCVInfoSet const copy(schematic);
    EXPECT_TRUE(copy.IsSchematic());
    EXPECT_FALSE(GroupCVInfo::AreDifferent(copy, board));
}

TEST(GroupCVInfo, AreDifferentSeesNamesColoursVisibilityAndFlag) {
    auto const base = Set({GroupCVInfo("a", 1u, true), GroupCVInfo("b", 2u, true)});
    EXPECT_FALSE(GroupCVInfo::AreDifferent(
        base, Set({GroupCVInfo("b", 2u, true), GroupCVInfo("a", 1u, true)})));
    EXPECT_TRUE(GroupCVInfo::AreDifferent(base, Set({GroupCVInfo("a", 1u, true)})));
    EXPECT_TRUE(GroupCVInfo::AreDifferent(
        base, Set({GroupCVInfo("a", 1u, true), GroupCVInfo("c", 2u, true)})));
    EXPECT_TRUE(GroupCVInfo::AreDifferent(
        base, Set({GroupCVInfo("a", 1u, true), GroupCVInfo("b", 3u, true)})));
    EXPECT_TRUE(GroupCVInfo::AreDifferent(
        base, Set({GroupCVInfo("a", 1u, false), GroupCVInfo("b", 2u, true)})));
    GroupCVInfo flagged("a", 1u, true);
    flagged.groupFlag = true;
    EXPECT_TRUE(GroupCVInfo::AreDifferent(base, Set({flagged, GroupCVInfo("b", 2u, true)})));
    // Defaults are bookkeeping, not something the user sees.
    GroupCVInfo recoloured("a", 9u, true);
    recoloured.color = 1u;
    EXPECT_FALSE(GroupCVInfo::AreDifferent(base, Set({recoloured, GroupCVInfo("b", 2u, true)})));
}

} // namespace
