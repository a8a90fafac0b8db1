// What the compare scene tests share: board compare scenes made through the factory the way a
// host makes them, an observer that writes down what it heard, the rows written as text, and
// the colour scheme's environment variable, read anew for every test.
#pragma once

#include "compare/CompareColorScheme.h"
#include "compare/PCBCompareScene.h"
#include "compare/PCBCompareSceneObserver.h"
#include "design/SceneHarness.h"
#include "dp/Environment.h"
#include "qzk/AnnoSetTableEntry.h"
#include "qzk/ecad/PCBCompareScene.h"
#include "qzk/ecad/SublayerPCBCompareCV.h"

#include <cstdio>

namespace qztest {

class CompareObserver : public qzkapp::ecad::PCBCompareSceneObserver {
public:
    ~CompareObserver() override { DetachFromMessageLoop(); }

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
    void OnOrientationChanged(unsigned int flipped) override {
        Add("Orientation " + std::to_string(flipped));
    }
    void OnRotationChanged(short degrees) override { Add("Rotation " + std::to_string(degrees)); }
    void OnHighlightOnlyVisibleChanged(bool const& on, unsigned int const& source) override {
        Add("HighlightOnlyVisible " + std::string(on ? "true " : "false ") +
            std::to_string(source));
    }
    void OnIsolateOnlyVisibleChanged(bool const& on, unsigned int const& source) override {
        Add("IsolateOnlyVisible " + std::string(on ? "true " : "false ") + std::to_string(source));
    }

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

// A row as "first|second colours mode flag visible", each side "layer,sublayer" or "-".
inline std::string RowText(qzk::ecad::CompareColorVis const& row) {
    auto const* pair = dynamic_cast<qzk::ecad::SublayerPCBCompare const*>(&row);
    auto side = [](bool has, qzk::ecad::SublayerPCBBase const& key) {
        return has ? std::to_string(key.layer) + "," + std::to_string(key.sublayer)
                   : std::string("-");
    };
    char colours[64];
    std::snprintf(colours, sizeof colours, "%08X %08X %08X %u %d %d", row.firstColor,
                  row.secondColor, row.commonColor, static_cast<unsigned int>(row.showMode),
                  row.flag ? 1 : 0, row.visible ? 1 : 0);
    std::string const keys = pair == nullptr ? std::string("?")
                                             : side(pair->HasFirst(), pair->firstSublayer) + "|" +
                                                   side(pair->HasSecond(), pair->secondSublayer);
    return keys + " " + colours;
}

inline std::vector<std::string> RowTexts(qzk::ecad::CompareColorVisPtrVec const& rows) {
    std::vector<std::string> out;
    for (auto const& row : rows) {
        out.push_back(row ? RowText(*row) : std::string("null"));
    }
    return out;
}

// Whether a row (or its keys alone) has a sublayer on both sides.
inline bool IsPair(std::string const& row) {
    std::string const keys = row.substr(0, row.find(' '));
    auto const bar = keys.find('|');
    return bar != std::string::npos && keys.substr(0, bar) != "-" && keys.substr(bar + 1) != "-";
}

// The row whose keys are keys ("3,33|3,33"), or "" when there is none.
inline std::string FindRow(std::vector<std::string> const& rows, std::string const& keys) {
    for (std::string const& row : rows) {
        if (row.rfind(keys + " ", 0) == 0) {
            return row;
        }
    }
    return std::string();
}

class CompareTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        SetScheme(nullptr);
    }
    void TearDown() override {
        for (auto const& scene : compares_) {
            qzref::Inspect(*scene).DestroyScene();
        }
        compares_.clear();
        SetScheme(nullptr);
        SceneTest::TearDown();
    }

    // The colour scheme variable for the next scene that loads its rows; null unsets it.
    static void SetScheme(char const* value) {
        if (value == nullptr) {
            dp::Environment::Unset(qzkapp::ecad::kCompareColorSchemeVariable);
        } else {
            dp::Environment::Set(qzkapp::ecad::kCompareColorSchemeVariable, value);
        }
        qzkapp::ecad::ForgetCompareColorScheme();
    }

    // A board compare made by the factory (kind 159, two designs); ended after the test.
    du::SmartPtr<qzk::ecad::PCBCompareScene> MakeCompare(std::string const& first,
                                                         std::string const& second) {
        auto factory = du::MakeCounted<qzkapp::ecad::SceneApiFactory>();
        du::SmartPtr<qzk::Scene> scene = factory->CreateScene(
            qzk::World::GetWorld(), qzk::Instance::Create("first"),
            qzk::ViewableSource::Create(du::Symbol(first)), qzk::Instance::Create("second"),
            qzk::ViewableSource::Create(du::Symbol(second)), 159);
        return Keep(du::DynamicCast<qzk::ecad::PCBCompareScene>(scene));
    }

    // The same from a saved comparison's entry (kind 159, table entry).
    du::SmartPtr<qzk::ecad::PCBCompareScene>
    MakeCompareFromEntry(du::SmartPtr<qzk::AnnoSetTableEntry> const& entry) {
        auto factory = du::MakeCounted<qzkapp::ecad::SceneApiFactory>();
        du::SmartPtr<qzk::Scene> scene = factory->CreateScene(qzk::World::GetWorld(), entry, 159);
        return Keep(du::DynamicCast<qzk::ecad::PCBCompareScene>(scene));
    }

    // Both designs in memory, kept there by a board scene each, so that a compare of them
    // takes them over inside CreateScene.
    void HoldInMemory(std::string const& first, std::string const& second) {
        MakeBoard(first);
        MakeBoard(second);
        Settle();
    }

    static qzkapp::ecad::PCBCompareScene*
    Api(du::SmartPtr<qzk::ecad::PCBCompareScene> const& scene) {
        return dynamic_cast<qzkapp::ecad::PCBCompareScene*>(scene->GetApiScene());
    }

    static std::vector<std::string> ApiRows(du::SmartPtr<qzk::ecad::PCBCompareScene> const& s) {
        qzk::ecad::CompareColorVisPtrVec rows;
        Api(s)->GetColorVisInfo(rows);
        return RowTexts(rows);
    }
    static std::vector<std::string> KernelRows(du::SmartPtr<qzk::ecad::PCBCompareScene> const& s) {
        return RowTexts(qzref::Inspect(*s).GetColorVisInfo());
    }

    void EndCompare(du::SmartPtr<qzk::ecad::PCBCompareScene> const& scene) {
        qzref::Inspect(*scene).DestroyScene();
        compares_.erase(std::remove(compares_.begin(), compares_.end(), scene), compares_.end());
    }

    // The load notice's id as the compare family numbers it.
    static std::string LoadNotice() {
        return ".PostObservableEvent(" +
               std::to_string(qzkapp::ecad::PCBCompareScene::GetBaseEventId() - 2) + ")";
    }

    static du::SmartPtr<qzk::Operation>
    NewOperation(du::SmartPtr<qzk::ecad::PCBCompareScene> const& scene) {
        return du::MakeCounted<qzk::Operation>("colour", du::SmartPtr<qzk::Scene>(scene), false);
    }

private:
    du::SmartPtr<qzk::ecad::PCBCompareScene> Keep(du::SmartPtr<qzk::ecad::PCBCompareScene> s) {
        if (s) {
            compares_.push_back(s);
        }
        return s;
    }

    std::vector<du::SmartPtr<qzk::ecad::PCBCompareScene>> compares_;
};

} // namespace qztest
