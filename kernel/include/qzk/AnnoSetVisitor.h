// Walks the annotations of an annotation set (qzk::AnnoSet::Visit). VisitAnnotation answers true
// to go on and false to stop the walk.
//
// reverse: false walks from the first annotation to the last (the set's order), true from the
// last to the first.
#pragma once

#include "du/SmartPtr.h"

namespace qzk {

class Annotation;

class AnnoSetVisitor {
public:
    explicit AnnoSetVisitor(bool reverse) noexcept : reverse_(reverse) {}
    AnnoSetVisitor(AnnoSetVisitor const&) = default;
    AnnoSetVisitor& operator=(AnnoSetVisitor const&) = default;
    virtual ~AnnoSetVisitor();

    virtual bool VisitAnnotation(du::SmartPtr<Annotation> const& annotation) = 0;

    bool IsReverse() const noexcept { return reverse_; }

private:
    bool reverse_;
};

} // namespace qzk
