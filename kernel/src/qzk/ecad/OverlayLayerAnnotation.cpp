#include "qzk/ecad/OverlayLayerAnnotation.h"

#include "qzk/ClassType.h"

namespace qzk::ecad {
namespace {
bool const registered =
    ClassType::RegisterClass(classid::EcadOverlayLayerAnnotation, {classid::Annotation});
} // namespace

du::SmartPtr<OverlayLayerAnnotation> OverlayLayerAnnotation::Create() {
    return du::SmartPtr<OverlayLayerAnnotation>(new OverlayLayerAnnotation());
}

OverlayLayerAnnotation::OverlayLayerAnnotation() : Annotation(0, 0) {
    (void)registered;
}

OverlayLayerAnnotation::~OverlayLayerAnnotation() = default;

ClassType const& OverlayLayerAnnotation::GetClassType() const {
    static ClassType const type(classid::EcadOverlayLayerAnnotation);
    return type;
}

du::Symbol OverlayLayerAnnotation::GetDebugClassName() const {
    return du::Symbol("qzk::ecad::OverlayLayerAnnotation");
}

} // namespace qzk::ecad
