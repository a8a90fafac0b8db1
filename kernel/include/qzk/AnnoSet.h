// The annotations of a scene (images, compare areas, marks) in their order, and the notices of
// their changes to annotation set observers, delivered as messages.
//
// The set holds its annotations by counted reference; an annotation points back to its set by a
// plain pointer while it belongs to it. Visitors and observers are never called while the set's
// mutex is held: Visit walks a copy of the list, so a visitor may change the set.
#pragma once

#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "du/Types.h"
#include "qzk/Observable.h"

#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace qzref {
class AnnoSetInspector;
}

namespace qzk {

class Annotation;
class AnnotationSetObserver;
class AnnoSetVisitor;
class Operation;

class AnnoSet : public Observable {
public:
    // A position past every annotation: add at the end.
    static constexpr int64 POSITION_LAST = -1;

    // A keyed text that travels with the set (the saved state of a comparison, say).
    struct AuxiliaryData {
        du::Symbol key;
        std::string value;
        bool operator==(AuxiliaryData const& other) const {
            return key == other.key && value == other.value;
        }
    };

    static du::SmartPtr<AnnoSet> Create();
    ~AnnoSet() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    // false for an observer registered anywhere already. Journalled.
    bool RegisterObserver(AnnotationSetObserver& observer);
    bool UnregisterObserver(AnnotationSetObserver& observer);
    // Walks the annotations in order (or in reverse, as the visitor asks) until the visitor
    // answers false. Journalled.
    void Visit(AnnoSetVisitor& visitor) const;
    // The annotation with that id that is a classId (or derives from one); null, and false,
    // when there is none. Journalled.
    bool GetAnnotationByType(unsigned int classId, uint64 id, du::SmartPtr<Annotation>& out) const;
    // Takes the annotation out and tells the observers (removed). With an operation, a step is
    // added that puts it back at its old place. false if it is not in this set. Journalled.
    bool RemoveAnnotationFromSet(du::SmartPtr<Annotation> const& annotation,
                                 du::SmartPtr<Operation> const& operation);

    // Kernel side: used by Annotation to tell of its own changes, and by undo steps.
    void _PostAnnotationChanged(du::SmartPtr<Annotation> const& annotation, bool inPlace);
    // Adds and tells the observers; position past the end, or negative, appends. false for null
    // or an annotation of a set.
    bool _Add(du::SmartPtr<Annotation> const& annotation, int64 position = POSITION_LAST);
    // GetAnnotationByType for the kernel's own use, not journalled.
    du::SmartPtr<Annotation> _FindByType(unsigned int classId, uint64 id) const;
    // Removes without a step; position of the annotation before, or -1 if it was not here.
    int64 _Remove(du::SmartPtr<Annotation> const& annotation);

protected:
    AnnoSet();
    void _OnDestroy() override;

private:
    friend class qzref::AnnoSetInspector;

    // What the set holds.
    std::vector<du::SmartPtr<Annotation>> GetAnnotations() const;
    std::size_t GetAnnotationCount() const;
    std::vector<AuxiliaryData> GetAuxiliaryData() const;

    // What the kernel does to the set (not journalled); each tells the observers.
    // false if the annotation is not in this set; nothing is told then.
    bool ChangeAnnotation(du::SmartPtr<Annotation> const& annotation, bool inPlace);
    // Removes, telling removed and then deleted with the operation.
    bool DeleteAnnotation(du::SmartPtr<Annotation> const& annotation,
                          du::SmartPtr<Operation> const& operation);
    void NotifyInitialized();
    void NotifyAllAnnotationsApplied();
    void AddAuxiliaryData(AuxiliaryData const& data);
    bool RemoveAuxiliaryData(du::Symbol const& key);

    void Post(dom::ObservableEvent const& event);

    mutable std::mutex mutex_;
    std::vector<du::SmartPtr<Annotation>> annotations_;
    std::vector<AuxiliaryData> auxiliary_;
};

} // namespace qzk
