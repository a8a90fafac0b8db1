// What a board-against-overlay compare scene tells its observers, beyond what every compare
// scene tells: the switches of what only visible objects get, the overlay, orientation and
// rotation. The overlay's arrival is told as an overlay change whose source is the overlay load
// (ChangeSourceOverlayLoad); only a failed overlay load is told as a design's load notice.
//
// Tags above the family's last event are ignored, so that a later scene may add events without
// breaking an older host.
#pragma once

#include "compare/CompareSceneObserver.h"
#include "component/ComponentExport.h"

namespace qzkapp::ecad {

class QZECAD_EXPORT PCBOvlCompareSceneObserver : public CompareSceneObserver {
public:
    PCBOvlCompareSceneObserver();
    ~PCBOvlCompareSceneObserver() override;

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
