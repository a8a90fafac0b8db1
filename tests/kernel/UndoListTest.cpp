// The kernel's undo list: order of steps, the redo list, names, and steps that record.
#include "qzk/Instance.h"
#include "qzk/Operation.h"
#include "qzk/OperationStep.h"
#include "qzk/ViewableSource.h"
#include "qzk/World.h"
#include "qzk/ecad/PCBScene.h"
#include "qzref/Journal.h"
#include "qzref/Platform.h"
#include "qzref/UndoControl.h"

#include <gtest/gtest.h>

#include "qzref/Inspect.h"
#include <string>
#include <utility>
#include <vector>

namespace {

using qzref::UndoControl;

// Logs "undo <name>" and "redo <name>"; Redo is overridden only when asked.
class LoggingStep : public qzk::OperationStep {
public:
    LoggingStep(std::string name, std::vector<std::string>* log, bool ownRedo)
        : name_(std::move(name)), log_(log), ownRedo_(ownRedo) {}
    du::Symbol GetStepType() override { return du::Symbol("QzkappEcadLoggingStep"); }
    void Undo() override { log_->push_back("undo " + name_); }
    void Redo() override {
        if (ownRedo_) {
            log_->push_back("redo " + name_);
        } else {
            qzk::OperationStep::Redo();
        }
    }

private:
    std::string name_;
    std::vector<std::string>* log_;
    bool ownRedo_;
};

// Swaps its saved value with the live one, the way the layer's steps restore state.
class SwapStep : public qzk::OperationStep {
public:
    SwapStep(int* live, int saved) : live_(live), saved_(saved) {}
    du::Symbol GetStepType() override { return du::Symbol("QzkappEcadSwapStep"); }
    void Undo() override { std::swap(*live_, saved_); }

private:
    int* live_;
    int saved_;
};

du::SmartPtr<qzk::Operation> MakeOperation(std::string const& name,
                                           std::vector<du::SmartPtr<qzk::OperationStep>> steps) {
    du::SmartPtr<qzk::Operation> operation(new qzk::Operation(name, nullptr, false));
    for (auto const& step : steps) {
        operation->AddStep(step);
    }
    return operation;
}

class UndoListTest : public ::testing::Test {
protected:
    qzref::ScopedPlatform platform_;
    std::vector<std::string> log_;

    du::SmartPtr<qzk::OperationStep> Step(std::string const& name) {
        return du::SmartPtr<qzk::OperationStep>(new LoggingStep(name, &log_, true));
    }
};

TEST_F(UndoListTest, UndoRunsStepsLastFirstAndRedoRunsThemFirstFirst) {
    qzk::RecordOperation(MakeOperation("Move", {Step("a"), Step("b"), Step("c")}));
    EXPECT_TRUE(UndoControl::Undo());
    EXPECT_EQ(log_, (std::vector<std::string>{"undo c", "undo b", "undo a"}));
    log_.clear();
    EXPECT_TRUE(UndoControl::Redo());
    EXPECT_EQ(log_, (std::vector<std::string>{"redo a", "redo b", "redo c"}));
    EXPECT_EQ(UndoControl::GetUndoNames(), (std::vector<std::string>{"Move"}));
    EXPECT_FALSE(UndoControl::Redo());
}

TEST_F(UndoListTest, RecordingEmptiesTheRedoListAndNamesKeepTheirOrder) {
    qzk::RecordOperation(MakeOperation("first", {Step("1")}));
    qzk::RecordOperation(MakeOperation("second", {Step("2")}));
    UndoControl::Undo();
    EXPECT_EQ(UndoControl::GetRedoNames(), (std::vector<std::string>{"second"}));
    std::size_t const mark = qzref::Journal::Size();
    qzk::RecordOperation(MakeOperation("third", {Step("3")}));
    EXPECT_EQ(UndoControl::GetRedoCount(), 0u);
    EXPECT_EQ(UndoControl::GetUndoNames(), (std::vector<std::string>{"first", "third"}));
    EXPECT_EQ(qzref::Journal::Since(mark),
              (std::vector<std::string>{"Operation.AddStep(\"third\", QzkappEcadLoggingStep)",
                                        "Kernel.RecordOperation(\"third\")"}));
}

TEST_F(UndoListTest, RedoOfAStepWithoutItsOwnRedoUndoesTheUndo) {
    int value = 5;
    // The step is built before the change, saving the old value.
    du::SmartPtr<qzk::OperationStep> step(new SwapStep(&value, value));
    value = 9;
    qzk::RecordOperation(MakeOperation("Set", {step}));
    UndoControl::Undo();
    EXPECT_EQ(value, 5);
    UndoControl::Redo();
    EXPECT_EQ(value, 9);
    UndoControl::Undo();
    EXPECT_EQ(value, 5);
}

TEST_F(UndoListTest, NullAndTransientOperationsAreNotRecorded) {
    qzk::RecordOperation(nullptr);
    du::SmartPtr<qzk::Operation> transient(new qzk::Operation("scratch", nullptr, true));
    transient->AddStep(nullptr);
    EXPECT_EQ(qzref::Inspect(*transient).GetStepCount(), 0u);
    qzk::RecordOperation(transient);
    EXPECT_EQ(UndoControl::GetUndoCount(), 0u);
    EXPECT_FALSE(UndoControl::Undo());
}

// A reset step records a fresh entry from its own Redo; the list must not be locked while steps
// run, and the redone operation goes back on top.
class RecordingStep : public qzk::OperationStep {
public:
    du::Symbol GetStepType() override { return du::Symbol("QzkappEcadRecordingStep"); }
    void Undo() override {}
    void Redo() override {
        du::SmartPtr<qzk::Operation> fresh(new qzk::Operation("fresh", nullptr, false));
        qzk::RecordOperation(fresh);
    }
};

TEST_F(UndoListTest, StepThatRecordsDuringRedoDoesNotDeadlock) {
    qzk::RecordOperation(
        MakeOperation("reset", {du::SmartPtr<qzk::OperationStep>(new RecordingStep())}));
    UndoControl::Undo();
    UndoControl::Redo();
    EXPECT_EQ(UndoControl::GetUndoNames(), (std::vector<std::string>{"fresh", "reset"}));
}

TEST_F(UndoListTest, EndingASceneDropsItsOperationsFromBothListsAndKeepsOthers) {
    auto board = [](char const* name) {
        du::SmartPtr<qzk::ecad::PCBScene> scene;
        qzk::ecad::PCBScene::Create(qzk::World::GetWorld(), qzk::Instance::Create(name),
                                    qzk::ViewableSource::Create("none.json"), scene);
        return scene;
    };
    du::SmartPtr<qzk::ecad::PCBScene> const ending = board("ending");
    du::SmartPtr<qzk::ecad::PCBScene> const staying = board("staying");
    auto record = [&](char const* name, du::SmartPtr<qzk::ecad::PCBScene> const& scene) {
        du::SmartPtr<qzk::Operation> operation(
            new qzk::Operation(name, du::SmartPtr<qzk::Scene>(scene), false));
        operation->AddStep(Step(name));
        qzk::RecordOperation(operation);
    };
    record("e1", ending);
    record("s1", staying);
    record("e2", ending);
    record("s2", staying);
    record("free", nullptr);
    ASSERT_TRUE(UndoControl::Undo());
    ASSERT_TRUE(UndoControl::Undo());
    ASSERT_TRUE(UndoControl::Undo());
    ASSERT_EQ(UndoControl::GetRedoNames(), (std::vector<std::string>{"free", "s2", "e2"}));
    log_.clear();

    qzref::Inspect(*ending).DestroyScene();
    EXPECT_TRUE(log_.empty());
    EXPECT_EQ(UndoControl::GetUndoNames(), (std::vector<std::string>{"s1"}));
    EXPECT_EQ(UndoControl::GetRedoNames(), (std::vector<std::string>{"free", "s2"}));
    qzref::Inspect(*staying).DestroyScene();
    EXPECT_EQ(UndoControl::GetUndoCount(), 0u);
    EXPECT_EQ(UndoControl::GetRedoNames(), (std::vector<std::string>{"free"}));
}

TEST(UndoListWithoutKernel, RecordOperationIsHarmless) {
    ASSERT_FALSE(qzref::Platform::IsRunning());
    qzk::RecordOperation(MakeOperation("orphan", {}));
    EXPECT_EQ(UndoControl::GetUndoCount(), 0u);
    EXPECT_FALSE(UndoControl::Undo());
}

} // namespace
