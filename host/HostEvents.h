// The host's observer of its board scene: prints every event it hears, decoded, when asked to,
// and keeps what the load said. Handlers run on the thread that pumps messages.
#pragma once

#include "board/PCBSceneObserver.h"
#include "compare/PCBCompareSceneObserver.h"
#include "compare/PCBSchCompareSceneObserver.h"
#include "compare/SchematicCompareSceneObserver.h"
#include "schematic/SchematicSceneObserver.h"

#include <string>

namespace qzhost {

// What the host's observers of every kind of scene share: printing when asked to, and what the
// load said.
class EventLog {
public:
    explicit EventLog(bool print) : print_(print) {}

    std::string const& GetLoadError() const { return loadError_; }
    void Loaded(unsigned short error, du::Symbol const& text);
    void Print(char const* format, ...) const __attribute__((format(printf, 2, 3)));

private:
    bool print_;
    std::string loadError_;
};

class HostEvents : public qzkapp::ecad::PCBSceneObserver, public EventLog {
public:
    explicit HostEvents(bool print);
    ~HostEvents() override;

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
};

class SchematicHostEvents : public qzkapp::ecad::SchematicSceneObserver, public EventLog {
public:
    explicit SchematicHostEvents(bool print);
    ~SchematicHostEvents() override;

    void DetachObserver() override {}
    void OnDrawOrderChanged() override;
    void OnDesignLoaded(unsigned short error, du::Symbol const& text) override;
    void OnSublayerColorVisChanged(unsigned int source) override;
    void OnPageChanged(unsigned int page) override;
};

// A board compare tells the end of each design's load; a failure of either is the one kept.
class CompareHostEvents : public qzkapp::ecad::PCBCompareSceneObserver, public EventLog {
public:
    explicit CompareHostEvents(bool print);
    ~CompareHostEvents() override;

    void DetachObserver() override {}
    void OnDrawOrderChanged() override;
    void OnGroupColorVisChanged(unsigned int source) override;
    void OnDesignLoaded(bool second, unsigned short error, du::Symbol const& text) override;
    void OnSublayerColorVisChanged(unsigned int source) override;
    void OnOrientationChanged(unsigned int flipped) override;
    void OnRotationChanged(short degrees) override;
};

// A board compared with a schematic tells each side's colours and draw order apart.
class BoardSchematicHostEvents : public qzkapp::ecad::PCBSchCompareSceneObserver, public EventLog {
public:
    explicit BoardSchematicHostEvents(bool print);
    ~BoardSchematicHostEvents() override;

    void DetachObserver() override {}
    void OnDrawOrderChanged() override;
    void OnGroupColorVisChanged(unsigned int source) override;
    void OnDesignLoaded(bool second, unsigned short error, du::Symbol const& text) override;
    void OnHighlightOnlyVisibleChanged(bool const& onlyVisible,
                                       unsigned int const& source) override;
    void OnOrientationChanged(unsigned int flipped) override;
    void OnRotationChanged(short degrees) override;
    void OnIsolateOnlyVisibleChanged(bool const& onlyVisible, unsigned int const& source) override;
    void OnPageChanged(unsigned int page) override;
    void OnPCBSublayerColorVisChanged(unsigned int source) override;
    void OnSchSublayerColorVisChanged(unsigned int source) override;
    void OnPcbDrawOrderChanged() override;
    void OnSchDrawOrderChanged() override;
};

// A schematic compare tells the end of each design's load and the sheet that became current.
class SchematicCompareHostEvents : public qzkapp::ecad::SchematicCompareSceneObserver,
                                   public EventLog {
public:
    explicit SchematicCompareHostEvents(bool print);
    ~SchematicCompareHostEvents() override;

    void DetachObserver() override {}
    void OnDrawOrderChanged() override;
    void OnGroupColorVisChanged(unsigned int source) override;
    void OnDesignLoaded(bool second, unsigned short error, du::Symbol const& text) override;
    void OnSublayerColorVisChanged(unsigned int source) override;
    void OnPageChanged(unsigned int page) override;
};

} // namespace qzhost
