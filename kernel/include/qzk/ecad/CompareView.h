// An ECAD view of a compare scene. It has no crosshair: a compare scene marks no single object.
#pragma once

#include "qzk/ecad/BaseView.h"

namespace qzk::ecad {

class CompareView : public BaseView {
public:
    ~CompareView() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

protected:
    CompareView(qzk::Scene& scene, unsigned int pages);
};

} // namespace qzk::ecad
