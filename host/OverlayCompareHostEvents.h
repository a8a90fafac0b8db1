// The host's observer of a board compared with a Gerber overlay: the board's load notice as any
// design's, the overlay's arrival as "overlay loaded", and each side's failure kept apart, so
// that a film that cannot be read leaves the board shown.
#pragma once

#include "HostEvents.h"
#include "compare/PCBOvlCompareSceneObserver.h"

#include <string>

namespace qzhost {

class OverlayCompareHostEvents : public qzkapp::ecad::PCBOvlCompareSceneObserver, public EventLog {
public:
    explicit OverlayCompareHostEvents(bool print);
    ~OverlayCompareHostEvents() override;

    // What the load that failed last said, whichever design it was.
    using EventLog::GetLoadError;
    // What the load of the first (false) or second design said when it failed; empty otherwise.
    std::string const& GetLoadError(bool second) const { return sideErrors_[second ? 1 : 0]; }

    void DetachObserver() override {}
    void OnDrawOrderChanged() override;
    void OnDesignLoaded(bool second, unsigned short error, du::Symbol const& text) override;
    void OnSublayerColorVisChanged(unsigned int source) override;
    void OnOverlayChanged(unsigned int source) override;
    void OnOrientationChanged(unsigned int flipped) override;
    void OnRotationChanged(short degrees) override;

private:
    std::string sideErrors_[2];
};

} // namespace qzhost
