// The root of the ECAD kernel's view observers. The ids of all ECAD view notices are listed here
// so views and observers agree; they follow qzk::View2DObserver's. Ids a class does not know go
// to its base, and in the end to qzk::View2DObserver, which ignores the unknown.
#pragma once

#include "qzk/View2DObserver.h"

namespace qzk::ecad {

class BaseViewObserver : public qzk::View2DObserver {
public:
    enum : unsigned char {
        CrosshairEventId = NextViewEventId,
        TextColorChangedEventId,
        DimmingLevelEventId,
        HomeEventId,
    };

    BaseViewObserver();
    ~BaseViewObserver() override;
};

} // namespace qzk::ecad
