// The host's observer of its board scene: prints every event it hears, decoded, when asked to,
// and keeps what the load said. Handlers run on the thread that pumps messages.
#pragma once

#include "board/PCBSceneObserver.h"

#include <string>

namespace qzhost {

class HostEvents : public qzkapp::ecad::PCBSceneObserver {
public:
    explicit HostEvents(bool print);
    ~HostEvents() override;

    std::string const& GetLoadError() const { return loadError_; }

    void DetachObserver() override {}
    void OnDrawOrderChanged() override;
    void OnHighlightChanged(unsigned int count) override;
    void OnGroupColorVisChanged(unsigned int source) override;
    void OnAssocHighlightColorChanged(unsigned int color) override;
    void OnDesignLoaded(unsigned short error, du::Symbol const& text) override;
    void OnSublayerColorVisChanged(unsigned int source) override;
    void OnImageChanged(unsigned int source) override;
    void OnHighlightOnlyVisibleChanged(bool const& onlyVisible,
                                       unsigned int const& source) override;
    void OnOverlayChanged(unsigned int source) override;
    void OnOrientationChanged(unsigned int flipped) override;
    void OnRotationChanged(short degrees) override;
    void OnIsolateOnlyVisibleChanged(bool const& onlyVisible, unsigned int const& source) override;

private:
    void Print(char const* format, ...) const __attribute__((format(printf, 2, 3)));

    bool print_;
    std::string loadError_;
};

} // namespace qzhost
