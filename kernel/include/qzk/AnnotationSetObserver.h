// An observer of an annotation set: annotations added, removed, changed, deleted with an
// operation, auxiliary data, and the set's initialisation, decoded from the set's messages.
//
// Ids: 3 added (annotation, position), 4 removed (annotation), 5 set initialised, 6 changed
// (annotation, in place), 7 auxiliary data added (key, value), 8 auxiliary data removed,
// 9 deleted (annotation, operation or none), 10 all annotations applied. Lower ids go to
// qzk::Observer; higher ones are ignored. A message that does not decode is dropped: the kernel
// wrote it, so a short message can only come from a test.
#pragma once

#include "du/SmartPtr.h"
#include "du/Types.h"
#include "qzk/AnnoSet.h"
#include "qzk/Observer.h"

namespace qzk {

class Annotation;
class Operation;

class AnnotationSetObserver : public Observer {
public:
    enum : unsigned char {
        AnnotationAddedId = 3,
        AnnotationRemovedId = 4,
        AnnotationSetInitializedId = 5,
        AnnotationChangedId = 6,
        AuxiliaryDataAddedId = 7,
        AuxiliaryDataRemovedId = 8,
        AnnotationDeletedId = 9,
        AllAnnotationsAppliedId = 10,
    };

    AnnotationSetObserver();
    ~AnnotationSetObserver() override;

    void HandleEvent(unsigned char id, dom::MessageReader& reader) override;

    // position: the index the annotation took, or AnnoSet::POSITION_LAST when it went to the end.
    virtual void OnAnnotationAdded(du::SmartPtr<Annotation> const& annotation, int64 position);
    virtual void OnAnnotationRemoved(du::SmartPtr<Annotation> const& annotation);
    virtual void OnAnnotationSetInitialized();
    // inPlace true: the annotation changed where it stands (its look, its name); false: it must
    // be taken out and put in again (its kind or picture changed).
    virtual void OnAnnotationChanged(du::SmartPtr<Annotation> const& annotation, bool inPlace);
    virtual void OnAuxiliaryDataAdded(AnnoSet::AuxiliaryData const& data);
    virtual void OnAuxiliaryDataRemoved(AnnoSet::AuxiliaryData const& data);
    virtual void OnAnnotationDeleted(du::SmartPtr<Annotation> const& annotation,
                                     du::SmartPtr<Operation> const& operation);
    virtual void OnAllAnnotationsApplied();
};

} // namespace qzk
