// The kernel's design object: where it comes from, whether it is a Gerber design, and the data
// that the loader stores into it.
#include "qzk/EcadDesign.h"
#include "qzk/ecad/EcadPCBData.h"

#include <gtest/gtest.h>

namespace {

TEST(EcadDesign, GerberIsDecidedByWholeExtensionEntriesInAnyCase) {
    EXPECT_TRUE(qzk::EcadDesign::FromFile("/boards/top.gbr")->IsGerber());
    EXPECT_TRUE(qzk::EcadDesign::FromFile("C:\\boards\\TOP.GTL")->IsGerber());
    EXPECT_FALSE(qzk::EcadDesign::FromFile("/boards/top.json")->IsGerber());
    // Fragments of an entry and names without an extension are not Gerber files here.
    EXPECT_FALSE(qzk::EcadDesign::FromFile("/boards/top.gb")->IsGerber());
    EXPECT_FALSE(qzk::EcadDesign::FromFile("/boards/top.gbrx")->IsGerber());
    EXPECT_FALSE(qzk::EcadDesign::FromFile("/boards.gbr/top")->IsGerber());
    EXPECT_FALSE(qzk::EcadDesign::FromFile("/boards/gbr")->IsGerber());

    std::string const& exts = qzk::EcadDesign::GetGerberExts();
    EXPECT_EQ(&exts, &qzk::EcadDesign::GetGerberExts());
    EXPECT_EQ(exts.front(), '.');
    EXPECT_EQ(exts.find(' '), std::string::npos);
    for (char c : exts) {
        EXPECT_FALSE(std::isupper(static_cast<unsigned char>(c)));
    }
}

TEST(EcadDesign, DataIsEmptyUntilTheLoaderStoresIt) {
    auto design = qzk::EcadDesign::FromFile("/boards/four.json");
    EXPECT_EQ(design->GetURL(), du::Symbol("/boards/four.json"));
    EXPECT_TRUE(design->IsATypeOf(qzk::ClassType(qzk::classid::EcadDesign)));
    EXPECT_TRUE(design->IsATypeOf(qzk::ClassType(qzk::classid::Object)));
    EXPECT_FALSE(design->GetEcadDesignData());
    auto board = qzk::ecad::EcadPCBData::Create(du::Symbol("b"), false);
    design->SetEcadDesignData(board);
    EXPECT_EQ(design->GetEcadDesignData().Get(), board.Get());
    EXPECT_EQ(board->GetReferenceCount(), 2);
    design->SetEcadDesignData(nullptr);
    EXPECT_EQ(board->GetReferenceCount(), 1);
}

TEST(EcadDesign, DesignFromOverlayDataIsGerber) {
    auto overlay = qzk::EcadDesign::FromData(du::Symbol("memory:overlay"),
                                             qzk::ecad::EcadPCBData::Create(du::Symbol("o"), true));
    EXPECT_TRUE(overlay->IsGerber());
    ASSERT_TRUE(overlay->GetEcadDesignData());
    auto board = qzk::EcadDesign::FromData(du::Symbol("memory:board"),
                                           qzk::ecad::EcadPCBData::Create(du::Symbol("b"), false));
    EXPECT_FALSE(board->IsGerber());
}

TEST(EcadPCBData, AddingRefusesDuplicateSublayersAndUnknownLayers) {
    auto board = qzk::ecad::EcadPCBData::Create(du::Symbol("b"), false);
    EXPECT_TRUE(board->AddLayer(2, "Top"));
    EXPECT_FALSE(board->AddLayer(2, "Again"));
    EXPECT_TRUE(board->AddSublayer(
        std::make_unique<qzk::ecad::SublayerPCB>(2, 10, "Pads", 0x01FFFFFF, true), "Pads"));
    EXPECT_FALSE(board->AddSublayer(
        std::make_unique<qzk::ecad::SublayerPCB>(2, 10, "Other", 0x01FFFFFF, true), "Other"));
    EXPECT_FALSE(board->AddSublayer(
        std::make_unique<qzk::ecad::SublayerPCB>(3, 10, "Pads", 0x01FFFFFF, true), "Pads"));
    EXPECT_EQ(board->sublayers.size(), 1u);
    EXPECT_EQ(board->GetSublayerLabel(2, 10), du::Symbol("Pads"));
}

} // namespace
