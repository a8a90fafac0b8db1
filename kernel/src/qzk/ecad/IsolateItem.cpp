#include "qzk/ecad/IsolateItem.h"

namespace qzk::ecad {
IsolateItem::~IsolateItem() = default;
}
