#include "qzk/Annotation.h"

#include "qzk/AnnoSet.h"
#include "qzk/Operation.h"
#include "qzk/OperationStep.h"
#include "qzk/Scene.h"
#include "qzk/View.h"
#include "qzref/Journal.h"

namespace qzk {
namespace {

bool const registered = ClassType::RegisterClass(classid::Annotation, {classid::Object});

std::string NameOf(Object const* object) {
    return object != nullptr ? object->GetObjectName().str() : std::string("null");
}

// Puts the visibility an annotation had before a Show or Hide back; doing it again redoes.
class VisibilityStep : public OperationStep {
public:
    VisibilityStep(du::SmartPtr<Annotation> annotation, bool saved)
        : annotation_(std::move(annotation)), saved_(saved) {}
    du::Symbol GetStepType() override { return du::Symbol("QzkAnnotationVisibilityStep"); }
    void Undo() override {
        bool const current = annotation_->IsVisible();
        annotation_->StoreVisible(saved_);
        saved_ = current;
        if (AnnoSet* set = annotation_->GetAnnoSet()) {
            set->_PostAnnotationChanged(annotation_, true);
        }
    }

private:
    du::SmartPtr<Annotation> const annotation_;
    bool saved_;
};

} // namespace

du::SmartPtr<Annotation> Annotation::Create(uint64 id, unsigned int viewClassId) {
    return du::SmartPtr<Annotation>(new Annotation(id, viewClassId));
}

Annotation::Annotation(uint64 id, unsigned int viewClassId)
    : hasViewClass(viewClassId != 0), id_(id), viewClassId_(viewClassId) {}

Annotation::~Annotation() = default;

ClassType const& Annotation::GetClassType() const {
    static ClassType const type(classid::Annotation);
    return type;
}

du::Symbol Annotation::GetDebugClassName() const {
    return du::Symbol("qzk::Annotation");
}

void Annotation::SetSelected(bool selected, du::SmartPtr<View> const& view) {
    qzref::Journal::Record(GetObjectName().str(), "SetSelected",
                           {qzref::Fmt(selected), NameOf(view.Get())});
    du::SmartPtr<View> old;
    std::lock_guard lock(mutex_);
    selected_ = selected;
    old = selectedView_;
    selectedView_ = selected ? view : du::SmartPtr<View>();
}

void Annotation::Show(bool notify, du::SmartPtr<Operation> const& operation) {
    qzref::Journal::Record(GetObjectName().str(), "Show",
                           {qzref::Fmt(notify), operation ? operation->GetJournalName() : "null"});
    ChangeVisibility(true, notify, operation);
}

void Annotation::Hide(bool notify, du::SmartPtr<Operation> const& operation, bool deselect) {
    qzref::Journal::Record(GetObjectName().str(), "Hide",
                           {qzref::Fmt(notify), operation ? operation->GetJournalName() : "null",
                            qzref::Fmt(deselect)});
    if (deselect) {
        du::SmartPtr<View> old;
        std::lock_guard lock(mutex_);
        selected_ = false;
        old = selectedView_;
        selectedView_ = nullptr;
    }
    ChangeVisibility(false, notify, operation);
}

void Annotation::ChangeVisibility(bool visible, bool notify,
                                  du::SmartPtr<Operation> const& operation) {
    bool before;
    AnnoSet* set;
    {
        std::lock_guard lock(mutex_);
        before = visible_;
        visible_ = visible;
        set = set_;
    }
    if (operation) {
        operation->AddStep(du::SmartPtr<OperationStep>(
            new VisibilityStep(du::SmartPtr<Annotation>(this), before)));
    }
    if (notify && set != nullptr) {
        set->_PostAnnotationChanged(du::SmartPtr<Annotation>(this), true);
    }
}

bool Annotation::IsVisible() const {
    std::lock_guard lock(mutex_);
    return visible_;
}

void Annotation::OnSelectedInScene(du::SmartPtr<Scene> const& scene) {
    qzref::Journal::Record(GetObjectName().str(), "OnSelectedInScene", {NameOf(scene.Get())});
    std::lock_guard lock(mutex_);
    ++selectedInScene_;
}

void Annotation::OnDeselectedInScene(du::SmartPtr<Scene> const& scene) {
    qzref::Journal::Record(GetObjectName().str(), "OnDeselectedInScene", {NameOf(scene.Get())});
    std::lock_guard lock(mutex_);
    ++deselectedInScene_;
}

bool Annotation::IsSelected() const {
    std::lock_guard lock(mutex_);
    return selected_;
}

du::SmartPtr<View> Annotation::GetSelectedView() const {
    std::lock_guard lock(mutex_);
    return selectedView_;
}

unsigned int Annotation::GetSelectedInSceneCount() const {
    std::lock_guard lock(mutex_);
    return selectedInScene_;
}

unsigned int Annotation::GetDeselectedInSceneCount() const {
    std::lock_guard lock(mutex_);
    return deselectedInScene_;
}

AnnoSet* Annotation::GetAnnoSet() const {
    std::lock_guard lock(mutex_);
    return set_;
}

void Annotation::StoreVisible(bool visible) {
    std::lock_guard lock(mutex_);
    visible_ = visible;
}

void Annotation::_SetAnnoSet(AnnoSet* set) {
    std::lock_guard lock(mutex_);
    set_ = set;
}

bool Annotation::_ClaimAnnoSet(AnnoSet* set) {
    std::lock_guard lock(mutex_);
    if (set_ != nullptr) {
        return false;
    }
    set_ = set;
    return true;
}

void Annotation::_OnDestroy() {
    du::SmartPtr<View> old;
    std::lock_guard lock(mutex_);
    old = selectedView_;
    selectedView_ = nullptr;
}

} // namespace qzk
