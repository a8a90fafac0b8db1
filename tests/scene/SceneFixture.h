// A minimal concrete scene over a kernel board scene, and a recording observer: the smallest
// world in which BaseScene's own behaviour shows.
#pragma once

#include "dom/MessageReader.h"
#include "dom/ObserverProxy.h"
#include "du/SmartPtr.h"
#include "qzk/Instance.h"
#include "qzk/MemoryPoolAllocated.h"
#include "qzk/ViewableSource.h"
#include "qzk/World.h"
#include "qzk/ecad/EcadDesignData.h"
#include "qzk/ecad/PCBScene.h"
#include "qzk/ecad/SelectionItem.h"
#include "qzref/DesignFile.h"
#include "qzref/DesignObject.h"
#include "qzref/Journal.h"
#include "qzref/Messages.h"
#include "qzref/Platform.h"
#include "qzref/PreferencesControl.h"
#include "qzref/UndoControl.h"
#include "scene/BaseScene.h"
#include "scene/BaseSceneObserver.h"

#include <gtest/gtest.h>

#include "qzref/Inspect.h"
#include <string>
#include <vector>

namespace scenetest {

class TestScene : public qzkapp::ecad::BaseScene {
public:
    explicit TestScene(du::SmartPtr<qzk::ecad::BaseScene> const& kernel)
        : BaseScene(kernel, 0x01FFFFFF) {}

    qzk::ClassType const& GetClassType() const override {
        static qzk::ClassType const type(990);
        return type;
    }
    bool IsDesignLoaded() const override { return designLoaded; }
    void ViewCreated(du::SmartPtr<qzk::View> const& /*view*/) override { ++viewsCreated; }
    void GetDefaultDrawOrder(std::vector<short>& out) const override { out = defaultOrder; }
    wchar_t const* GetLayerName(short /*layer*/) const override { return L"Top"; }

    bool RegisterObserver(qzkapp::ecad::BaseSceneObserver& observer) {
        return _RegisterSceneObserver(this, observer);
    }
    bool UnregisterObserver(qzkapp::ecad::BaseSceneObserver& observer) {
        return _UnregisterSceneObserver(observer);
    }
    bool _IsLoadInProgress() const { return false; }
    void _InitObserver(qzkapp::ecad::BaseSceneObserver& observer) { observer.OnDrawOrderChanged(); }

    using BaseScene::_DrawOrderInvertLayers;
    using BaseScene::ASSOCHIGHLIGHTCOLOR_CHANGED_EVENT;
    using BaseScene::DRAWORDER_CHANGED_EVENT;
    using BaseScene::GetNextEventId;
    using BaseScene::GROUPCOLORVIS_CHANGED_EVENT;
    using BaseScene::HIGHLIGHT_CHANGED_EVENT;
    using BaseScene::SetDrawOrder;

    dg::Color Selection() const { return selectionColor; }
    dg::Color Preselection() const { return preselectionColor; }
    dg::Color Secondary() const { return secondaryColor; }
    bool PreselectionHighlighting() const { return preselectionHighlighting; }
    std::set<qzk::ecad::AppearanceItem> const& Associated() const { return associatedItems; }
    qzk::ecad::GroupCVInfoSet const& Pending() const { return pendingGroupCV; }

    bool designLoaded = false;
    int viewsCreated = 0;
    int destroyed = 0;
    std::vector<short> defaultOrder;

protected:
    // As a concrete scene ends: let the kernel go of us, end, then let go of the kernel scene.
    void _OnDestroy() override {
        ++destroyed;
        du::SmartPtr<qzk::ecad::BaseScene> kernel = kernelScene;
        kernel->SetApiScene(nullptr);
        OnDestroyQzkScene();
        kernelScene = nullptr;
    }
};

// Records every event as a short line, e.g. "highlight 2".
class Recorder : public qzkapp::ecad::BaseSceneObserver {
public:
    ~Recorder() override { DetachFromMessageLoop(); }
    void DetachObserver() override {}
    void OnDrawOrderChanged() override { log.push_back("draworder"); }
    void OnHighlightChanged(unsigned int count) override {
        log.push_back("highlight " + std::to_string(count));
    }
    void OnGroupColorVisChanged(unsigned int source) override {
        log.push_back("groups " + std::to_string(source));
    }
    void OnAssocHighlightColorChanged(unsigned int color) override {
        log.push_back("assoc " + qzref::Fmt(qzref::ColorWord{color}));
    }
    std::vector<std::string> Take() {
        qzref::Messages::PumpUntilIdle();
        std::vector<std::string> out;
        out.swap(log);
        return out;
    }
    std::vector<std::string> log;
};

inline std::string Board() {
    return std::string(QZ_EXAMPLES_DIR) + "/designs/four-layer-board.json";
}

// The journal lines since the last Clear whose operation is one of ops, without the
// receiver's name.
inline std::vector<std::string> Calls(std::vector<std::string> const& ops) {
    std::vector<std::string> out;
    for (std::string const& line : qzref::Journal::Lines()) {
        auto dot = line.find('.');
        auto paren = line.find('(');
        if (dot == std::string::npos || paren == std::string::npos || paren < dot) {
            continue;
        }
        std::string const op = line.substr(dot + 1, paren - dot - 1);
        for (std::string const& wanted : ops) {
            if (op == wanted) {
                out.push_back(line.substr(dot + 1));
            }
        }
    }
    return out;
}

// A running platform, a kernel board scene and a test scene bound to it, as the factory would
// leave them: only the kernel scene holds the API scene.
class SceneTest : public ::testing::Test {
protected:
    void SetUp() override {
        poolAtStart = qzk::MemoryPoolAllocated::GetLiveBlockCount();
        qzref::Platform::Start();
        qzk::ecad::PCBScene::Create(qzk::World::GetWorld(), qzk::Instance::Create("i"),
                                    qzk::ViewableSource::Create(Board()), kernel);
        {
            du::SmartPtr<TestScene> made(new TestScene(du::SmartPtr<qzk::ecad::BaseScene>(kernel)));
            made->Init();
            scene = made.Get();
        }
        design = du::DynamicCast<qzk::ecad::EcadDesignData>(qzref::ReadDesignFile(Board()).data);
        qzref::Messages::PumpUntilIdle();
        qzref::Journal::Clear();
    }

    void TearDown() override {
        if (kernel) {
            qzref::Inspect(*kernel).DestroyScene();
            kernel = nullptr;
        }
        design = nullptr;
        qzref::Platform::Stop();
    }

    // An ECAD selection item for a named object of the sample board.
    du::SmartPtr<qzk::SelectionItem> Item(char const* name) {
        auto* object = design->FindObject(name);
        EXPECT_NE(object, nullptr) << name;
        return du::SmartPtr<qzk::SelectionItem>(new qzk::ecad::SelectionItem(
            design, object, nullptr, nullptr, dg::DPoint3D::ORIGIN, 1, 2));
    }

    static qzk::ecad::AppearanceItem Look(du::SmartPtr<qzk::SelectionItem> const& item) {
        return qzk::ecad::AppearanceItem(du::DynamicCast<qzk::ecad::SelectionItem>(item));
    }

    std::vector<short> Order() const {
        std::vector<short> out;
        scene->GetDrawOrder(out);
        return out;
    }

    unsigned long long poolAtStart = 0;
    du::SmartPtr<qzk::ecad::PCBScene> kernel;
    TestScene* scene = nullptr; // owned by the kernel scene
    du::SmartPtr<qzk::ecad::EcadDesignData> design;
};

} // namespace scenetest
