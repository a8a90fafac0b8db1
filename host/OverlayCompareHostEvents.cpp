#include "OverlayCompareHostEvents.h"

#include "scene/ChangeSource.h"

#include <cstdio>

namespace qzhost {

OverlayCompareHostEvents::OverlayCompareHostEvents(bool print) : EventLog(print) {}

OverlayCompareHostEvents::~OverlayCompareHostEvents() {
    DetachFromMessageLoop();
}

void OverlayCompareHostEvents::OnDrawOrderChanged() {
    Print("draw order changed");
}
void OverlayCompareHostEvents::OnDesignLoaded(bool second, unsigned short error,
                                              du::Symbol const& text) {
    Print("%s design:", second ? "second" : "first");
    if (error != 0) {
        sideErrors_[second ? 1 : 0] = "error " + std::to_string(error) + ": " + text.str();
    }
    Loaded(error, text);
}
void OverlayCompareHostEvents::OnSublayerColorVisChanged(unsigned int source) {
    Print("board sublayers changed (source %u)", source);
}
void OverlayCompareHostEvents::OnOverlayChanged(unsigned int source) {
    if (source == qzkapp::ecad::ChangeSourceOverlayLoad) {
        std::printf("overlay loaded\n");
        std::fflush(stdout);
    }
    Print("overlay changed (source %u)", source);
}
void OverlayCompareHostEvents::OnOrientationChanged(unsigned int flipped) {
    Print("orientation %s", flipped != 0 ? "flipped" : "front");
}
void OverlayCompareHostEvents::OnRotationChanged(short degrees) {
    Print("rotation %d", degrees);
}

} // namespace qzhost
