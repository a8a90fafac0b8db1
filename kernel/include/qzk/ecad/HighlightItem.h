// A highlighted object: name, colour word and fonted flag beside the key. Only the
// AppearanceItem part is compared, so a search key may carry any name, colour and flag
// (by convention an empty name, 0xFFFFFFFF and false).
#pragma once

#include "qzk/ecad/AppearanceItemWithName.h"

namespace qzk::ecad {

class HighlightItem : public AppearanceItemWithName {
public:
    HighlightItem() = default;
    HighlightItem(void* object, short firstHandle, short secondHandle, IcmApiEcad* icm,
                  du::Symbol const& name = du::Symbol::EMPTY, unsigned int color = 0xFFFFFFFFu,
                  bool fonted = false)
        : AppearanceItemWithName(object, firstHandle, secondHandle, icm, name), color(color),
          fonted(fonted) {}
    HighlightItem(AppearanceItem const& item, du::Symbol const& name, unsigned int color,
                  bool fonted)
        : AppearanceItemWithName(item, name), color(color), fonted(fonted) {}
    HighlightItem(HighlightItem const&) = default;
    HighlightItem& operator=(HighlightItem const&) = default;
    ~HighlightItem() override;

    using AppearanceItem::operator=;

    unsigned int color = 0xFFFFFFFFu;
    bool fonted = false;
};

} // namespace qzk::ecad
