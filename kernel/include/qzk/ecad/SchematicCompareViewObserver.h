// Observer of a schematic compare view: adds the going to the home sheet.
#pragma once

#include "qzk/ecad/CompareViewObserver.h"

namespace qzk::ecad {

class SchematicCompareViewObserver : public CompareViewObserver {
public:
    SchematicCompareViewObserver();
    ~SchematicCompareViewObserver() override;

    void HandleEvent(unsigned char id, dom::MessageReader& reader) override;

    virtual void OnHome();
};

} // namespace qzk::ecad
