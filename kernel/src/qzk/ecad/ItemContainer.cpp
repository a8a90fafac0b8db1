#include "qzk/ecad/ItemContainer.h"

namespace qzk::ecad {

template class ItemContainer<HighlightItem>;
template class ItemContainer<IsolateItem>;

} // namespace qzk::ecad
