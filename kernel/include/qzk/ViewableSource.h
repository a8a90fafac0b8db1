// Where a design comes from: a file path, or a name for a design that is in memory already.
#pragma once

#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "qzk/Object.h"

namespace qzk {

class ViewableSource : public Object {
public:
    static du::SmartPtr<ViewableSource> Create(du::Symbol const& fileSource);
    ~ViewableSource() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    du::Symbol GetFileSource() const { return fileSource_; }

protected:
    void _OnDestroy() override;

private:
    explicit ViewableSource(du::Symbol fileSource);

    du::Symbol const fileSource_;
};

} // namespace qzk
