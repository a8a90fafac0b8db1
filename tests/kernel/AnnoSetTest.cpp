// qzk::AnnoSet, qzk::Annotation and qzk::AnnotationSetObserver: the order and content of the set's
// notices, visiting, look-up by type, and the undo steps of removal and visibility.
#include "qzk/AnnoSet.h"
#include "qzk/AnnoSetVisitor.h"
#include "qzk/Annotation.h"
#include "qzk/AnnotationSetObserver.h"
#include "qzk/Operation.h"
#include "qzk/OperationStep.h"
#include "qzk/View.h"
#include "qzk/ecad/ImageAnnotation.h"
#include "qzref/Journal.h"
#include "qzref/Messages.h"
#include "qzref/Platform.h"

#include <gtest/gtest.h>

#include "qzref/Inspect.h"
#include <string>
#include <vector>

namespace {

using qzref::Messages;

// Writes each notice as one line: "<kind> <annotation id> <detail>".
class RecordingSetObserver : public qzk::AnnotationSetObserver {
public:
    ~RecordingSetObserver() override { DetachFromMessageLoop(); }
    void DetachObserver() override {}
    void OnAnnotationAdded(du::SmartPtr<qzk::Annotation> const& a, int64 position) override {
        lines.push_back("added " + std::to_string(a->Id()) + " " + std::to_string(position));
    }
    void OnAnnotationRemoved(du::SmartPtr<qzk::Annotation> const& a) override {
        lines.push_back("removed " + std::to_string(a->Id()));
    }
    void OnAnnotationChanged(du::SmartPtr<qzk::Annotation> const& a, bool inPlace) override {
        lines.push_back("changed " + std::to_string(a->Id()) + (inPlace ? " inplace" : " again"));
    }
    void OnAnnotationDeleted(du::SmartPtr<qzk::Annotation> const& a,
                             du::SmartPtr<qzk::Operation> const& op) override {
        lines.push_back("deleted " + std::to_string(a->Id()) + (op ? " " + op->GetName() : ""));
    }
    void OnAuxiliaryDataAdded(qzk::AnnoSet::AuxiliaryData const& d) override {
        lines.push_back("aux+ " + d.key.str() + "=" + d.value);
    }
    void OnAuxiliaryDataRemoved(qzk::AnnoSet::AuxiliaryData const& d) override {
        lines.push_back("aux- " + d.key.str() + "=" + d.value);
    }
    void OnAnnotationSetInitialized() override { lines.push_back("initialized"); }
    void OnAllAnnotationsApplied() override { lines.push_back("applied"); }
    std::vector<std::string> lines;
};

class CollectingVisitor : public qzk::AnnoSetVisitor {
public:
    CollectingVisitor(bool reverse, std::size_t stopAfter)
        : qzk::AnnoSetVisitor(reverse), stopAfter(stopAfter) {}
    bool VisitAnnotation(du::SmartPtr<qzk::Annotation> const& a) override {
        ids.push_back(a->Id());
        return ids.size() < stopAfter;
    }
    std::size_t stopAfter;
    std::vector<uint64> ids;
};

class AnnoSetTest : public ::testing::Test {
protected:
    void SetUp() override { Messages::PumpUntilIdle(); }
    void TearDown() override { Messages::PumpUntilIdle(); }

    qzref::ScopedPlatform platform;
    du::SmartPtr<qzk::AnnoSet> set = qzk::AnnoSet::Create();
    du::SmartPtr<qzk::Annotation> a = qzk::Annotation::Create(1);
    du::SmartPtr<qzk::Annotation> b = qzk::Annotation::Create(2);
    du::SmartPtr<qzk::Annotation> c = qzk::Annotation::Create(3);
};

TEST_F(AnnoSetTest, ObserverHearsEveryChangeInOrderAndOnlyWhenPumped) {
    RecordingSetObserver observer;
    ASSERT_TRUE(set->RegisterObserver(observer));
    qzref::Inspect(*set).NotifyInitialized();
    qzref::Inspect(*set).AddAnnotation(a);
    qzref::Inspect(*set).AddAnnotation(b, 0);
    qzref::Inspect(*set).ChangeAnnotation(a, true);
    qzref::Inspect(*set).ChangeAnnotation(b, false);
    EXPECT_TRUE(set->RemoveAnnotationFromSet(b, nullptr));
    qzref::Inspect(*set).AddAuxiliaryData({du::Symbol("mode"), "compare"});
    qzref::Inspect(*set).RemoveAuxiliaryData(du::Symbol("mode"));
    qzref::Inspect(*set).DeleteAnnotation(a, nullptr);
    qzref::Inspect(*set).NotifyAllAnnotationsApplied();
    EXPECT_TRUE(observer.lines.empty());

    Messages::PumpUntilIdle();
    std::vector<std::string> const expected = {"initialized",
                                               "added 1 -1",
                                               "added 2 0",
                                               "changed 1 inplace",
                                               "changed 2 again",
                                               "removed 2",
                                               "aux+ mode=compare",
                                               "aux- mode=compare",
                                               "removed 1",
                                               "deleted 1",
                                               "applied"};
    EXPECT_EQ(observer.lines, expected);
    EXPECT_EQ(qzref::Inspect(*set).GetAnnotationCount(), 0u);
    EXPECT_EQ(b->GetAnnoSet(), nullptr);
}

TEST_F(AnnoSetTest, RefusedChangesTellNobody) {
    RecordingSetObserver observer;
    ASSERT_TRUE(set->RegisterObserver(observer));
    auto other = qzk::AnnoSet::Create();
    qzref::Inspect(*other).AddAnnotation(c);
    EXPECT_FALSE(qzref::Inspect(*set).AddAnnotation(c)) << "an annotation belongs to one set";
    EXPECT_FALSE(qzref::Inspect(*set).AddAnnotation(nullptr));
    EXPECT_FALSE(qzref::Inspect(*set).ChangeAnnotation(c, true));
    EXPECT_FALSE(set->RemoveAnnotationFromSet(c, nullptr));
    EXPECT_FALSE(qzref::Inspect(*set).RemoveAuxiliaryData(du::Symbol("none")));
    Messages::PumpUntilIdle();
    EXPECT_TRUE(observer.lines.empty());
    EXPECT_EQ(qzref::Inspect(*other).GetAnnotationCount(), 1u);
}

// The scenes let go of their annotation observer with qzk::Observer::Unregister, not through the
// set, so the set must register observers as a qzk::Observable does.
TEST_F(AnnoSetTest, AnObserverThatUnregistersItselfHearsNoMore) {
    RecordingSetObserver observer;
    ASSERT_TRUE(set->RegisterObserver(observer));
    EXPECT_FALSE(set->RegisterObserver(observer));
    qzref::Inspect(*set).AddAnnotation(a);
    ASSERT_TRUE(observer.Unregister());
    qzref::Inspect(*set).AddAnnotation(b);
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer.lines, (std::vector<std::string>{"added 1 -1"}));
    EXPECT_EQ(qzref::Inspect(*set).GetObserverCount(), 0u);
}

TEST_F(AnnoSetTest, VisitFollowsSetOrderEitherWayAndStopsOnFalse) {
    qzref::Inspect(*set).AddAnnotation(a);
    qzref::Inspect(*set).AddAnnotation(c);
    qzref::Inspect(*set).AddAnnotation(b, 1);
    CollectingVisitor forward(false, 99);
    set->Visit(forward);
    EXPECT_EQ(forward.ids, (std::vector<uint64>{1, 2, 3}));
    CollectingVisitor backward(true, 99);
    set->Visit(backward);
    EXPECT_EQ(backward.ids, (std::vector<uint64>{3, 2, 1}));
    CollectingVisitor first(false, 1);
    set->Visit(first);
    EXPECT_EQ(first.ids, (std::vector<uint64>{1}));
}

// A visitor that changes the set must not deadlock on the set's mutex, and the walk goes on over
// the annotations as they were when it started.
TEST_F(AnnoSetTest, VisitorMayRemoveWhatItVisits) {
    struct Remover : qzk::AnnoSetVisitor {
        explicit Remover(qzk::AnnoSet& set) : qzk::AnnoSetVisitor(false), set(set) {}
        bool VisitAnnotation(du::SmartPtr<qzk::Annotation> const& a) override {
            ++visited;
            return set.RemoveAnnotationFromSet(a, nullptr);
        }
        qzk::AnnoSet& set;
        int visited = 0;
    };
    qzref::Inspect(*set).AddAnnotation(a);
    qzref::Inspect(*set).AddAnnotation(b);
    Remover remover(*set);
    set->Visit(remover);
    EXPECT_EQ(remover.visited, 2);
    EXPECT_EQ(qzref::Inspect(*set).GetAnnotationCount(), 0u);
}

TEST_F(AnnoSetTest, GetAnnotationByTypeMatchesIdAndClassAndClearsOutOnMiss) {
    qzk::ecad::ImageAnnotation::Params params;
    params.id = 7;
    auto image = qzk::ecad::ImageAnnotation::Create(params);
    qzref::Inspect(*set).AddAnnotation(a);
    qzref::Inspect(*set).AddAnnotation(image);

    du::SmartPtr<qzk::Annotation> out = b;
    EXPECT_FALSE(set->GetAnnotationByType(qzk::classid::Annotation, 99, out));
    EXPECT_EQ(out, nullptr) << "an unknown id yields null, whatever out held";

    EXPECT_FALSE(set->GetAnnotationByType(qzk::classid::EcadImageAnnotation, 1, out));
    EXPECT_EQ(out, nullptr) << "a plain annotation is no image";

    EXPECT_TRUE(set->GetAnnotationByType(qzk::classid::EcadImageAnnotation, 7, out));
    EXPECT_EQ(out.Get(), image.Get());
    EXPECT_TRUE(set->GetAnnotationByType(qzk::classid::Annotation, 7, out))
        << "an image is an annotation";
    EXPECT_EQ(out.Get(), image.Get());
}

TEST_F(AnnoSetTest, RemovalWithOperationIsUndoneAtItsOldPlace) {
    qzref::Inspect(*set).AddAnnotation(a);
    qzref::Inspect(*set).AddAnnotation(b);
    qzref::Inspect(*set).AddAnnotation(c);
    du::SmartPtr<qzk::Operation> op(new qzk::Operation("Remove", nullptr, true));
    ASSERT_TRUE(set->RemoveAnnotationFromSet(b, op));
    ASSERT_EQ(qzref::Inspect(*op).GetStepCount(), 1u);
    auto step = op->GetSteps().front();
    RecordingSetObserver observer;
    ASSERT_TRUE(set->RegisterObserver(observer));

    step->Undo();
    EXPECT_EQ(qzref::Inspect(*set).GetAnnotations(),
              (std::vector<du::SmartPtr<qzk::Annotation>>{a, b, c}));
    step->Redo();
    EXPECT_EQ(qzref::Inspect(*set).GetAnnotations(),
              (std::vector<du::SmartPtr<qzk::Annotation>>{a, c}));
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer.lines, (std::vector<std::string>{"added 2 1", "removed 2"}));
}

TEST_F(AnnoSetTest, ShowAndHideNotifyOnlyWhenAskedAndUndoRestoresVisibility) {
    qzref::Inspect(*set).AddAnnotation(a);
    RecordingSetObserver observer;
    ASSERT_TRUE(set->RegisterObserver(observer));
    a->Hide(false, nullptr, false);
    Messages::PumpUntilIdle();
    EXPECT_FALSE(a->IsVisible());
    EXPECT_TRUE(observer.lines.empty()) << "a quiet hide is not told";

    du::SmartPtr<qzk::Operation> op(new qzk::Operation("Show", nullptr, true));
    a->Show(true, op);
    EXPECT_TRUE(a->IsVisible());
    ASSERT_EQ(qzref::Inspect(*op).GetStepCount(), 1u);
    op->GetSteps().front()->Undo();
    EXPECT_FALSE(a->IsVisible());
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer.lines, (std::vector<std::string>{"changed 1 inplace", "changed 1 inplace"}));
}

TEST_F(AnnoSetTest, SelectionCallsAreJournalledAndKept) {
    a->SetObjectName(du::Symbol("ann"));
    std::size_t const mark = qzref::Journal::Size();
    a->SetSelected(true, nullptr);
    a->Hide(false, nullptr, true);
    a->OnSelectedInScene(nullptr);
    a->OnDeselectedInScene(nullptr);
    std::vector<std::string> const expected = {
        "ann.SetSelected(true, null)", "ann.Hide(false, null, true)", "ann.OnSelectedInScene(null)",
        "ann.OnDeselectedInScene(null)"};
    EXPECT_EQ(qzref::Journal::Since(mark), expected);
    EXPECT_FALSE(qzref::Inspect(*a).IsSelected())
        << "a hide that deselects takes the selection away";
    EXPECT_EQ(qzref::Inspect(*a).GetSelectedInSceneCount(), 1u);
    EXPECT_EQ(qzref::Inspect(*a).GetDeselectedInSceneCount(), 1u);
}

} // namespace
