// What the schematic compare tests share: schematic compares made through the factory the way
// a host makes them, in either order of the designs, a view with a page per sheet, and an
// observer that writes down what it heard.
#pragma once

#include "compare/CompareHarness.h"
#include "compare/SchematicCompareScene.h"
#include "compare/SchematicCompareSceneObserver.h"
#include "qzk/ecad/SchematicCompareScene.h"
#include "qzk/ecad/SchematicCompareView.h"
#include "qzref/PreferencesControl.h"

namespace qztest {

class SchematicCompareRecorder : public qzkapp::ecad::SchematicCompareSceneObserver {
public:
    ~SchematicCompareRecorder() override { DetachFromMessageLoop(); }

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
    void OnPageChanged(unsigned int page) override { Add("Page " + std::to_string(page)); }

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

// The record of a handle as "first second common mode flag visible".
inline std::string RecordText(qzk::ecad::CompareColorVis const& record) {
    char text[64];
    std::snprintf(text, sizeof text, "%08X %08X %08X %u %d %d", record.firstColor,
                  record.secondColor, record.commonColor,
                  static_cast<unsigned int>(record.showMode), record.flag ? 1 : 0,
                  record.visible ? 1 : 0);
    return text;
}

class SchematicCompareTest : public SceneTest {
protected:
    using Kernel = du::SmartPtr<qzk::ecad::SchematicCompareScene>;
    using Map = qzkapp::ecad::SchematicCompareScene::CompareMap;

    void SetUp() override {
        SceneTest::SetUp();
        qzref::PreferencesControl::SetColorWord("Compare/Ecad_Compare/compare_color_a", 0x01112233);
        qzref::PreferencesControl::SetColorWord("Compare/Ecad_Compare/compare_color_b", 0x01445566);
        qzref::PreferencesControl::SetColorWord("Compare/Ecad_Compare/compare_color_common",
                                                0x01778899);
    }
    void TearDown() override {
        for (auto const& scene : compares_) {
            qzref::Inspect(*scene).DestroyScene();
        }
        compares_.clear();
        qzref::PreferencesControl::Clear();
        SceneTest::TearDown();
    }

    // Made by the factory (kind 161, two designs); ended after the test.
    Kernel MakeSchematicCompare(std::string const& first, std::string const& second) {
        du::SmartPtr<qzk::Scene> scene = factory_->CreateScene(
            qzk::World::GetWorld(), qzk::Instance::Create("first"),
            qzk::ViewableSource::Create(du::Symbol(first)), qzk::Instance::Create("second"),
            qzk::ViewableSource::Create(du::Symbol(second)), 161);
        return Keep(du::DynamicCast<qzk::ecad::SchematicCompareScene>(scene));
    }

    Kernel MakeSchematicCompareFromEntry(du::SmartPtr<qzk::AnnoSetTableEntry> const& entry) {
        return Keep(du::DynamicCast<qzk::ecad::SchematicCompareScene>(
            factory_->CreateScene(qzk::World::GetWorld(), entry, 161)));
    }

    // A view as the host makes one: the kernel adds it, the factory tells the scene.
    du::SmartPtr<qzk::ecad::SchematicCompareView> MakeView(Kernel const& scene,
                                                           unsigned int pages) {
        auto view = qzk::ecad::SchematicCompareView::Create(*scene, pages);
        factory_->ViewCreated(du::SmartPtr<qzk::Scene>(scene), du::SmartPtr<qzk::View>(view));
        return view;
    }

    static qzkapp::ecad::SchematicCompareScene* Api(Kernel const& scene) {
        return dynamic_cast<qzkapp::ecad::SchematicCompareScene*>(scene->GetApiScene());
    }

    // The records as handle -> RecordText, from the API scene and as the kernel was told.
    static std::map<short, std::string> ApiRecords(Kernel const& scene) {
        Map map;
        Api(scene)->GetSublayerColorVisInfo(map);
        return Texts(map);
    }
    static std::map<short, std::string> KernelRecords(Kernel const& scene) {
        return Texts(qzref::Inspect(*scene).GetSublayerColorVisInfo());
    }
    static std::map<short, std::string> Texts(Map const& map) {
        std::map<short, std::string> out;
        for (auto const& [handle, record] : map) {
            out[handle] = record ? RecordText(*record) : std::string("null");
        }
        return out;
    }

    static du::SmartPtr<qzk::Operation> NewOperation(Kernel const& scene) {
        return du::MakeCounted<qzk::Operation>("colour", du::SmartPtr<qzk::Scene>(scene), false);
    }

    void EndCompare(Kernel const& scene) {
        qzref::Inspect(*scene).DestroyScene();
        compares_.erase(std::remove(compares_.begin(), compares_.end(), scene), compares_.end());
    }

    du::SmartPtr<qzkapp::ecad::SceneApiFactory> factory_{new qzkapp::ecad::SceneApiFactory()};

private:
    Kernel Keep(Kernel scene) {
        if (scene) {
            compares_.push_back(scene);
        }
        return scene;
    }

    std::vector<Kernel> compares_;
};

} // namespace qztest
