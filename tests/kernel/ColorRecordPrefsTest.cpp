// Colour records that read the user's preferences: annotation and sublayer defaults, and the
// overlay placement.
#include "qzk/ecad/AnnoCVInfo.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/OverlayPrefs.h"
#include "qzk/ecad/PrefKeys.h"
#include "qzk/ecad/SublayerEcad.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"
#include "qzref/Platform.h"
#include "qzref/PreferencesControl.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using qzk::ecad::AnnoCVInfo;
using qzk::ecad::SublayerPCB_CV;
using qzk::ecad::SublayerPCB_CVSet;
using qzk::ecad::SublayerPCBBase;

class ColorRecordPrefs : public ::testing::Test {
protected:
    qzref::ScopedPlatform platform;
};

std::vector<AnnoCVInfo> List() {
    return {AnnoCVInfo(7, L"top", 0x010000FFu, true, AnnoCVInfo::eOverlay),
            AnnoCVInfo(9, L"image", 0x01FFFFFFu, false, AnnoCVInfo::eImage)};
}

TEST(AnnoCVInfo, AssignCVAttrsMatchesByIdAndLeavesTheRest) {
    auto target = List();
    std::vector<AnnoCVInfo> source{
        AnnoCVInfo(9, L"renamed", 0x01DC0000u, true, AnnoCVInfo::eOverlay),
        AnnoCVInfo(42, L"unknown", 0x01000000u, false, AnnoCVInfo::eImage)};
    EXPECT_TRUE(AnnoCVInfo::AreDifferent(target, source));
    AnnoCVInfo::AssignCVAttrs(target, source);
    ASSERT_EQ(target.size(), 2u);
    EXPECT_EQ(target[0].color, 0x010000FFu);
    EXPECT_TRUE(target[0].visible);
    EXPECT_EQ(target[1].id, 9u);
    EXPECT_EQ(target[1].name, L"image");
    EXPECT_EQ(target[1].type, AnnoCVInfo::eImage);
    EXPECT_EQ(target[1].color, 0x01DC0000u);
    EXPECT_TRUE(target[1].visible);
    EXPECT_FALSE(AnnoCVInfo::AreDifferent(target, source));
}

TEST(AnnoCVInfo, AreDifferentSeesOnlyColourAndVisibilityOfMatchingIds) {
    auto const base = List();
    auto reordered = List();
    std::swap(reordered[0], reordered[1]);
    reordered[0].name = L"another name";
    EXPECT_FALSE(AnnoCVInfo::AreDifferent(base, reordered));
    EXPECT_FALSE(AnnoCVInfo::AreDifferent(base, {}));
    auto hidden = List();
    hidden[0].visible = false;
    EXPECT_TRUE(AnnoCVInfo::AreDifferent(base, hidden));
    auto recoloured = List();
    recoloured[1].color = 0x01000001u;
    EXPECT_TRUE(AnnoCVInfo::AreDifferent(base, recoloured));
}

TEST_F(ColorRecordPrefs, AnnotationDefaultsLeavePresetsWhenNoPreferenceExists) {
    unsigned int color = 0x01FFFFFFu;
    bool visible = true;
    AnnoCVInfo::GetDefaultColorVis(qzk::ecad::PrefKeys::IMAGES(), color, visible);
    EXPECT_EQ(color, 0x01FFFFFFu);
    EXPECT_TRUE(visible);

    // Each half is read on its own.
    qzref::PreferencesControl::SetBool(du::Symbol("Ecad/Images/visible"), false);
    AnnoCVInfo::GetDefaultColorVis(qzk::ecad::PrefKeys::IMAGES(), color, visible);
    EXPECT_EQ(color, 0x01FFFFFFu);
    EXPECT_FALSE(visible);

    qzref::PreferencesControl::SetColorWord(du::Symbol("Ecad/Overlays/color"), 0x01DC0000u);
    color = 0x1FFFFFFu;
    visible = true;
    AnnoCVInfo::GetDefaultColorVis(qzk::ecad::PrefKeys::OVERLAYS(), color, visible);
    EXPECT_EQ(color, 0x01DC0000u);
    EXPECT_TRUE(visible);
}

TEST(AnnoCVInfoWithoutWorld, DefaultsLeavePresets) {
    unsigned int color = 0x01123456u;
    bool visible = false;
    AnnoCVInfo::GetDefaultColorVis(qzk::ecad::PrefKeys::OVERLAYS(), color, visible);
    EXPECT_EQ(color, 0x01123456u);
    EXPECT_FALSE(visible);
}

du::SmartPtr<qzk::ecad::EcadPCBData> Board() {
    auto board = qzk::ecad::EcadPCBData::Create(du::Symbol("board"), false);
    board->AddLayer(4, "Top");
    board->AddSublayer(std::make_unique<qzk::ecad::SublayerPCB>(4, 14, "Pads", 0x010000FFu, true),
                       "pads");
    board->AddSublayer(std::make_unique<qzk::ecad::SublayerPCB>(4, 15, "Silk", 0x0100FF00u, false),
                       "silk");
    board->AddSublayer(std::make_unique<qzk::ecad::SublayerPCB>(4, 1500, "Room", 0x01FF0000u, true),
                       "room");
    return board;
}

TEST_F(ColorRecordPrefs, SublayerPreferencesAreReadIntoASet) {
    SublayerPCB_CVSet prefs;
    prefs.insert(SublayerPCB_CV(1, 1, 0, true));
    SublayerPCB_CV::GetPrefs(prefs);
    EXPECT_TRUE(prefs.empty());

    qzref::PreferencesControl::SetColorWord(du::Symbol("Ecad/PCB/sublayer/4/14/color"),
                                            0x01DC0000u);
    qzref::PreferencesControl::SetBool(du::Symbol("Ecad/PCB/sublayer/-2/3/visible"), false);
    SublayerPCB_CV::GetPrefs(prefs);
    ASSERT_EQ(prefs.size(), 2u);
    auto const pads = prefs.find(SublayerPCB_CV(SublayerPCBBase(4, 14)));
    ASSERT_NE(pads, prefs.end());
    EXPECT_EQ(pads->color, 0x01DC0000u);
    auto const misc = prefs.find(SublayerPCB_CV(SublayerPCBBase(-2, 3)));
    ASSERT_NE(misc, prefs.end());
    EXPECT_FALSE(misc->visible);
    EXPECT_EQ(misc->color, 0x01000000u);
}

TEST(SublayerPCB_CV, DefaultsComeFromPresetsThenBoardThenPreferences) {
    auto const board = Board();
    SublayerPCB_CVSet prefs;
    prefs.insert(SublayerPCB_CV(4, 14, 0x01DC0000u, false));

    auto fill = [&](short layer, short sublayer, bool overlayData, bool factory) {
        SublayerPCB_CV cv(SublayerPCBBase(layer, sublayer));
        cv.color = 0x01ABCDEFu;
        cv.visible = true;
        SublayerPCB_CV::GetDefaultColorVis(board, prefs, cv, overlayData, factory);
        return cv;
    };
    auto const preferred = fill(4, 14, false, false);
    EXPECT_EQ(preferred.color, 0x01DC0000u);
    EXPECT_FALSE(preferred.visible);
    EXPECT_EQ(fill(4, 14, true, false).color, 0x010000FFu);
    EXPECT_EQ(fill(4, 14, false, true).color, 0x010000FFu);
    EXPECT_TRUE(fill(4, 14, false, true).visible);

    auto const silk = fill(4, 15, false, false);
    EXPECT_EQ(silk.color, 0x0100FF00u);
    EXPECT_FALSE(silk.visible);
    // A region sublayer starts hidden although the board says shown.
    auto const room = fill(4, 1500, false, false);
    EXPECT_EQ(room.color, 0x01FF0000u);
    EXPECT_FALSE(room.visible);

    auto const unknown = fill(7, 7, false, false);
    EXPECT_EQ(unknown.color, 0x01ABCDEFu);
    EXPECT_TRUE(unknown.visible);

    SublayerPCB_CV none(SublayerPCBBase(4, 15));
    none.color = 0x01000042u;
    SublayerPCB_CV::GetDefaultColorVis(nullptr, SublayerPCB_CVSet(), none, false, false);
    EXPECT_EQ(none.color, 0x01000042u);
}

TEST(SublayerPCB_CV, AreDifferentSeesKeysColoursAndVisibility) {
    SublayerPCB_CVSet a;
    a.insert(SublayerPCB_CV(4, 14, 1u, true));
    a.insert(SublayerPCB_CV(4, 15, 2u, true));
    SublayerPCB_CVSet b = a;
    EXPECT_FALSE(SublayerPCB_CV::AreDifferent(a, b));
    b.erase(SublayerPCB_CV(SublayerPCBBase(4, 15)));
    EXPECT_TRUE(SublayerPCB_CV::AreDifferent(a, b));
    b.insert(SublayerPCB_CV(4, 16, 2u, true));
    EXPECT_TRUE(SublayerPCB_CV::AreDifferent(a, b));
    SublayerPCB_CVSet c;
    c.insert(SublayerPCB_CV(4, 14, 1u, true));
    c.insert(SublayerPCB_CV(4, 15, 2u, false));
    EXPECT_TRUE(SublayerPCB_CV::AreDifferent(a, c));
}

TEST_F(ColorRecordPrefs, SchematicDefaultsChangeOnlyAtARefill) {
    qzk::ecad::SublayerEcad::RefillColorVisInfo();
    qzk::ecad::SublayerEcad before(12);
    qzk::ecad::SublayerEcad::GetDefaultSchematicColorVis(before);
    EXPECT_TRUE(before.IsVisible());

    std::string node;
    qzk::ecad::SublayerEcad::GetNodeName(node, 12, 0, false);
    EXPECT_EQ(node, "Ecad/Schematic/sublayer/12");
    qzref::PreferencesControl::SetColorWord(du::Symbol(node + "/color"), 0x01DC0000u);
    qzref::PreferencesControl::SetBool(du::Symbol(node + "/visible"), false);

    qzk::ecad::SublayerEcad stale(12);
    qzk::ecad::SublayerEcad::GetDefaultSchematicColorVis(stale);
    EXPECT_EQ(stale.color, before.color);

    qzk::ecad::SublayerEcad::RefillColorVisInfo();
    qzk::ecad::SublayerEcad fresh(12);
    qzk::ecad::SublayerEcad::GetDefaultSchematicColorVis(fresh);
    EXPECT_EQ(fresh.color, 0x01DC0000u);
    EXPECT_FALSE(fresh.IsVisible());
    EXPECT_EQ(fresh.attributes & 0x7FFFFFFFu, 0u);

    qzref::PreferencesControl::Clear();
    qzk::ecad::SublayerEcad::RefillColorVisInfo();

    qzk::ecad::SublayerEcad::GetNodeName(node, -2, 0, true);
    EXPECT_EQ(node, "Ecad/PCB/sublayer/-2");
    qzk::ecad::SublayerEcad::GetNodeName(node, 4, 14, true);
    EXPECT_EQ(node, "Ecad/PCB/sublayer/4/14");
}

TEST_F(ColorRecordPrefs, OverlayPrefsTurnThenFlipAboutTheCentre) {
    qzk::ecad::OverlayPrefs prefs;
    prefs.Init();
    dg::DMat33 matrix = dg::DMat33::IDENTITY;
    prefs.ApplyTransform(matrix, dg::DPoint2D(5.0, 5.0));
    EXPECT_EQ(matrix, dg::DMat33::IDENTITY);

    qzref::PreferencesControl::SetBool(du::Symbol("Ecad/Overlay/rotate_90"), true);
    qzref::PreferencesControl::SetBool(du::Symbol("Ecad/Overlay/flip_horizontal"), true);
    prefs.Init();
    EXPECT_EQ(prefs.rotation, 90);
    EXPECT_TRUE(prefs.flipHorizontal);
    EXPECT_FALSE(prefs.flipVertical);
    prefs.ApplyTransform(matrix, dg::DPoint2D(5.0, 5.0));
    // (7,5) turns to (5,7), then flips left to right about x = 5: stays (5,7).
    EXPECT_EQ(matrix.Transform(dg::DPoint2D(7.0, 5.0)), dg::DPoint2D(5.0, 7.0));
    // (5,7) turns to (3,5), then flips to (7,5).
    EXPECT_EQ(matrix.Transform(dg::DPoint2D(5.0, 7.0)), dg::DPoint2D(7.0, 5.0));
    qzk::ecad::OverlayPrefs const copy(prefs);
    EXPECT_TRUE(copy == prefs);
}

} // namespace
