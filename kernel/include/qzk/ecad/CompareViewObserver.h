// Observer of an ECAD compare view; adds nothing to BaseViewObserver.
#pragma once

#include "qzk/ecad/BaseViewObserver.h"

namespace qzk::ecad {

class CompareViewObserver : public BaseViewObserver {
public:
    CompareViewObserver();
    ~CompareViewObserver() override;
};

} // namespace qzk::ecad
