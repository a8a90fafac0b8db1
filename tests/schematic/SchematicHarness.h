// What the schematic scene tests share: a started platform, schematic scenes and their views made
// the way a host makes them (through the factory), and an observer that writes down what it heard.
#pragma once

#include "component/SceneApiFactory.h"
#include "dg/Location.h"
#include "qzk/Instance.h"
#include "qzk/ViewableSource.h"
#include "qzk/World.h"
#include "qzk/ecad/SchematicScene.h"
#include "qzk/ecad/SchematicView.h"
#include "qzref/Journal.h"
#include "qzref/LoaderControl.h"
#include "qzref/Messages.h"
#include "qzref/Platform.h"
#include "qzref/UndoControl.h"
#include "schematic/SchematicScene.h"
#include "schematic/SchematicSceneObserver.h"

#include <gtest/gtest.h>

#include "qzref/Inspect.h"
#include <algorithm>
#include <mutex>
#include <string>
#include <vector>

namespace qztest {

inline std::string Example(char const* name) {
    return std::string(QZ_EXAMPLES_DIR) + "/designs/" + name;
}

// Writes every handler call as one line, in order.
class SchematicRecorder : public qzkapp::ecad::SchematicSceneObserver {
public:
    ~SchematicRecorder() override { DetachFromMessageLoop(); }

    void DetachObserver() override {}
    void OnDrawOrderChanged() override { Add("DrawOrder"); }
    void OnDesignLoaded(unsigned short error, du::Symbol const& text) override {
        Add("DesignLoaded " + std::to_string(error) + " \"" + text.str() + "\"");
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

class SchematicTest : public ::testing::Test {
protected:
    using Kernel = du::SmartPtr<qzk::ecad::SchematicScene>;
    using View = du::SmartPtr<qzk::ecad::SchematicView>;

    void SetUp() override {
        qzref::Messages::DiscardPending();
        qzref::UndoControl::Clear();
    }
    void TearDown() override {
        qzref::LoaderControl::SetHolding(false);
        for (auto const& scene : scenes_) {
            qzref::Inspect(*scene).DestroyScene();
        }
        scenes_.clear();
        qzref::Messages::PumpUntilIdle();
        qzref::Messages::TakeHandlerErrors();
    }

    // A schematic scene made by the factory; the fixture ends it after the test.
    Kernel Make(std::string const& path, unsigned int kind = 73) {
        bool flag = false;
        du::SmartPtr<qzk::Scene> scene =
            factory_->CreateScene(qzk::World::GetWorld(), qzk::Instance::Create("schematic"),
                                  qzk::ViewableSource::Create(du::Symbol(path)), kind, flag);
        auto schematic = du::DynamicCast<qzk::ecad::SchematicScene>(scene);
        if (schematic) {
            scenes_.push_back(schematic);
        }
        return schematic;
    }

    static qzkapp::ecad::SchematicScene* Api(Kernel const& scene) {
        return dynamic_cast<qzkapp::ecad::SchematicScene*>(scene->GetApiScene());
    }

    // A view as the host makes one: the kernel adds it to the scene, the factory tells the scene.
    View MakeView(Kernel const& scene, unsigned int pages) {
        View view = qzk::ecad::SchematicView::Create(*scene, pages);
        factory_->ViewCreated(du::SmartPtr<qzk::Scene>(scene), du::SmartPtr<qzk::View>(view));
        return view;
    }

    static du::SmartPtr<qzk::ecad::BaseView> Base(View const& view) {
        return du::SmartPtr<qzk::ecad::BaseView>(view);
    }

    // Places the view as a user who pans and zooms would.
    static void Place(View const& view, double x, double width) {
        view->StoreLocation(dg::Location(dg::DPoint2D(x, 0.0), width));
        view->SetOrthoWidth(width);
    }
    static double CentreX(View const& view) { return qzref::Inspect(*view).GetLocation().center.x; }
    static double Width(View const& view) {
        double width = 0.0;
        view->GetOrthoWidth(width);
        return width;
    }

    static void Settle() {
        qzref::LoaderControl::WaitUntilIdle();
        qzref::Messages::PumpUntilIdle();
    }

    qzref::ScopedPlatform platform_;
    du::SmartPtr<qzkapp::ecad::SceneApiFactory> factory_{new qzkapp::ecad::SceneApiFactory()};
    std::vector<Kernel> scenes_;
};

} // namespace qztest
