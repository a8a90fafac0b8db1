#include "qzk/ViewableSource.h"

namespace qzk {
namespace {
bool const registered = ClassType::RegisterClass(classid::ViewableSource, {classid::Object});
} // namespace

du::SmartPtr<ViewableSource> ViewableSource::Create(du::Symbol const& fileSource) {
    return du::SmartPtr<ViewableSource>(new ViewableSource(fileSource));
}

ViewableSource::ViewableSource(du::Symbol fileSource) : fileSource_(std::move(fileSource)) {}

ViewableSource::~ViewableSource() = default;

ClassType const& ViewableSource::GetClassType() const {
    static ClassType const type(classid::ViewableSource);
    return type;
}

du::Symbol ViewableSource::GetDebugClassName() const {
    return du::Symbol("qzk::ViewableSource");
}

void ViewableSource::_OnDestroy() {}

} // namespace qzk
