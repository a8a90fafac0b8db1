// What the design and board scene tests share: a started platform, board scenes made through
// the factory the way a host makes them, and an observer that writes down what it heard.
#pragma once

#include "board/PCBScene.h"
#include "board/PCBSceneObserver.h"
#include "component/SceneApiFactory.h"
#include "qzk/Instance.h"
#include "qzk/MemoryPoolAllocated.h"
#include "qzk/ViewableSource.h"
#include "qzk/World.h"
#include "qzk/ecad/PCBScene.h"
#include "qzref/Journal.h"
#include "qzref/LoaderControl.h"
#include "qzref/Messages.h"
#include "qzref/Platform.h"
#include "qzref/UndoControl.h"

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

// Writes every handler call as one line, in order; safe to read while another thread delivers.
class RecordingObserver : public qzkapp::ecad::PCBSceneObserver {
public:
    ~RecordingObserver() override { DetachFromMessageLoop(); }

    void DetachObserver() override { Add("Detach"); }
    void OnDrawOrderChanged() override { Add("DrawOrder"); }
    void OnGroupColorVisChanged(unsigned int source) override {
        Add("GroupCV " + std::to_string(source));
    }
    void OnDesignLoaded(unsigned short error, du::Symbol const& text) override {
        Add("DesignLoaded " + std::to_string(error) + " \"" + text.str() + "\"");
    }
    void OnSublayerColorVisChanged(unsigned int source) override {
        Add("SublayerCV " + std::to_string(source));
    }
    void OnHighlightOnlyVisibleChanged(bool const& on, unsigned int const& source) override {
        Add("HighlightOnlyVisible " + std::string(on ? "true " : "false ") +
            std::to_string(source));
    }
    void OnIsolateOnlyVisibleChanged(bool const& on, unsigned int const& source) override {
        Add("IsolateOnlyVisible " + std::string(on ? "true " : "false ") + std::to_string(source));
    }
    void OnImageChanged(unsigned int source) override { Add("Image " + std::to_string(source)); }
    void OnOverlayChanged(unsigned int source) override {
        Add("Overlay " + std::to_string(source));
    }
    void OnOrientationChanged(unsigned int flipped) override {
        Add("Orientation " + std::to_string(flipped));
    }
    void OnRotationChanged(short degrees) override { Add("Rotation " + std::to_string(degrees)); }

    std::vector<std::string> Calls() const {
        std::lock_guard lock(mutex_);
        return calls_;
    }
    std::vector<std::string> Take() {
        std::lock_guard lock(mutex_);
        return std::exchange(calls_, {});
    }

private:
    void Add(std::string call) {
        std::lock_guard lock(mutex_);
        calls_.push_back(std::move(call));
    }

    mutable std::mutex mutex_;
    std::vector<std::string> calls_;
};

class SceneTest : public ::testing::Test {
protected:
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

    // A board scene made by the factory (kind 74); the fixture ends it after the test unless
    // the test ends it first with End.
    du::SmartPtr<qzk::ecad::PCBScene> MakeBoard(std::string const& path) {
        du::SmartPtr<qzkapp::ecad::SceneApiFactory> factory(new qzkapp::ecad::SceneApiFactory());
        bool flag = false;
        du::SmartPtr<qzk::Scene> scene =
            factory->CreateScene(qzk::World::GetWorld(), qzk::Instance::Create("board"),
                                 qzk::ViewableSource::Create(du::Symbol(path)), 74, flag);
        auto board = du::DynamicCast<qzk::ecad::PCBScene>(scene);
        if (board) {
            scenes_.push_back(board);
        }
        return board;
    }

    static qzkapp::ecad::PCBScene* Api(du::SmartPtr<qzk::ecad::PCBScene> const& scene) {
        return dynamic_cast<qzkapp::ecad::PCBScene*>(scene->GetApiScene());
    }

    void End(du::SmartPtr<qzk::ecad::PCBScene> const& scene) {
        qzref::Inspect(*scene).DestroyScene();
        scenes_.erase(std::remove(scenes_.begin(), scenes_.end(), scene), scenes_.end());
    }

    // Lets the loader read what it was given and delivers the completions and events.
    static void Settle() {
        qzref::LoaderControl::WaitUntilIdle();
        qzref::Messages::PumpUntilIdle();
    }

    static bool Contains(std::vector<std::string> const& lines, std::string const& part) {
        return std::any_of(lines.begin(), lines.end(), [&](std::string const& line) {
            return line.find(part) != std::string::npos;
        });
    }
    // Index of the first line holding part, or -1.
    static long IndexOf(std::vector<std::string> const& lines, std::string const& part) {
        for (std::size_t i = 0; i < lines.size(); ++i) {
            if (lines[i].find(part) != std::string::npos) {
                return static_cast<long>(i);
            }
        }
        return -1;
    }

    // The lines whose operation is one of ops, without their receivers ("SetIsolated([U1])").
    static std::vector<std::string> Ops(std::vector<std::string> const& lines,
                                        std::vector<std::string> const& ops) {
        std::vector<std::string> out;
        for (std::string const& line : lines) {
            auto const paren = line.find('(');
            auto const dot = line.rfind('.', paren);
            if (paren == std::string::npos || dot == std::string::npos) {
                continue;
            }
            std::string const call = line.substr(dot + 1);
            if (std::find(ops.begin(), ops.end(), call.substr(0, paren - dot - 1)) != ops.end()) {
                out.push_back(call);
            }
        }
        return out;
    }

    // The ids of the design scenes' events, as the board scene numbers them.
    static unsigned char DesignLoadedId() { return qzkapp::ecad::PCBScene::GetBaseEventId() - 3; }

    qzref::ScopedPlatform platform_;
    std::vector<du::SmartPtr<qzk::ecad::PCBScene>> scenes_;
};

} // namespace qztest
