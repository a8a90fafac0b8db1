// Observer of a schematic view: adds the going to the home sheet.
#pragma once

#include "qzk/ecad/ViewObserver.h"

namespace qzk::ecad {

class SchematicViewObserver : public ViewObserver {
public:
    SchematicViewObserver();
    ~SchematicViewObserver() override;

    void HandleEvent(unsigned char id, dom::MessageReader& reader) override;

    virtual void OnHome();
};

} // namespace qzk::ecad
