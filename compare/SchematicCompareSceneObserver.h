// What a schematic compare scene tells its observers, beyond what every compare scene tells:
// the sheet that became current.
//
// Tags above the family's last event are ignored, so that a later scene may add events without
// breaking an older host.
#pragma once

#include "compare/CompareSceneObserver.h"
#include "component/ComponentExport.h"

namespace qzkapp::ecad {

class QZECAD_EXPORT SchematicCompareSceneObserver : public CompareSceneObserver {
public:
    SchematicCompareSceneObserver();
    ~SchematicCompareSceneObserver() override;

    void HandleEvent(unsigned char tag, dom::MessageReader& reader) override;
    // 0-based, as the view counts sheets.
    virtual void OnPageChanged(unsigned int page);
};

} // namespace qzkapp::ecad
