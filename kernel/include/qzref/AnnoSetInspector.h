// What a test reads back from an annotation set and its annotations, and what it does to a set
// in the kernel's place (each change told to the set's observers); reached through
// qzref::Inspect.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/AnnoSet.h"
#include "qzk/Annotation.h"
#include "qzref/ObservableInspector.h"

#include <vector>

namespace qzref {

class AnnoSetInspector : public ObservableInspector {
public:
    using AuxiliaryData = qzk::AnnoSet::AuxiliaryData;

    explicit AnnoSetInspector(qzk::AnnoSet& set) noexcept : ObservableInspector(set), set_(set) {}

    std::vector<du::SmartPtr<qzk::Annotation>> GetAnnotations() const {
        return set_.GetAnnotations();
    }
    std::size_t GetAnnotationCount() const { return set_.GetAnnotationCount(); }
    std::vector<AuxiliaryData> GetAuxiliaryData() const { return set_.GetAuxiliaryData(); }

    // position past the end, or negative, appends. false for null or an annotation of a set.
    bool AddAnnotation(du::SmartPtr<qzk::Annotation> const& annotation,
                       int64 position = qzk::AnnoSet::POSITION_LAST) {
        return set_._Add(annotation, position);
    }
    // false if the annotation is not in this set; nothing is told then.
    bool ChangeAnnotation(du::SmartPtr<qzk::Annotation> const& annotation, bool inPlace) {
        return set_.ChangeAnnotation(annotation, inPlace);
    }
    // Removes, telling removed and then deleted with the operation.
    bool DeleteAnnotation(du::SmartPtr<qzk::Annotation> const& annotation,
                          du::SmartPtr<qzk::Operation> const& operation) {
        return set_.DeleteAnnotation(annotation, operation);
    }
    void NotifyInitialized() { set_.NotifyInitialized(); }
    void NotifyAllAnnotationsApplied() { set_.NotifyAllAnnotationsApplied(); }
    void AddAuxiliaryData(AuxiliaryData const& data) { set_.AddAuxiliaryData(data); }
    bool RemoveAuxiliaryData(du::Symbol const& key) { return set_.RemoveAuxiliaryData(key); }

private:
    qzk::AnnoSet& set_;
};

class AnnotationInspector {
public:
    explicit AnnotationInspector(qzk::Annotation& annotation) noexcept : annotation_(annotation) {}

    bool IsSelected() const { return annotation_.IsSelected(); }
    // The view of the last SetSelected; null before.
    du::SmartPtr<qzk::View> GetSelectedView() const { return annotation_.GetSelectedView(); }
    unsigned int GetSelectedInSceneCount() const { return annotation_.GetSelectedInSceneCount(); }
    unsigned int GetDeselectedInSceneCount() const {
        return annotation_.GetDeselectedInSceneCount();
    }

private:
    qzk::Annotation& annotation_;
};

} // namespace qzref
