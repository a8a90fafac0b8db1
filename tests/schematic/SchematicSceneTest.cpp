// The schematic scene around its design: both factory kinds, the sublayer colours and their undo,
// the layer queries, the page event's decoding, and loads that fail.
#include "SchematicHarness.h"

#include "dom/ObserverProxy.h"
#include "qzk/Operation.h"
#include "qzk/ecad/SchematicData.h"
#include "qzk/ecad/SublayerEcad.h"
#include "schematic/ColorVisSublayerOperationStep.h"

#include "qzref/Inspect.h"
#include <cstdio>
#include <fstream>
#include <functional>
#include <stdexcept>

namespace qztest {
namespace {

using qzref::Messages;
using SublayerMap = qzkapp::ecad::SchSceneHelper::SublayerMap;

SublayerMap Own(qzkapp::ecad::SchematicScene const& api) {
    SublayerMap map;
    api.GetSublayerColorVisInfo(map);
    return map;
}

bool SameMaps(SublayerMap const& a, SublayerMap const& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](auto const& x, auto const& y) {
        return x.first == y.first && x.second.SameColorVis(y.second);
    });
}

// What a host sees of one scene: its class, sublayers, draw order, events and sheet changes.
std::vector<std::string> Portrait(qzkapp::ecad::SchematicScene& api,
                                  qzk::ecad::SchematicScene& kernel, SchematicRecorder& recorder,
                                  du::SmartPtr<qzk::ecad::BaseView> const& view) {
    std::vector<std::string> out;
    out.push_back("class " + std::to_string(api.GetClassType().GetId()));
    for (auto const& [handle, info] : Own(api)) {
        out.push_back("sublayer " + std::to_string(handle) + " " + std::to_string(info.color) +
                      (info.visible ? " shown" : " hidden"));
    }
    out.push_back(qzref::Inspect(kernel).GetSublayerColorVisInfo().size() == Own(api).size()
                      ? "kernel has map"
                      : "kernel differs");
    std::vector<short> order;
    api.GetDefaultDrawOrder(order);
    for (short layer : order) {
        out.push_back("order " + std::to_string(layer));
    }
    api.RegisterObserver(recorder);
    api.PageNav(1, view);
    Messages::PumpUntilIdle();
    for (std::string const& line : recorder.Take()) {
        out.push_back(line);
    }
    return out;
}

TEST_F(SchematicTest, Kinds73And77MakeTheSameSchematicScene) {
    Kernel first = Make(Example("three-sheet-schematic.json"), 73);
    Kernel second = Make(Example("three-sheet-schematic.json"), 77);
    ASSERT_TRUE(first);
    ASSERT_TRUE(second);
    Settle();
    View firstView = MakeView(first, 3);
    View secondView = MakeView(second, 3);
    du::SmartPtr<SchematicRecorder> a(new SchematicRecorder());
    du::SmartPtr<SchematicRecorder> b(new SchematicRecorder());
    std::vector<std::string> const one = Portrait(*Api(first), *first, *a, Base(firstView));
    std::vector<std::string> const two = Portrait(*Api(second), *second, *b, Base(secondView));
    EXPECT_EQ(one, two);
    ASSERT_FALSE(one.empty());
    EXPECT_EQ(one.front(), "class 163");
    EXPECT_NE(std::find(one.begin(), one.end(), "Page 1"), one.end());
    EXPECT_NE(std::find(one.begin(), one.end(), "kernel has map"), one.end());
}

TEST_F(SchematicTest, TheLoadedDesignGivesEveryLayerItsDefaultAndTheLayerQueries) {
    Kernel scene = Make(Example("three-sheet-schematic.json"));
    Settle();
    qzkapp::ecad::SchematicScene* api = Api(scene);
    ASSERT_TRUE(api->IsDesignLoaded());
    auto const* design = dynamic_cast<qzk::ecad::SchematicData const*>(api->GetDesignData().Get());
    ASSERT_NE(design, nullptr);

    SublayerMap const map = Own(*api);
    ASSERT_EQ(map.size(), design->layerNames.size());
    for (auto const& [handle, info] : map) {
        qzk::ecad::SublayerEcad expected(handle);
        qzk::ecad::SublayerEcad::GetDefaultSchematicColorVis(expected);
        EXPECT_EQ(info.color, expected.color) << handle;
        EXPECT_EQ(info.visible, expected.IsVisible()) << handle;
    }
    EXPECT_TRUE(SameMaps(qzref::Inspect(*scene).GetSublayerColorVisInfo(), map));

    // The order is the display table's, not the handles': only layers with content appear.
    std::vector<short> order;
    api->GetDefaultDrawOrder(order);
    std::vector<short> expected;
    for (short layer : {12, 7, 30, 11, 19, 8, 28, 10, 29, 32}) {
        if (design->HasLayerContent(layer)) {
            expected.push_back(layer);
        }
    }
    EXPECT_EQ(order, expected);
    EXPECT_FALSE(order.empty());
    EXPECT_EQ(std::find(order.begin(), order.end(), 30), order.end()); // the frame is empty

    EXPECT_EQ(std::wstring(api->GetLayerName(19)), L"Net labels");
    ASSERT_NE(api->GetLayerName(99), nullptr);
    EXPECT_EQ(std::wstring(api->GetLayerName(99)), L"");
}

TEST_F(SchematicTest, AColourStepUndoneTwiceSwapsBackEachTimeAndPostsUndo) {
    Kernel scene = Make(Example("three-sheet-schematic.json"));
    Settle();
    qzkapp::ecad::SchematicScene* api = Api(scene);
    du::SmartPtr<SchematicRecorder> recorder(new SchematicRecorder());
    ASSERT_TRUE(api->RegisterObserver(*recorder));
    Messages::PumpUntilIdle();
    recorder->Take();

    SublayerMap const before = Own(*api);
    SublayerMap changed = before;
    changed[12] = qzk::ecad::ColorVisInfo(0x01102030, false);
    du::SmartPtr<qzk::Operation> op(
        new qzk::Operation("colour", du::SmartPtr<qzk::Scene>(scene), false));
    api->SetSublayerColorVisInfo(changed, op, static_cast<qzkapp::ecad::ChangeSource>(9));
    ASSERT_EQ(qzref::Inspect(*op).GetStepCount(), 1u);
    EXPECT_EQ(op->GetSteps()[0]->GetStepType(),
              du::Symbol("QzkappEcadColorVisSublayerOperationStep"));
    qzk::RecordOperation(op);

    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_TRUE(SameMaps(qzref::Inspect(*scene).GetSublayerColorVisInfo(), before));
    ASSERT_TRUE(qzref::UndoControl::Redo());
    EXPECT_TRUE(SameMaps(Own(*api), changed));
    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_TRUE(SameMaps(Own(*api), before));
    EXPECT_TRUE(SameMaps(qzref::Inspect(*scene).GetSublayerColorVisInfo(), before));
    Messages::PumpUntilIdle();
    EXPECT_EQ(recorder->Take(), (std::vector<std::string>{"SublayerCV 9", "SublayerCV 3",
                                                          "SublayerCV 3", "SublayerCV 3"}));
    EXPECT_EQ(qzref::UndoControl::GetUndoCount(), 0u);

    // A partial map takes only handles the scene has; an unknown one is dropped and the own map
    // still reaches the kernel and posts, also when nothing is given.
    SublayerMap partial;
    partial[7] = qzk::ecad::ColorVisInfo(0x01ABCDEF, true);
    partial[99] = qzk::ecad::ColorVisInfo(0x01000001, false);
    api->ApplySublayerColorVisInfo(partial, nullptr);
    api->ApplySublayerColorVisInfo({}, nullptr);
    SublayerMap const applied = Own(*api);
    EXPECT_EQ(applied.count(99), 0u);
    EXPECT_EQ(applied.at(7).color, 0x01ABCDEFu);
    EXPECT_EQ(applied.size(), before.size());
    EXPECT_TRUE(SameMaps(qzref::Inspect(*scene).GetSublayerColorVisInfo(), applied));
    Messages::PumpUntilIdle();
    EXPECT_EQ(recorder->Take(), (std::vector<std::string>{"SublayerCV 1", "SublayerCV 1"}));

    // A step whose helper is gone does nothing.
    du::SmartPtr<qzk::OperationStep> orphan(
        new qzkapp::ecad::ColorVisSublayerOperationStep(nullptr, changed));
    orphan->Undo();
    EXPECT_TRUE(SameMaps(Own(*api), applied));
}

// Builds one message with the id consumed, as the kernel's EventHandler leaves it.
dom::MessageData Message(std::function<void(dom::ObserverProxy&)> const& push) {
    dom::ObserverProxy proxy;
    proxy.Begin();
    push(proxy);
    proxy.End();
    return proxy.TakeMessage();
}

TEST(SchematicObserverDecoding, PageEventDecodesItsNumberAndFailsWithItsOwnText) {
    unsigned char const page = qzkapp::ecad::SchematicScene::GetBaseEventId();
    SchematicRecorder recorder;
    auto good = Message([](dom::ObserverProxy& p) { p.PushUInt32Value(2); });
    dom::MessageReader goodReader(good);
    recorder.HandleEvent(page, goodReader);
    EXPECT_EQ(recorder.Take(), (std::vector<std::string>{"Page 2"}));

    auto empty = Message([](dom::ObserverProxy&) {});
    dom::MessageReader emptyReader(empty);
    std::string error = "no error";
    try {
        recorder.HandleEvent(page, emptyReader);
    } catch (std::runtime_error const& e) {
        error = e.what();
    }
    EXPECT_EQ(error, "Failed to retrieve page number.");
}

// A temporary design file, removed with the test.
class TempFile {
public:
    TempFile(std::string name, std::string const& text)
        : path_(testing::TempDir() + std::move(name)) {
        std::ofstream(path_) << text;
    }
    ~TempFile() { std::remove(path_.c_str()); }
    std::string const& Path() const { return path_; }

private:
    std::string path_;
};

TEST_F(SchematicTest, ABrokenSheetListOrABoardEndTheLoadWithTheLoadersNumberAndThePlace) {
    TempFile broken("broken-sheets.json",
                    R"({"formatVersion": 1, "kind": "schematic", "layers": [],
                        "sheets": [{"name": "Power"}, 17]})");
    struct Case {
        std::string path;
        std::string number;
        std::string place;
    };
    for (Case const& c : {Case{broken.Path(), "5", ": /sheets/1: "},
                          Case{Example("four-layer-board.json"), "4", ": /kind: "}}) {
        Kernel scene = Make(c.path, 77);
        ASSERT_TRUE(scene) << c.path;
        qzkapp::ecad::SchematicScene* api = Api(scene);
        Settle();
        EXPECT_FALSE(api->IsDesignLoaded()) << c.path;
        // An observer that comes later learns how the load ended.
        du::SmartPtr<SchematicRecorder> recorder(new SchematicRecorder());
        ASSERT_TRUE(api->RegisterObserver(*recorder));
        std::vector<std::string> const heard = recorder->Take();
        ASSERT_EQ(heard.size(), 1u) << c.path;
        EXPECT_EQ(heard[0].rfind("DesignLoaded " + c.number + " \"" + c.path + c.place, 0), 0u)
            << heard[0];
        EXPECT_TRUE(Own(*api).empty());

        // The scene stays usable: sheet changes and colour calls do not crash.
        View view = MakeView(scene, 1);
        api->PageNav(0, Base(view));
        api->PageNav(3, Base(view));
        api->ApplySublayerColorVisInfo({{7, qzk::ecad::ColorVisInfo()}}, nullptr);
        std::vector<short> order{1};
        api->GetDefaultDrawOrder(order);
        EXPECT_TRUE(order.empty());
        EXPECT_EQ(std::wstring(api->GetLayerName(7)), L"");
    }
}

} // namespace
} // namespace qztest
