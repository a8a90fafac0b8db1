#include "qzk/AnnoSetVisitor.h"

namespace qzk {

AnnoSetVisitor::~AnnoSetVisitor() = default;

} // namespace qzk
