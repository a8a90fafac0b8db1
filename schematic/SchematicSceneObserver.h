// What a schematic scene tells its observers beyond what every design scene tells: the sheet
// that became current.
//
// Tags above the schematic family's last event are ignored, so that a later scene may add events
// without breaking an older host.
#pragma once

#include "component/ComponentExport.h"
#include "design/SceneObserver.h"

namespace qzkapp::ecad {

class QZECAD_EXPORT SchematicSceneObserver : public SceneObserver {
public:
    SchematicSceneObserver();
    ~SchematicSceneObserver() override;

    void HandleEvent(unsigned char tag, dom::MessageReader& reader) override;
    // 0-based, as the view counts sheets.
    virtual void OnPageChanged(unsigned int page);
};

} // namespace qzkapp::ecad
