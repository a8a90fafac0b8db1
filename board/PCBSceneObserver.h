// What a board scene tells its observers, beyond what every design scene tells: the switches of
// what only visible objects get, overlays, orientation and rotation.
//
// Tags above the board family's last event are ignored, so that a later scene may add events
// without breaking an older host.
#pragma once

#include "component/ComponentExport.h"
#include "design/SceneObserver.h"

namespace qzkapp::ecad {

class QZECAD_EXPORT PCBSceneObserver : public SceneObserver {
public:
    PCBSceneObserver();
    ~PCBSceneObserver() override;

    void HandleEvent(unsigned char tag, dom::MessageReader& reader) override;
    // The flag first and the source second, the reverse of the wire order.
    virtual void OnHighlightOnlyVisibleChanged(bool const& onlyVisible, unsigned int const& source);
    virtual void OnOverlayChanged(unsigned int source);
    // 1 when the board is seen from the back, 0 otherwise.
    virtual void OnOrientationChanged(unsigned int flipped);
    virtual void OnRotationChanged(short degrees);
    virtual void OnIsolateOnlyVisibleChanged(bool const& onlyVisible, unsigned int const& source);
};

} // namespace qzkapp::ecad
