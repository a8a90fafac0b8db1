// The annotation that stands for the layer of board overlays in a scene's annotation set: the
// kernel brings it with the scene's first board overlay (id 0, class EcadOverlayLayerAnnotation),
// and whoever removes the last overlay takes it away again.
#pragma once

#include "qzk/Annotation.h"

namespace qzk::ecad {

class OverlayLayerAnnotation : public Annotation {
public:
    static du::SmartPtr<OverlayLayerAnnotation> Create();
    ~OverlayLayerAnnotation() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

protected:
    OverlayLayerAnnotation();
};

} // namespace qzk::ecad
