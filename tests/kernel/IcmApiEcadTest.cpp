// The query session of a loaded design, and the names that the journal prints for its objects.
#include "IcmApiEcad.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/SchematicData.h"
#include "qzref/DesignFile.h"
#include "qzref/DesignObjects.h"

#include <gtest/gtest.h>

namespace {

du::SmartPtr<qzk::ecad::EcadDesignData> Load(char const* name) {
    auto read = qzref::ReadDesignFile(std::string(QZ_EXAMPLES_DIR) + "/designs/" + name);
    EXPECT_EQ(read.status, 0) << read.errorText;
    return du::DynamicCast<qzk::ecad::EcadDesignData>(read.data);
}

TEST(IcmApiEcad, NetChildrenAreWalkedInFileOrderWithTheirComponents) {
    auto board = Load("four-layer-board.json");
    ASSERT_TRUE(board);
    IcmApiEcad* icm = board->GetIcmApiEcad();
    void* net = board->FindObject("VCC", IcmApiEcad::NET);
    int type = 0;
    EXPECT_TRUE(icm->GetObjectType(net, type));
    EXPECT_EQ(type, IcmApiEcad::NET);
    int count = -1;
    EXPECT_TRUE(icm->GetChildCount(net, count, IcmApiEcad::PIN));
    EXPECT_EQ(count, 3);
    EXPECT_TRUE(icm->GetChildCount(net, count, IcmApiEcad::ANY));
    EXPECT_EQ(count, 4);

    std::vector<std::string> names;
    std::vector<std::string> owners;
    void* child = nullptr;
    void* owner = nullptr;
    while (icm->GetNextChild(net, IcmApiEcad::PIN, child, child, owner) && child != nullptr) {
        names.push_back(qzref::DesignObjects::NameOf(child));
        owners.push_back(qzref::DesignObjects::NameOf(owner));
    }
    EXPECT_EQ(names, (std::vector<std::string>{"U1.1", "R1.1", "C1.1"}));
    EXPECT_EQ(owners, (std::vector<std::string>{"U1", "R1", "C1"}));

    // With any child type the track follows the pins, and it has no owner to report.
    void* track = nullptr;
    void* last = board->FindObject("C1.1");
    EXPECT_TRUE(icm->GetNextChild(net, IcmApiEcad::ANY, last, track, owner));
    EXPECT_EQ(qzref::DesignObjects::NameOf(track), "VCC:1");
    EXPECT_EQ(owner, nullptr);
    EXPECT_TRUE(icm->GetNextChild(net, IcmApiEcad::ANY, track, track, owner));
    EXPECT_EQ(track, nullptr);

    EXPECT_TRUE(
        icm->GetChildCount(board->FindObject("NC", IcmApiEcad::NET), count, IcmApiEcad::PIN));
    EXPECT_EQ(count, 0);
}

TEST(IcmApiEcad, ObjectsOfOtherDesignsAndStrayPointersAreUnknown) {
    auto board = Load("four-layer-board.json");
    auto other = Load("four-layer-board.json");
    ASSERT_TRUE(board && other);
    IcmApiEcad* icm = board->GetIcmApiEcad();
    int probe = 0;
    void* foreign = other->FindObject("U1", IcmApiEcad::COMPONENT);
    for (void* object : {foreign, static_cast<void*>(&probe), static_cast<void*>(nullptr)}) {
        int type = 7;
        int count = 7;
        short layer = 7;
        short sublayer = 7;
        void* next = &probe;
        void* owner = &probe;
        EXPECT_FALSE(icm->GetObjectType(object, type));
        EXPECT_EQ(type, 0);
        EXPECT_FALSE(icm->GetChildCount(object, count, IcmApiEcad::ANY));
        EXPECT_EQ(count, 0);
        EXPECT_FALSE(icm->GetNextChild(object, IcmApiEcad::ANY, nullptr, next, owner));
        EXPECT_EQ(next, nullptr);
        EXPECT_EQ(owner, nullptr);
        EXPECT_FALSE(icm->GetObjectLayer(object, layer, sublayer));
        EXPECT_EQ(layer, -1);
        EXPECT_EQ(sublayer, -1);
    }
}

TEST(IcmApiEcad, ComponentFootprintIteratesItsShapesAndTheHandleMustBeReleased) {
    auto board = Load("four-layer-board.json");
    ASSERT_TRUE(board);
    IcmApiEcad* icm = board->GetIcmApiEcad();
    std::size_t const before = IcmApiPublicSession::GetLiveIteratorCount();

    void* footprint = nullptr;
    short layer = 0;
    ASSERT_TRUE(icm->GetComponentFootprint(board->FindObject("U1", IcmApiEcad::COMPONENT),
                                           footprint, layer));
    EXPECT_EQ(layer, 5);
    void* iterator = nullptr;
    ASSERT_TRUE(icm->StartChildIteration(footprint, IcmApiEcad::SHAPE, iterator));
    ASSERT_NE(iterator, nullptr);
    EXPECT_EQ(IcmApiPublicSession::GetLiveIteratorCount(), before + 1);
    std::vector<std::pair<short, short>> places;
    void* shape = nullptr;
    while (icm->NextIteratedChild(iterator, shape)) {
        short sublayer = 0;
        EXPECT_TRUE(icm->GetObjectLayer(shape, layer, sublayer));
        places.emplace_back(layer, sublayer);
    }
    EXPECT_EQ(places,
              (std::vector<std::pair<short, short>>{{5, 10}, {5, 11}, {5, 14}, {5, 15}, {5, 33}}));
    // The handle outlives the end of the walk until it is deleted.
    EXPECT_EQ(IcmApiPublicSession::GetLiveIteratorCount(), before + 1);
    IcmApiPublicSession::IcmIteratorDelete(iterator);
    EXPECT_EQ(iterator, nullptr);
    EXPECT_EQ(IcmApiPublicSession::GetLiveIteratorCount(), before);
    IcmApiPublicSession::IcmIteratorDelete(iterator);
    EXPECT_EQ(IcmApiPublicSession::GetLiveIteratorCount(), before);

    // A component on no layer reports layer 0; a net is no component.
    EXPECT_TRUE(icm->GetComponentFootprint(board->FindObject("MH1", IcmApiEcad::COMPONENT),
                                           footprint, layer));
    EXPECT_EQ(layer, 0);
    EXPECT_FALSE(
        icm->GetComponentFootprint(board->FindObject("GND", IcmApiEcad::NET), footprint, layer));
    EXPECT_EQ(footprint, nullptr);
}

TEST(IcmApiEcad, SublayerHandlesAreLookedUpByFileNames) {
    auto board = Load("six-layer-board.json");
    ASSERT_TRUE(board);
    short handle = 0;
    EXPECT_TRUE(board->GetIcmApiEcad()->GetSublayerHandle("Inner 4", "Room", handle));
    EXPECT_EQ(handle, 1001);
    EXPECT_FALSE(board->GetIcmApiEcad()->GetSublayerHandle("Inner 4", "Power room", handle));
    EXPECT_EQ(handle, -1);
    auto schematic = Load("three-sheet-schematic.json");
    ASSERT_TRUE(schematic);
    EXPECT_FALSE(schematic->GetIcmApiEcad()->GetSublayerHandle("Wires", "Wires", handle));
}

TEST(IcmApiEcad, SchematicObjectsReportTheirSheetAndLayerHandle) {
    auto schematic = Load("three-sheet-schematic.json");
    ASSERT_TRUE(schematic);
    IcmApiEcad* icm = schematic->GetIcmApiEcad();
    unsigned int sheet = 0;
    EXPECT_TRUE(icm->GetObjectSheet(schematic->FindObject("M1", IcmApiEcad::COMPONENT), sheet));
    EXPECT_EQ(sheet, 2u);
    short layer = -5;
    short sublayer = -5;
    EXPECT_TRUE(icm->GetObjectLayer(schematic->FindObject("PWM port"), layer, sublayer));
    EXPECT_EQ(layer, 0);
    EXPECT_EQ(sublayer, 32);
    auto board = Load("four-layer-board.json");
    EXPECT_TRUE(board->GetIcmApiEcad()->GetObjectSheet(board->FindObject("R1.1"), sheet));
    EXPECT_EQ(sheet, 0xFFFFFFFFu);
}

TEST(DesignObjects, NamesLiveObjectsAndForgetsThemWithTheirDesign) {
    EXPECT_EQ(qzref::DesignObjects::NameOf(nullptr), "null");
    std::size_t const before = qzref::DesignObjects::GetLiveCount();
    void* pin = nullptr;
    {
        auto board = Load("four-layer-board.json");
        ASSERT_TRUE(board);
        pin = board->FindObject("U1.4");
        EXPECT_EQ(qzref::DesignObjects::NameOf(pin), "U1.4");
        EXPECT_EQ(qzref::DesignObjects::GetLiveCount(), before + board->GetObjectCount());
    }
    EXPECT_EQ(qzref::DesignObjects::GetLiveCount(), before);
    EXPECT_EQ(qzref::DesignObjects::NameOf(pin), "?");
}

} // namespace
