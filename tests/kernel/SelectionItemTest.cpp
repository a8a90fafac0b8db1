// ECAD selection items over a design made in memory: their keys, names, types and sheets.
#include "qzk/ecad/SelectionItem.h"
#include "IcmApiEcad.h"
#include "qzk/ObjectSelectionItem.h"
#include "qzk/Scene.h"
#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/GeometrySelectionItem.h"
#include "qzk/ecad/SchematicData.h"
#include "qzk/ecad/selection_types.h"
#include "qzref/DesignObject.h"
#include "qzref/RecordFmt.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using qzk::ecad::SelectionItem;

du::SmartPtr<SelectionItem> Item(du::SmartPtr<qzk::ecad::EcadDesignData> const& data, void* object,
                                 short first = 0, short second = 0) {
    return du::SmartPtr<SelectionItem>(
        new SelectionItem(data, object, nullptr, nullptr, dg::DPoint3D::ORIGIN, first, second));
}

struct Board {
    du::SmartPtr<qzk::ecad::EcadPCBData> data =
        qzk::ecad::EcadPCBData::Create(du::Symbol("board"), false);
    qzref::DesignObject* component =
        data->AddComponent(std::make_unique<qzref::DesignObject>(IcmApiEcad::COMPONENT, "U1"));
    qzref::DesignObject* net =
        data->AddNet(std::make_unique<qzref::DesignObject>(IcmApiEcad::NET, "VCC"));
};

TEST(EcadSelectionItem, GivesAppearanceKeyNameAndComponentKind) {
    Board board;
    auto const item = Item(board.data, board.component, 4, 14);
    EXPECT_EQ(item->GetName(), "U1");
    EXPECT_EQ(item->GetName(du::SmartPtr<qzk::Scene>()), "U1");
    EXPECT_TRUE(item->IsComponent());
    EXPECT_FALSE(Item(board.data, board.net)->IsComponent());
    EXPECT_EQ(item->GetIcmApiEcad(), board.data->GetIcmApiEcad());

    qzk::ecad::AppearanceItem const key(item);
    EXPECT_EQ(key.object, static_cast<void*>(board.component));
    EXPECT_EQ(key.firstHandle, 4);
    EXPECT_EQ(key.secondHandle, 14);
    EXPECT_EQ(key.icm, board.data->GetIcmApiEcad());
    EXPECT_EQ(qzref::Fmt(key), "U1");

    auto const orphan = Item(nullptr, board.component);
    EXPECT_EQ(orphan->GetIcmApiEcad(), nullptr);
    EXPECT_FALSE(orphan->IsComponent());
    EXPECT_EQ(orphan->GetName(), "");
}

TEST(EcadSelectionItem, ClassTypesContentTypesAndClones) {
    Board board;
    auto const item = Item(board.data, board.component, 1, 2);
    EXPECT_TRUE(item->IsATypeOf(qzk::ClassType(qzk::classid::EcadSelectionItem)));
    EXPECT_TRUE(item->IsATypeOf(qzk::ClassType(qzk::classid::SelectionItem)));
    EXPECT_TRUE(item->IsATypeOf(qzk::ClassType(qzk::classid::Object)));
    EXPECT_FALSE(item->IsATypeOf(qzk::ClassType(qzk::classid::GeometrySelectionItem)));
    EXPECT_TRUE(qzk::ecad::selection_types::Belongs(item->GetContentType()));

    du::SmartPtr<qzk::ecad::GeometrySelectionItem> const geometry(
        new qzk::ecad::GeometrySelectionItem(item, dg::DPoint3D(1, 2, 0)));
    EXPECT_FALSE(qzk::ecad::selection_types::Belongs(geometry->GetContentType()));
    EXPECT_TRUE(geometry->IsATypeOf(qzk::ClassType(qzk::classid::GeometrySelectionItem)));
    EXPECT_EQ(geometry->GetEcadParent().Get(), item.Get());
    EXPECT_EQ(geometry->GetName(), "U1");
    EXPECT_TRUE(geometry->IsChild(*item));

    auto const clone = du::DynamicCast<SelectionItem>(item->Clone());
    ASSERT_TRUE(clone);
    EXPECT_NE(clone.Get(), item.Get());
    EXPECT_TRUE(qzk::ecad::AppearanceItem(clone) == qzk::ecad::AppearanceItem(item));
    EXPECT_FALSE(clone->LessThan(*item));
    EXPECT_FALSE(item->LessThan(*clone));
    auto const other = Item(board.data, board.component, 1, 3);
    EXPECT_NE(item->LessThan(*other), other->LessThan(*item));

    du::SmartPtr<qzk::ObjectSelectionItem> const whole(new qzk::ObjectSelectionItem(item));
    EXPECT_EQ(whole->GetObject().Get(), static_cast<qzk::Object*>(item.Get()));
    EXPECT_FALSE(qzk::ecad::selection_types::Belongs(whole->GetContentType()));
}

TEST(EcadSelectionItem, SheetToNavigatePrefersTheCurrentSheetThenTheLowest) {
    auto sch = qzk::ecad::SchematicData::Create(du::Symbol("sch"));
    sch->AddSheet("one");
    sch->AddSheet("two");
    sch->AddSheet("three");
    auto onSheet = [&](char const* name, unsigned int sheet) {
        auto object = std::make_unique<qzref::DesignObject>(IcmApiEcad::COMPONENT, name);
        object->sheet = sheet;
        return sch->AddComponent(std::move(object));
    };
    void* r1 = onSheet("R1", 2);
    void* r2 = onSheet("R2", 1);
    du::SmartPtr<qzk::ecad::EcadDesignData> const data(sch);

    std::vector<du::SmartPtr<qzk::SelectionItem>> items{Item(data, r1), Item(data, r2)};
    EXPECT_EQ(SelectionItem::GetSchematicSheetToNavigate(items, 2, nullptr), 2u);
    EXPECT_EQ(SelectionItem::GetSchematicSheetToNavigate(items, 0, nullptr), 1u);

    Board board;
    std::vector<du::SmartPtr<qzk::SelectionItem>> offSheet{Item(board.data, board.component),
                                                           nullptr, Item(nullptr, r1)};
    EXPECT_EQ(SelectionItem::GetSchematicSheetToNavigate(offSheet, 0, nullptr), 0xFFFFFFFFu);
    EXPECT_EQ(SelectionItem::GetSchematicSheetToNavigate({}, 1, nullptr), 0xFFFFFFFFu);
}

} // namespace
