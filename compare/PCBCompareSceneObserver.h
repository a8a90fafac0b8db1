// What a board compare scene tells its observers, beyond what every compare scene tells:
// orientation, rotation and the switches of what only visible objects get.
//
// Tags above the family's last event are ignored, so that a later scene may add events without
// breaking an older host.
#pragma once

#include "compare/CompareSceneObserver.h"
#include "component/ComponentExport.h"

namespace qzkapp::ecad {

class QZECAD_EXPORT PCBCompareSceneObserver : public CompareSceneObserver {
public:
    PCBCompareSceneObserver();
    ~PCBCompareSceneObserver() override;

    void HandleEvent(unsigned char tag, dom::MessageReader& reader) override;
    // 1 when the boards are seen from the back, 0 otherwise.
    virtual void OnOrientationChanged(unsigned int flipped);
    virtual void OnRotationChanged(short degrees);
    // The flag first and the source second, the reverse of the wire order.
    virtual void OnHighlightOnlyVisibleChanged(bool const& onlyVisible, unsigned int const& source);
    virtual void OnIsolateOnlyVisibleChanged(bool const& onlyVisible, unsigned int const& source);
};

} // namespace qzkapp::ecad
