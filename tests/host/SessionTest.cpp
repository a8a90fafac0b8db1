// A session's commands on a real board scene of the layer: what they change, how a bad line is
// reported, and that an expectation can fail.
#include "Session.h"

#include "board/PCBScene.h"
#include "component/EntryPoints.h"
#include "qzk/Instance.h"
#include "qzk/ViewableSource.h"
#include "qzk/World.h"
#include "qzk/ecad/PCBScene.h"
#include "qzkapp/SceneApiFactory.h"
#include "qzref/LoaderControl.h"
#include "qzref/Messages.h"
#include "qzref/Platform.h"
#include "qzref/UndoControl.h"

#include <gtest/gtest.h>

#include "qzref/Inspect.h"
#include <sstream>

namespace {

class SessionTest : public ::testing::Test {
protected:
    void SetUp() override {
        qzref::Platform::Start();
        du::SmartPtr<du::RefCounted> component;
        ASSERT_TRUE(QZDllCreateComponent("qzapi", nullptr, "sceneapifactory", &component));
        auto* factory = dynamic_cast<qzkapp::SceneApiFactory*>(component.Get());
        ASSERT_NE(factory, nullptr);
        bool flag = false;
        auto const created =
            factory->CreateScene(qzk::World::GetWorld(), qzk::Instance::Create("test"),
                                 qzk::ViewableSource::Create(
                                     du::Symbol(QZ_EXAMPLES_DIR "/designs/four-layer-board.json")),
                                 74, flag);
        scene_ = du::DynamicCast<qzk::ecad::PCBScene>(created);
        ASSERT_TRUE(scene_);
        api_ = static_cast<qzkapp::ecad::PCBScene*>(scene_->GetApiScene());
        qzref::LoaderControl::WaitUntilIdle();
        qzref::Messages::PumpUntilIdle();
        ASSERT_TRUE(api_->IsDesignLoaded());
        out_.reset(std::tmpfile());
        session_ = std::make_unique<qzhost::Session>(*api_, scene_, out_.get());
    }

    void TearDown() override {
        session_.reset();
        out_.reset();
        qzref::UndoControl::Clear();
        if (scene_) {
            qzref::Inspect(*scene_).DestroyScene();
        }
        scene_ = nullptr;
        qzref::Messages::PumpUntilIdle();
        qzref::Platform::Stop();
    }

    // Runs the script; returns "" when it ran, else the error.
    std::string Run(std::string const& script) {
        std::istringstream in(script);
        std::string error;
        return session_->Run(in, "t.qzs", error) ? std::string() : error;
    }

    std::string Printed() {
        std::rewind(out_.get());
        std::string text;
        char buffer[512];
        while (std::fgets(buffer, sizeof buffer, out_.get()) != nullptr) {
            text += buffer;
        }
        return text;
    }

    du::SmartPtr<qzk::ecad::PCBScene> scene_;
    qzkapp::ecad::PCBScene* api_ = nullptr;
    struct CloseFile {
        void operator()(std::FILE* file) const {
            std::fclose(file);
        } // NOLINT(cppcoreguidelines-owning-memory)
    };
    std::unique_ptr<std::FILE, CloseFile> out_;
    std::unique_ptr<qzhost::Session> session_;
};

TEST_F(SessionTest, CommandsChangeTheSceneAndUndoRestoresIt) {
    std::vector<short> before;
    api_->GetDrawOrder(before);
    ASSERT_GE(before.size(), 2u);

    EXPECT_EQ(Run("highlight U1 R1\n"
                  "dehighlight R1\n"
                  "print highlights\n"
                  "sublayer 5 33 color 0x01123456\n"
                  "sublayer 2 10 visible no\n"
                  "draw-order invert\n"
                  "rotate 90\n"),
              "");
    qzk::ecad::ItemContainer<qzk::ecad::HighlightItem> highlights;
    api_->GetHighlights(highlights);
    EXPECT_EQ(highlights.size(), 1u);
    EXPECT_NE(Printed().find("highlights: U1\n"), std::string::npos) << Printed();
    qzk::ecad::SublayerPCB_CVSet set;
    api_->GetColorVisInfo(set);
    auto const signal = set.find(qzk::ecad::SublayerPCB_CV(5, 33, 0, false));
    ASSERT_NE(signal, set.end());
    EXPECT_EQ(signal->color, 0x01123456u);
    auto const pads = set.find(qzk::ecad::SublayerPCB_CV(2, 10, 0, false));
    ASSERT_NE(pads, set.end());
    EXPECT_FALSE(pads->visible);
    EXPECT_TRUE(api_->GetInvertLayers());

    // Every command above that changes state is one operation on the undo list.
    EXPECT_EQ(Run("undo\nundo\nundo\nundo\nundo\nundo\n"), "");
    api_->GetHighlights(highlights);
    EXPECT_EQ(highlights.size(), 0u);
    EXPECT_FALSE(api_->GetInvertLayers());
    api_->GetColorVisInfo(set);
    EXPECT_NE(set.find(qzk::ecad::SublayerPCB_CV(5, 33, 0, false))->color, 0x01123456u);
    EXPECT_TRUE(set.find(qzk::ecad::SublayerPCB_CV(2, 10, 0, false))->visible);

    EXPECT_EQ(Run("draw-order move " + std::to_string(before.back()) + " 0\n"), "");
    std::vector<short> moved;
    api_->GetDrawOrder(moved);
    ASSERT_EQ(moved.size(), before.size());
    EXPECT_EQ(moved.front(), before.back());
    EXPECT_EQ(Run("draw-order reset\n"), "");
    std::vector<short> reset;
    api_->GetDrawOrder(reset);
    EXPECT_EQ(reset, before);
}

TEST_F(SessionTest, SelectionGoesThroughTheSelectionManagerAndShowsAsALook) {
    EXPECT_EQ(Run("select C1\n"
                  "preselect VCC\n"
                  "expect selection = C1\n"
                  "expect preselection = VCC\n"),
              "");
    EXPECT_EQ(Run("print look C1\n"), "");
    EXPECT_EQ(Printed().find("look C1: selection none"), std::string::npos) << Printed();
    EXPECT_EQ(Run("clear-selection\nexpect selection = none\nexpect look C1 = selection none "
                  "highlight none group none\n"),
              "");
}

TEST_F(SessionTest, BadLinesNameLineAndColumnAndStopTheSession) {
    EXPECT_EQ(Run("\n  frobnicate U1\nhighlight U1\n"), "t.qzs:2:3: unknown command 'frobnicate'");
    EXPECT_EQ(Run("  sheet go 1\n"),
              "t.qzs:1:3: 'sheet' is not available on a board scene; it needs a schematic scene");
    EXPECT_EQ(Run("expect sheets = none\n"),
              "t.qzs:1:8: 'sheets' is not available on a board scene; it needs a schematic scene");
    EXPECT_EQ(Run("print overlays extra\n"), "t.qzs:1:7: expected rows or 'overlays' takes no "
                                             "arguments")
        << "a query this scene answers keeps its own message";
    EXPECT_EQ(Run("overlay add missing.gbr\n").rfind("t.qzs:1:13: cannot read the overlay: ", 0),
              0u);
    EXPECT_EQ(Run("image color Nobody 0x01000000\n"), "t.qzs:1:13: no image named 'Nobody'");
    EXPECT_EQ(Run("crosshair at 1 north\n"), "t.qzs:1:16: expected a number, not 'north'");
    EXPECT_EQ(Run("highlight U1 NOPE\n"), "t.qzs:1:14: no object named 'NOPE' in the design");
    EXPECT_EQ(Run("highlight\n"), "t.qzs:1:10: expected one or more object names");
    EXPECT_EQ(Run("rotate ninety\n"), "t.qzs:1:8: expected an angle in degrees, not 'ninety'");
    EXPECT_EQ(Run("sublayer 5 33 color red\n"),
              "t.qzs:1:21: expected a colour word such as 0x010000FF, not 'red'");
    EXPECT_EQ(Run("sublayer 5 99 visible no\n"), "t.qzs:1:10: no sublayer (5, 99) on this board");
    EXPECT_EQ(Run("draw-order sideways\n"),
              "t.qzs:1:12: expected move LAYER INDEX, reset, invert or apply LAYER..., not "
              "'sideways'");
    EXPECT_EQ(Run("select \"U1\n"), "t.qzs:1:8: unterminated quote");
    EXPECT_EQ(Run("expect highlights\n"),
              "t.qzs:1:18: expected a query, '=' and the value it should have");
    EXPECT_EQ(Run("flip now\n"), "t.qzs:1:6: too many words; expected no words after flip");
    EXPECT_EQ(Run("undo\n"), "t.qzs:1:1: nothing to undo");

    // The session stops at the failing line: the highlight after it never ran.
    qzk::ecad::ItemContainer<qzk::ecad::HighlightItem> highlights;
    api_->GetHighlights(highlights);
    EXPECT_EQ(highlights.size(), 0u);

    EXPECT_EQ(Run("highlight U1\nexpect highlights = R1\n"),
              "t.qzs:2:21: expectation failed: highlights is 'U1', expected 'R1'");
    EXPECT_EQ(Run("expect sublayer 5 = x\n"),
              "t.qzs:1:8: expected 'sublayer' takes a layer and a sublayer handle");
}

} // namespace
