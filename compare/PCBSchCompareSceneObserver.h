// What a board-against-schematic compare scene tells its observers, beyond what every compare
// scene tells: the board's switches and orientation, the schematic's page, and the colours and
// draw order of each side, told apart.
//
// Tags above the family's last event are ignored, so that a later scene may add events without
// breaking an older host.
#pragma once

#include "compare/CompareSceneObserver.h"
#include "component/ComponentExport.h"

namespace qzkapp::ecad {

class QZECAD_EXPORT PCBSchCompareSceneObserver : public CompareSceneObserver {
public:
    PCBSchCompareSceneObserver();
    ~PCBSchCompareSceneObserver() override;

    void HandleEvent(unsigned char tag, dom::MessageReader& reader) override;
    // The flag first and the source second, the reverse of the wire order.
    virtual void OnHighlightOnlyVisibleChanged(bool const& onlyVisible, unsigned int const& source);
    // 1 when the board is seen from the back, 0 otherwise.
    virtual void OnOrientationChanged(unsigned int flipped);
    virtual void OnRotationChanged(short degrees);
    // Declared fourth although its event has the family's last id.
    virtual void OnIsolateOnlyVisibleChanged(bool const& onlyVisible, unsigned int const& source);
    virtual void OnPageChanged(unsigned int page);
    virtual void OnPCBSublayerColorVisChanged(unsigned int source);
    virtual void OnSchSublayerColorVisChanged(unsigned int source);
    virtual void OnPcbDrawOrderChanged();
    virtual void OnSchDrawOrderChanged();
};

} // namespace qzkapp::ecad
