// One placement of a design in the world, named. The host makes an instance for each design it
// opens and hands it, with the design's source, to the scene factory.
#pragma once

#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "qzk/Object.h"

namespace qzk {

class Instance : public Object {
public:
    static du::SmartPtr<Instance> Create(du::Symbol const& name);
    ~Instance() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    du::Symbol GetName() const { return name_; }

protected:
    void _OnDestroy() override;

private:
    explicit Instance(du::Symbol name);

    du::Symbol const name_;
};

} // namespace qzk
