#include "qzk/ecad/HighlightItem.h"

namespace qzk::ecad {
HighlightItem::~HighlightItem() = default;
}
