#include "qzk/AnnotationSetObserver.h"

#include "dom/MessageReader.h"
#include "qzk/Annotation.h"
#include "qzk/Operation.h"

namespace qzk {
namespace {

bool ReadAnnotation(dom::MessageReader& reader, du::SmartPtr<Annotation>& out) {
    du::SmartPtr<du::RefCounted> object;
    if (!reader.GetObjectValue(object)) {
        return false;
    }
    out = du::DynamicCast<Annotation>(object);
    return static_cast<bool>(out);
}

bool ReadData(dom::MessageReader& reader, AnnoSet::AuxiliaryData& out) {
    std::string key;
    if (!reader.GetStringValue(key) || !reader.GetStringValue(out.value)) {
        return false;
    }
    out.key = du::Symbol(key);
    return true;
}

} // namespace

AnnotationSetObserver::AnnotationSetObserver() = default;

AnnotationSetObserver::~AnnotationSetObserver() = default;

void AnnotationSetObserver::HandleEvent(unsigned char id, dom::MessageReader& reader) {
    if (id < AnnotationAddedId) {
        Observer::HandleEvent(id, reader);
        return;
    }
    du::SmartPtr<Annotation> annotation;
    switch (id) {
    case AnnotationAddedId: {
        int position = 0;
        if (ReadAnnotation(reader, annotation) && reader.GetInt32Value(position)) {
            OnAnnotationAdded(annotation, position);
        }
        return;
    }
    case AnnotationRemovedId:
        if (ReadAnnotation(reader, annotation)) {
            OnAnnotationRemoved(annotation);
        }
        return;
    case AnnotationSetInitializedId:
        OnAnnotationSetInitialized();
        return;
    case AnnotationChangedId: {
        bool inPlace = false;
        if (ReadAnnotation(reader, annotation) && reader.GetBooleanValue(inPlace)) {
            OnAnnotationChanged(annotation, inPlace);
        }
        return;
    }
    case AuxiliaryDataAddedId: {
        AnnoSet::AuxiliaryData data;
        if (ReadData(reader, data)) {
            OnAuxiliaryDataAdded(data);
        }
        return;
    }
    case AuxiliaryDataRemovedId: {
        AnnoSet::AuxiliaryData data;
        if (ReadData(reader, data)) {
            OnAuxiliaryDataRemoved(data);
        }
        return;
    }
    case AnnotationDeletedId: {
        bool withOperation = false;
        if (!ReadAnnotation(reader, annotation) || !reader.GetBooleanValue(withOperation)) {
            return;
        }
        du::SmartPtr<Operation> operation;
        if (withOperation) {
            du::SmartPtr<du::RefCounted> object;
            if (!reader.GetObjectValue(object)) {
                return;
            }
            operation = du::DynamicCast<Operation>(object);
        }
        OnAnnotationDeleted(annotation, operation);
        return;
    }
    case AllAnnotationsAppliedId:
        OnAllAnnotationsApplied();
        return;
    default:
        return;
    }
}

void AnnotationSetObserver::OnAnnotationAdded(du::SmartPtr<Annotation> const&, int64) {}

void AnnotationSetObserver::OnAnnotationRemoved(du::SmartPtr<Annotation> const&) {}

void AnnotationSetObserver::OnAnnotationSetInitialized() {}

void AnnotationSetObserver::OnAnnotationChanged(du::SmartPtr<Annotation> const&, bool) {}

void AnnotationSetObserver::OnAuxiliaryDataAdded(AnnoSet::AuxiliaryData const&) {}

void AnnotationSetObserver::OnAuxiliaryDataRemoved(AnnoSet::AuxiliaryData const&) {}

void AnnotationSetObserver::OnAnnotationDeleted(du::SmartPtr<Annotation> const&,
                                                du::SmartPtr<Operation> const&) {}

void AnnotationSetObserver::OnAllAnnotationsApplied() {}

} // namespace qzk
