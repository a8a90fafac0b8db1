#include "qzk/AnnoSet.h"

#include "dom/ObservableEvent.h"
#include "dom/ObserverProxy.h"
#include "qzk/AnnoSetVisitor.h"
#include "qzk/Annotation.h"
#include "qzk/AnnotationSetObserver.h"
#include "qzk/Operation.h"
#include "qzk/OperationStep.h"
#include "qzref/Journal.h"

#include <algorithm>

namespace qzk {
namespace {

bool const registered = ClassType::RegisterClass(classid::AnnoSet, {classid::Observable});

using Observed = AnnotationSetObserver;

// One notice of the set: the id, then, as the id asks, an annotation, a number, a flag, texts
// or an operation.
class SetEvent : public dom::ObservableEvent {
public:
    explicit SetEvent(unsigned char id) noexcept : id_(id) {}

    du::SmartPtr<Annotation> annotation;
    bool withPosition = false;
    int64 position = 0;
    bool withFlag = false;
    bool flag = false;
    AnnoSet::AuxiliaryData const* data = nullptr;
    bool withOperation = false;
    du::SmartPtr<Operation> operation;

    void Post(dom::ObserverProxy* proxy) const override {
        proxy->PushUInt8Value(id_);
        if (annotation) {
            proxy->PushObjectValue(du::SmartPtr<du::RefCounted>(annotation.Get()));
        }
        if (withPosition) {
            proxy->PushUInt32Value(static_cast<unsigned int>(static_cast<int>(position)));
        }
        if (withFlag) {
            proxy->PushBooleanValue(flag);
        }
        if (data != nullptr) {
            proxy->PushStringValue(data->key.str());
            proxy->PushStringValue(data->value);
        }
        if (withOperation) {
            proxy->PushBooleanValue(static_cast<bool>(operation));
            if (operation) {
                proxy->PushObjectValue(du::SmartPtr<du::RefCounted>(operation.Get()));
            }
        }
    }

private:
    unsigned char id_;
};

// Puts a removed annotation back where it was; doing it again removes it again.
class RemoveStep : public OperationStep {
public:
    RemoveStep(du::SmartPtr<AnnoSet> set, du::SmartPtr<Annotation> annotation, int64 position)
        : set_(std::move(set)), annotation_(std::move(annotation)), position_(position) {}
    du::Symbol GetStepType() override { return du::Symbol("QzkAnnoSetRemoveStep"); }
    void Undo() override {
        if (removed_) {
            set_->_Add(annotation_, position_);
        } else {
            position_ = set_->_Remove(annotation_);
        }
        removed_ = !removed_;
    }

private:
    du::SmartPtr<AnnoSet> const set_;
    du::SmartPtr<Annotation> const annotation_;
    int64 position_;
    bool removed_ = true;
};

std::string NameOf(Object const* object) {
    return object != nullptr ? object->GetObjectName().str() : std::string("null");
}

} // namespace

du::SmartPtr<AnnoSet> AnnoSet::Create() {
    return du::SmartPtr<AnnoSet>(new AnnoSet());
}

AnnoSet::AnnoSet() : Observable(nullptr) {}

AnnoSet::~AnnoSet() {
    for (auto const& annotation : annotations_) {
        annotation->_SetAnnoSet(nullptr);
    }
}

ClassType const& AnnoSet::GetClassType() const {
    static ClassType const type(classid::AnnoSet);
    return type;
}

du::Symbol AnnoSet::GetDebugClassName() const {
    return du::Symbol("qzk::AnnoSet");
}

bool AnnoSet::RegisterObserver(AnnotationSetObserver& observer) {
    qzref::Journal::Record(GetObjectName().str(), "RegisterObserver");
    du::SmartPtr<dom::ObserverProxy> proxy(new dom::ObserverProxy(observer));
    return _RegisterObserver(observer, proxy, nullptr);
}

bool AnnoSet::UnregisterObserver(AnnotationSetObserver& observer) {
    qzref::Journal::Record(GetObjectName().str(), "UnregisterObserver");
    return DoUnregisterObserver(observer);
}

void AnnoSet::Visit(AnnoSetVisitor& visitor) const {
    qzref::Journal::Record(GetObjectName().str(), "Visit");
    std::vector<du::SmartPtr<Annotation>> const walk = GetAnnotations();
    if (visitor.IsReverse()) {
        for (auto it = walk.rbegin(); it != walk.rend(); ++it) {
            if (!visitor.VisitAnnotation(*it)) {
                return;
            }
        }
        return;
    }
    for (auto const& annotation : walk) {
        if (!visitor.VisitAnnotation(annotation)) {
            return;
        }
    }
}

bool AnnoSet::GetAnnotationByType(unsigned int classId, uint64 id,
                                  du::SmartPtr<Annotation>& out) const {
    qzref::Journal::Record(GetObjectName().str(), "GetAnnotationByType",
                           {qzref::Fmt(classId), qzref::Fmt(static_cast<unsigned long>(id))});
    out = _FindByType(classId, id);
    return static_cast<bool>(out);
}

du::SmartPtr<Annotation> AnnoSet::_FindByType(unsigned int classId, uint64 id) const {
    std::lock_guard lock(mutex_);
    for (auto const& annotation : annotations_) {
        if (annotation->Id() == id && annotation->IsATypeOfId(classId)) {
            return annotation;
        }
    }
    return nullptr;
}

bool AnnoSet::RemoveAnnotationFromSet(du::SmartPtr<Annotation> const& annotation,
                                      du::SmartPtr<Operation> const& operation) {
    qzref::Journal::Record(
        GetObjectName().str(), "RemoveAnnotationFromSet",
        {NameOf(annotation.Get()), operation ? operation->GetJournalName() : "null"});
    int64 const position = _Remove(annotation);
    if (position < 0) {
        return false;
    }
    if (operation) {
        operation->AddStep(du::SmartPtr<OperationStep>(
            new RemoveStep(du::SmartPtr<AnnoSet>(this), annotation, position)));
    }
    return true;
}

std::vector<du::SmartPtr<Annotation>> AnnoSet::GetAnnotations() const {
    std::lock_guard lock(mutex_);
    return annotations_;
}

std::size_t AnnoSet::GetAnnotationCount() const {
    std::lock_guard lock(mutex_);
    return annotations_.size();
}

std::vector<AnnoSet::AuxiliaryData> AnnoSet::GetAuxiliaryData() const {
    std::lock_guard lock(mutex_);
    return auxiliary_;
}

bool AnnoSet::_Add(du::SmartPtr<Annotation> const& annotation, int64 position) {
    if (!annotation || !annotation->_ClaimAnnoSet(this)) {
        return false;
    }
    int64 told = POSITION_LAST;
    {
        std::lock_guard lock(mutex_);
        if (position >= 0 && static_cast<std::size_t>(position) < annotations_.size()) {
            annotations_.insert(annotations_.begin() + position, annotation);
            told = position;
        } else {
            annotations_.push_back(annotation);
        }
    }
    SetEvent event(Observed::AnnotationAddedId);
    event.annotation = annotation;
    event.withPosition = true;
    event.position = told;
    Post(event);
    return true;
}

bool AnnoSet::ChangeAnnotation(du::SmartPtr<Annotation> const& annotation, bool inPlace) {
    if (!annotation || annotation->GetAnnoSet() != this) {
        return false;
    }
    _PostAnnotationChanged(annotation, inPlace);
    return true;
}

bool AnnoSet::DeleteAnnotation(du::SmartPtr<Annotation> const& annotation,
                               du::SmartPtr<Operation> const& operation) {
    if (_Remove(annotation) < 0) {
        return false;
    }
    SetEvent event(Observed::AnnotationDeletedId);
    event.annotation = annotation;
    event.withOperation = true;
    event.operation = operation;
    Post(event);
    return true;
}

void AnnoSet::NotifyInitialized() {
    Post(SetEvent(Observed::AnnotationSetInitializedId));
}

void AnnoSet::NotifyAllAnnotationsApplied() {
    Post(SetEvent(Observed::AllAnnotationsAppliedId));
}

void AnnoSet::AddAuxiliaryData(AuxiliaryData const& data) {
    {
        std::lock_guard lock(mutex_);
        auxiliary_.push_back(data);
    }
    SetEvent event(Observed::AuxiliaryDataAddedId);
    event.data = &data;
    Post(event);
}

bool AnnoSet::RemoveAuxiliaryData(du::Symbol const& key) {
    AuxiliaryData removed;
    {
        std::lock_guard lock(mutex_);
        auto found = std::find_if(auxiliary_.begin(), auxiliary_.end(),
                                  [&](AuxiliaryData const& d) { return d.key == key; });
        if (found == auxiliary_.end()) {
            return false;
        }
        removed = *found;
        auxiliary_.erase(found);
    }
    SetEvent event(Observed::AuxiliaryDataRemovedId);
    event.data = &removed;
    Post(event);
    return true;
}

void AnnoSet::_PostAnnotationChanged(du::SmartPtr<Annotation> const& annotation, bool inPlace) {
    SetEvent event(Observed::AnnotationChangedId);
    event.annotation = annotation;
    event.withFlag = true;
    event.flag = inPlace;
    Post(event);
}

int64 AnnoSet::_Remove(du::SmartPtr<Annotation> const& annotation) {
    int64 position = -1;
    {
        std::lock_guard lock(mutex_);
        auto found = std::find(annotations_.begin(), annotations_.end(), annotation);
        if (found == annotations_.end()) {
            return -1;
        }
        position = found - annotations_.begin();
        annotations_.erase(found);
    }
    annotation->_SetAnnoSet(nullptr);
    SetEvent event(Observed::AnnotationRemovedId);
    event.annotation = annotation;
    Post(event);
    return position;
}

void AnnoSet::Post(dom::ObservableEvent const& event) {
    _PostKernelNotice(event);
}

void AnnoSet::_OnDestroy() {
    std::vector<du::SmartPtr<Annotation>> gone;
    {
        std::lock_guard lock(mutex_);
        gone.swap(annotations_);
        auxiliary_.clear();
    }
    for (auto const& annotation : gone) {
        annotation->_SetAnnoSet(nullptr);
    }
}

} // namespace qzk
