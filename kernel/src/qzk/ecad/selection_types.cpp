#include "qzk/ecad/selection_types.h"

namespace qzk::ecad {

du::Symbol const& selection_types::ECAD_OBJECT() {
    static du::Symbol const type("QzkEcadObject");
    return type;
}

du::Symbol const& selection_types::ECAD_GEOMETRY() {
    static du::Symbol const type("QzkEcadGeometry");
    return type;
}

du::Symbol const& selection_types::ECAD_OVERLAY() {
    static du::Symbol const type("QzkEcadOverlay");
    return type;
}

bool selection_types::Belongs(du::Symbol const& contentType) {
    return contentType == ECAD_OBJECT();
}

} // namespace qzk::ecad
