#include "dg/DPoint3D.h"

namespace dg {

DPoint3D const DPoint3D::ORIGIN(0.0, 0.0, 0.0);

} // namespace dg
