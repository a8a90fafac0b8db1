// What the board-against-schematic compare tests share: the scene made through the factory from
// the sample board and the sample schematic in either order, and an observer that writes down
// what it heard.
#pragma once

#include "compare/PCBSchCompareScene.h"
#include "compare/PCBSchCompareSceneObserver.h"
#include "design/SceneHarness.h"
#include "qzk/ecad/PCBSchCompareScene.h"

#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace qztest {

class BoardSchematicObserver : public qzkapp::ecad::PCBSchCompareSceneObserver {
public:
    ~BoardSchematicObserver() override { DetachFromMessageLoop(); }

    void DetachObserver() override { Add("Detach"); }
    void OnDrawOrderChanged() override { Add("DrawOrder"); }
    void OnGroupColorVisChanged(unsigned int source) override {
        Add("GroupCV " + std::to_string(source));
    }
    void OnDesignLoaded(bool second, unsigned short error, du::Symbol const& text) override {
        Add(std::string("DesignLoaded ") + (second ? "second " : "first ") + std::to_string(error) +
            " \"" + text.str() + "\"");
    }
    void OnSublayerColorVisChanged(unsigned int source) override {
        Add("SublayerCV " + std::to_string(source));
    }
    void OnHighlightOnlyVisibleChanged(bool const& on, unsigned int const& source) override {
        Add("HighlightOnlyVisible " + std::string(on ? "true " : "false ") +
            std::to_string(source));
    }
    void OnOrientationChanged(unsigned int flipped) override {
        Add("Orientation " + std::to_string(flipped));
    }
    void OnRotationChanged(short degrees) override { Add("Rotation " + std::to_string(degrees)); }
    void OnIsolateOnlyVisibleChanged(bool const& on, unsigned int const& source) override {
        Add("IsolateOnlyVisible " + std::string(on ? "true " : "false ") + std::to_string(source));
    }
    void OnPageChanged(unsigned int page) override { Add("Page " + std::to_string(page)); }
    void OnPCBSublayerColorVisChanged(unsigned int source) override {
        Add("PCBSublayerCV " + std::to_string(source));
    }
    void OnSchSublayerColorVisChanged(unsigned int source) override {
        Add("SchSublayerCV " + std::to_string(source));
    }
    void OnPcbDrawOrderChanged() override { Add("PcbDrawOrder"); }
    void OnSchDrawOrderChanged() override { Add("SchDrawOrder"); }

    std::vector<std::string> Take() {
        std::lock_guard lock(mutex_);
        return std::exchange(calls_, {});
    }

private:
    void Add(std::string call) {
        std::lock_guard lock(mutex_);
        calls_.push_back(std::move(call));
    }

    std::mutex mutex_;
    std::vector<std::string> calls_;
};

inline std::string const kBoard = Example("four-layer-board.json");
inline std::string const kSchematic = Example("three-sheet-schematic.json");

class BoardSchematicTest : public SceneTest {
protected:
    void TearDown() override {
        for (auto const& scene : compares_) {
            qzref::Inspect(*scene).DestroyScene();
        }
        compares_.clear();
        SceneTest::TearDown();
    }

    // Made by the factory (kind 171, two designs) and loaded through the loader; ended after the
    // test. boardFirst puts the board first.
    du::SmartPtr<qzk::ecad::PCBSchCompareScene> MakeLoaded(bool boardFirst) {
        auto scene = Make(boardFirst ? kBoard : kSchematic, boardFirst ? kSchematic : kBoard);
        Settle();
        return scene;
    }

    du::SmartPtr<qzk::ecad::PCBSchCompareScene> Make(std::string const& first,
                                                     std::string const& second) {
        auto factory = du::MakeCounted<qzkapp::ecad::SceneApiFactory>();
        du::SmartPtr<qzk::Scene> made = factory->CreateScene(
            qzk::World::GetWorld(), qzk::Instance::Create("first"),
            qzk::ViewableSource::Create(du::Symbol(first)), qzk::Instance::Create("second"),
            qzk::ViewableSource::Create(du::Symbol(second)), 171);
        auto scene = du::DynamicCast<qzk::ecad::PCBSchCompareScene>(made);
        if (scene) {
            compares_.push_back(scene);
        }
        return scene;
    }

    static qzkapp::ecad::PCBSchCompareScene*
    Api(du::SmartPtr<qzk::ecad::PCBSchCompareScene> const& scene) {
        return dynamic_cast<qzkapp::ecad::PCBSchCompareScene*>(scene->GetApiScene());
    }

    static du::SmartPtr<qzk::Operation>
    NewOperation(du::SmartPtr<qzk::ecad::PCBSchCompareScene> const& scene) {
        return du::MakeCounted<qzk::Operation>("change", du::SmartPtr<qzk::Scene>(scene), false);
    }

    static std::vector<short> PCBOrder(qzkapp::ecad::PCBSchCompareScene const& api) {
        std::vector<short> out;
        api.GetPCBDrawOrder(out);
        return out;
    }
    static std::vector<short> SchOrder(qzkapp::ecad::PCBSchCompareScene const& api) {
        std::vector<short> out;
        api.GetSchDrawOrder(out);
        return out;
    }

    std::vector<du::SmartPtr<qzk::ecad::PCBSchCompareScene>> compares_;
};

} // namespace qztest
