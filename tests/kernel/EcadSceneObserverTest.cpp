// Decoding of the schematic, schematic compare and board-to-schematic kernel scene observers:
// what the kernel scene posts reaches the right handler with its values, in order, once the
// loop is pumped; looks of the other kind; malformed messages.
#include "dom/MessageReader.h"
#include "dom/ObserverProxy.h"
#include "qzk/Instance.h"
#include "qzk/ViewableSource.h"
#include "qzk/World.h"
#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/BaseSceneObserver.h"
#include "qzk/ecad/CompareColorVis.h"
#include "qzk/ecad/PCBAppearance.h"
#include "qzk/ecad/PCBCompareView.h"
#include "qzk/ecad/PCBSchCompareScene.h"
#include "qzk/ecad/PCBSchCompareSceneObserver.h"
#include "qzk/ecad/PCBView.h"
#include "qzk/ecad/SchematicAppearance.h"
#include "qzk/ecad/SchematicCompareScene.h"
#include "qzk/ecad/SchematicCompareSceneObserver.h"
#include "qzk/ecad/SchematicCompareView.h"
#include "qzk/ecad/SchematicScene.h"
#include "qzk/ecad/SchematicSceneObserver.h"
#include "qzk/ecad/SchematicView.h"
#include "qzref/Messages.h"
#include "qzref/Platform.h"

#include <gtest/gtest.h>

#include "qzref/Inspect.h"
#include <functional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using qzk::ecad::BaseSceneObserver;
using qzk::ecad::PCBAppearance;
using qzk::ecad::SchematicAppearance;
using qzref::Messages;

template <class Look> std::string LookText(std::set<Look> const& on, std::set<Look> const& off) {
    auto list = [](std::set<Look> const& looks) {
        std::string out;
        for (Look look : looks) {
            out += (out.empty() ? "" : ",") + std::to_string(static_cast<unsigned int>(look));
        }
        return "{" + out + "}";
    };
    return list(on) + list(off);
}

// One message as a kernel scene writes it, after the id.
dom::MessageData Message(std::function<void(dom::ObserverProxy&)> const& push) {
    dom::ObserverProxy proxy;
    proxy.Begin();
    push(proxy);
    proxy.End();
    return proxy.TakeMessage();
}

dom::MessageData LookMessage(bool schematic, std::vector<unsigned int> const& on,
                             std::vector<unsigned int> const& off) {
    return Message([&](dom::ObserverProxy& p) {
        p.PushBooleanValue(schematic);
        for (auto const* list : {&on, &off}) {
            p.PushUInt32Value(static_cast<unsigned int>(list->size()));
            for (unsigned int value : *list) {
                p.PushUInt32Value(value);
            }
        }
    });
}

template <class Observer>
std::string Deliver(Observer& observer, unsigned char id, dom::MessageData const& message) {
    dom::MessageReader reader(message);
    try {
        observer.HandleEvent(id, reader);
    } catch (std::runtime_error const& error) {
        return error.what();
    }
    return "";
}

class EcadSceneObservers : public ::testing::Test {
protected:
    void TearDown() override {
        Messages::PumpUntilIdle();
        EXPECT_TRUE(Messages::TakeHandlerErrors().empty());
    }

    qzref::ScopedPlatform platform;
};

struct SchematicRecorder : qzk::ecad::SchematicSceneObserver {
    void DetachObserver() override {}
    void OnViewCreate(du::SmartPtr<qzk::ecad::SchematicView> const& view) override {
        log.push_back("create");
        views.push_back(view.Get());
    }
    void OnViewRemove(du::SmartPtr<qzk::ecad::SchematicView> const& view) override {
        log.push_back("remove");
        views.push_back(view.Get());
    }
    void OnAppearanceChanged(std::set<SchematicAppearance> const& on,
                             std::set<SchematicAppearance> const& off) override {
        log.push_back("look " + LookText(on, off));
    }
    void OnHighlightSettings(bool onlyVisible) override {
        log.push_back(std::string("highlight ") + (onlyVisible ? "on" : "off"));
    }
    void OnSublayerColorVisChanged() override { log.push_back("colours"); }
    std::vector<std::string> log;
    std::vector<void*> views;
};

TEST_F(EcadSceneObservers, SchematicObserverHearsViewsLooksAndColoursInOrderOnceLoopIsPumped) {
    du::SmartPtr<qzk::ecad::SchematicScene> scene;
    qzk::ecad::SchematicScene::Create(qzk::World::GetWorld(), qzk::Instance::Create("s"),
                                      qzk::ViewableSource::Create("sheets-a.json"), scene);
    SchematicRecorder recorder;
    ASSERT_TRUE(scene->RegisterObserver(recorder));

    auto sheet = qzk::ecad::SchematicView::Create(*scene, 3);
    auto board = qzk::ecad::PCBView::Create(*scene); // another class: told as null
    scene->SetFillShapes(true);
    scene->SetFillShapes(true); // unchanged: not told
    scene->SetHighlightOnlyVisible(true);
    std::map<short, qzk::ecad::ColorVisInfo> colours{{-4, {0x010000FF, false}}};
    scene->SetSublayerColorVisInfo(colours);
    scene->SetSublayerColorVisInfo(colours); // told again, changed or not
    scene->SetOverlapColor(true);
    ASSERT_TRUE(scene->RemoveView(sheet));

    EXPECT_TRUE(recorder.log.empty());
    Messages::PumpUntilIdle();
    EXPECT_EQ(recorder.log, (std::vector<std::string>{"create", "create", "look {0}{}",
                                                      "highlight on", "look {1}{}", "colours",
                                                      "colours", "look {2}{}", "remove"}));
    EXPECT_EQ(recorder.views, (std::vector<void*>{sheet.Get(), nullptr, sheet.Get()}));

    auto kept = qzref::Inspect(*scene).GetSublayerColorVisInfo();
    ASSERT_EQ(kept.size(), 1u);
    EXPECT_EQ(kept[-4].color, 0x010000FFu);
    EXPECT_FALSE(kept[-4].visible);

    scene->SetFillShapes(false);
    Messages::PumpUntilIdle();
    EXPECT_EQ(recorder.log.back(), "look {}{0}");
    scene->UnregisterObserver(recorder);
    qzref::Inspect(*scene).DestroyScene();
}

struct SchematicCompareRecorder : qzk::ecad::SchematicCompareSceneObserver {
    void DetachObserver() override {}
    void OnViewCreate(du::SmartPtr<qzk::ecad::SchematicCompareView> const& view) override {
        log.push_back("create");
        views.push_back(view.Get());
    }
    void OnAppearanceChanged(std::set<SchematicAppearance> const& on,
                             std::set<SchematicAppearance> const& off) override {
        log.push_back("look " + LookText(on, off));
    }
    void OnSublayerColorVisChanged() override { log.push_back("colours"); }
    void OnSlExcludedObjTypesChanged() override { log.push_back("excluded"); }
    void OnCompareColorChanged() override { log.push_back("compare colours"); }
    std::vector<std::string> log;
    std::vector<void*> views;
};

TEST_F(EcadSceneObservers, SchematicCompareObserverHearsViewsColoursAndCompareColoursInOrder) {
    du::SmartPtr<qzk::ecad::SchematicCompareScene> scene;
    qzk::ecad::SchematicCompareScene::Create(
        qzk::World::GetWorld(), qzk::Instance::Create("a"), qzk::ViewableSource::Create("sa.json"),
        qzk::Instance::Create("b"), qzk::ViewableSource::Create("sb.json"), scene);
    SchematicCompareRecorder recorder;
    ASSERT_TRUE(scene->RegisterObserver(recorder));

    auto view = qzk::ecad::SchematicCompareView::Create(*scene);
    auto other = qzk::ecad::SchematicView::Create(*scene); // another class: told as null
    du::SmartPtr<qzk::ecad::CompareColorVis> record(new qzk::ecad::CompareColorVis(
        1, 2, 3, qzk::ecad::CompareColorVis::eShowDifferences, true, true));
    scene->SetSublayerColorVisInfo({{7, record}});
    record->firstColor = 99; // the scene keeps a clone
    scene->SetOverlapColor(true);
    qzref::Inspect(*scene).ChangeItemColors(
        dg::Color(0x01000001, true), dg::Color(0x01000002, true), dg::Color(0x01000003, true));

    EXPECT_TRUE(recorder.log.empty());
    Messages::PumpUntilIdle();
    EXPECT_EQ(recorder.log, (std::vector<std::string>{"create", "create", "colours", "look {2}{}",
                                                      "compare colours"}));
    EXPECT_EQ(recorder.views, (std::vector<void*>{view.Get(), nullptr}));
    auto kept = qzref::Inspect(*scene).GetSublayerColorVisInfo();
    ASSERT_EQ(kept.size(), 1u);
    ASSERT_FALSE(kept[7].IsNull());
    EXPECT_EQ(kept[7]->firstColor, 1u);
    EXPECT_NE(kept[7].Get(), record.Get());

    // No kernel scene posts the excluded types yet; the observer still decodes the id.
    EXPECT_EQ(Deliver(recorder, BaseSceneObserver::SlExcludedObjTypesChangedEventId,
                      Message([](dom::ObserverProxy&) {})),
              "");
    EXPECT_EQ(recorder.log.back(), "excluded");
    scene->UnregisterObserver(recorder);
    qzref::Inspect(*scene).DestroyScene();
}

TEST_F(EcadSceneObservers, SchematicObserversDropBoardLooksAndNameThemselvesWhenMalformed) {
    unsigned char const id = BaseSceneObserver::AppearanceChangedEventId;
    SchematicRecorder sheet;
    SchematicCompareRecorder compare;

    EXPECT_EQ(Deliver(sheet, id, LookMessage(false, {4}, {})), "");
    EXPECT_EQ(Deliver(compare, id, LookMessage(false, {4}, {})), "");
    EXPECT_TRUE(sheet.log.empty());
    EXPECT_TRUE(compare.log.empty());

    EXPECT_EQ(Deliver(sheet, id, LookMessage(true, {2}, {0, 1})), "");
    EXPECT_EQ(Deliver(compare, id, LookMessage(true, {}, {1})), "");
    EXPECT_EQ(sheet.log, (std::vector<std::string>{"look {2}{0,1}"}));
    EXPECT_EQ(compare.log, (std::vector<std::string>{"look {}{1}"}));

    // The second list missing: nothing is told, and the error names the observer and the id.
    auto truncated = Message([](dom::ObserverProxy& p) {
        p.PushBooleanValue(true);
        p.PushUInt32Value(0);
    });
    EXPECT_EQ(Deliver(sheet, id, truncated),
              "qzk::ecad::SchematicSceneObserver: malformed message " + std::to_string(id));
    EXPECT_EQ(Deliver(compare, id, truncated),
              "qzk::ecad::SchematicCompareSceneObserver: malformed message " + std::to_string(id));
    EXPECT_EQ(sheet.log.size(), 1u);
    EXPECT_EQ(compare.log.size(), 1u);
}

struct BoardSheetRecorder : qzk::ecad::PCBSchCompareSceneObserver {
    void DetachObserver() override {}
    void OnViewCreate(du::SmartPtr<qzk::ecad::PCBView> const& view) override {
        log.push_back("create board");
        views.push_back(view.Get());
    }
    void OnViewCreate(du::SmartPtr<qzk::ecad::SchematicView> const& view) override {
        log.push_back("create sheet");
        views.push_back(view.Get());
    }
    void OnViewRemove(du::SmartPtr<qzk::ecad::PCBView> const& view) override {
        log.push_back("remove board");
        views.push_back(view.Get());
    }
    void OnViewRemove(du::SmartPtr<qzk::ecad::SchematicView> const& view) override {
        log.push_back("remove sheet");
        views.push_back(view.Get());
    }
    void OnAppearanceChanged(std::set<PCBAppearance> const& on,
                             std::set<PCBAppearance> const& off) override {
        log.push_back("board look " + LookText(on, off));
    }
    void OnAppearanceChanged(std::set<SchematicAppearance> const& on,
                             std::set<SchematicAppearance> const& off) override {
        log.push_back("sheet look " + LookText(on, off));
    }
    void OnFillShapesChanged(bool fill) override {
        log.push_back(std::string("fill ") + (fill ? "on" : "off"));
    }
    void OnIsolate(std::vector<qzk::ecad::AppearanceItem> const& items, bool on) override {
        log.push_back("isolate " + std::to_string(items.size()) + (on ? " on" : " off"));
        isolated = items;
    }
    void OnIsolateLayers(std::vector<short> const& layers, bool on) override {
        std::string text = "layers";
        for (short layer : layers) {
            text += " " + std::to_string(layer);
        }
        log.push_back(text + (on ? " on" : " off"));
    }
    void OnDrawOrderChanged() override { log.push_back("draw"); }
    void OnPcbDrawOrderChanged() override { log.push_back("board draw"); }
    void OnSchDrawOrderChanged() override { log.push_back("sheet draw"); }
    void OnPcbSublayerColorVisChanged() override { log.push_back("board colours"); }
    void OnSchSublayerColorVisChanged() override { log.push_back("sheet colours"); }
    void OnSlExcludedObjTypesChanged() override { log.push_back("excluded"); }
    std::vector<std::string> log;
    std::vector<void*> views;
    std::vector<qzk::ecad::AppearanceItem> isolated;
};

int objects[2];

TEST_F(EcadSceneObservers, BoardToSchematicObserverTellsBoardAndSchematicNoticesApart) {
    du::SmartPtr<qzk::ecad::PCBSchCompareScene> scene;
    qzk::ecad::PCBSchCompareScene::Create(
        qzk::World::GetWorld(), qzk::Instance::Create("a"), qzk::ViewableSource::Create("pb.json"),
        qzk::Instance::Create("b"), qzk::ViewableSource::Create("ps.json"), scene);
    BoardSheetRecorder recorder;
    ASSERT_TRUE(scene->RegisterObserver(recorder));

    auto board = qzk::ecad::PCBView::Create(*scene);
    auto sheet = qzk::ecad::SchematicView::Create(*scene, 2);
    auto other = qzk::ecad::PCBCompareView::Create(*scene); // neither kind: not told
    auto* session = reinterpret_cast<IcmApiEcad*>(&objects[1]);
    std::vector<qzk::ecad::AppearanceItem> items{{&objects[0], -3, 32767, session},
                                                 {&objects[1], -32768, 0, nullptr}};
    scene->SetIsolated(items);
    scene->SetFillShapes(true);
    scene->SetSchDrawOrder({4, -1});
    scene->SetPCBDrawOrder({2, 3}, true, false);
    scene->SetSublayerColorVisInfo({{1, {0x01FF0000, true}}});
    scene->SetColorVisInfo({});
    ASSERT_TRUE(scene->RemoveView(sheet));
    ASSERT_TRUE(scene->RemoveView(board));

    EXPECT_TRUE(recorder.log.empty());
    Messages::PumpUntilIdle();
    EXPECT_EQ(recorder.log, (std::vector<std::string>{
                                "create board", "create sheet", "isolate 2 on", "fill on",
                                "board look {0}{}", "sheet draw", "board draw", "sheet colours",
                                "board colours", "remove sheet", "remove board"}));
    EXPECT_EQ(recorder.views,
              (std::vector<void*>{board.Get(), sheet.Get(), sheet.Get(), board.Get()}));
    ASSERT_EQ(recorder.isolated.size(), 2u);
    for (std::size_t i = 0; i < items.size(); ++i) {
        EXPECT_EQ(recorder.isolated[i].object, items[i].object);
        EXPECT_EQ(recorder.isolated[i].firstHandle, items[i].firstHandle);
        EXPECT_EQ(recorder.isolated[i].secondHandle, items[i].secondHandle);
        EXPECT_EQ(recorder.isolated[i].icm, items[i].icm);
    }
    scene->UnregisterObserver(recorder);
    qzref::Inspect(*scene).DestroyScene();
}

TEST_F(EcadSceneObservers, BoardToSchematicObserverRoutesEachLookByItsKindAndDecodesLayers) {
    BoardSheetRecorder recorder;
    unsigned char const look = BaseSceneObserver::AppearanceChangedEventId;
    EXPECT_EQ(Deliver(recorder, look, LookMessage(true, {1}, {2})), "");
    EXPECT_EQ(Deliver(recorder, look, LookMessage(false, {}, {3, 4})), "");
    auto layers = Message([](dom::ObserverProxy& p) {
        p.PushUInt32Value(2);
        p.PushUInt16Value(static_cast<unsigned short>(-2));
        p.PushUInt16Value(5);
        p.PushBooleanValue(true);
    });
    EXPECT_EQ(Deliver(recorder, BaseSceneObserver::IsolateLayersEventId, layers), "");
    EXPECT_EQ(Deliver(recorder, BaseSceneObserver::SlExcludedObjTypesChangedEventId,
                      Message([](dom::ObserverProxy&) {})),
              "");
    EXPECT_EQ(recorder.log, (std::vector<std::string>{"sheet look {1}{2}", "board look {}{3,4}",
                                                      "layers -2 5 on", "excluded"}));

    auto noFlag = Message([](dom::ObserverProxy& p) { p.PushUInt32Value(0); });
    EXPECT_EQ(Deliver(recorder, BaseSceneObserver::IsolateEventId, noFlag),
              "qzk::ecad::PCBSchCompareSceneObserver: malformed message " +
                  std::to_string(BaseSceneObserver::IsolateEventId));
    EXPECT_EQ(recorder.log.size(), 4u);
}

} // namespace
