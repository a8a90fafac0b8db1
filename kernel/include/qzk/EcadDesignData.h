// The content of one loaded design, as the kernel's design object holds it. Reference counted;
// every design data of the kernel is a qzk::ecad::EcadDesignData, reached by a dynamic cast.
#pragma once

#include "du/RefCounted.h"
#include "du/Symbol.h"

namespace qzk {

class EcadDesignData : public virtual du::RefCounted {
public:
    EcadDesignData(EcadDesignData const&) = delete;
    EcadDesignData& operator=(EcadDesignData const&) = delete;
    ~EcadDesignData() override;

    // The design's title as its file gives it ("name"), UTF-8; may be empty.
    virtual du::Symbol GetDesignName() const;

protected:
    explicit EcadDesignData(du::Symbol name);

private:
    du::Symbol name_;
};

} // namespace qzk
