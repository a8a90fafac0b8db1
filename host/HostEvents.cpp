#include "HostEvents.h"

#include <cstdarg>
#include <cstdio>

namespace qzhost {

void EventLog::Print(char const* format, ...) const {
    if (!print_) {
        return;
    }
    std::va_list args;
    va_start(args, format);
    std::fputs("event: ", stdout);
    std::vfprintf(stdout, format, args);
    std::fputc('\n', stdout);
    va_end(args);
}

void HostEvents::OnDrawOrderChanged() {
    Print("draw order changed");
}
void HostEvents::OnHighlightChanged(unsigned int count) {
    Print("highlight changed, %u items", count);
}
void HostEvents::OnGroupColorVisChanged(unsigned int source) {
    Print("group colours changed (source %u)", source);
}
void HostEvents::OnAssocHighlightColorChanged(unsigned int color) {
    Print("associated highlight colour 0x%08X", color);
}

void EventLog::Loaded(unsigned short error, du::Symbol const& text) {
    if (error == 0) {
        std::printf("design loaded\n");
        std::fflush(stdout);
    } else {
        loadError_ = "error " + std::to_string(error) + ": " + text.str();
    }
    Print("design loaded, error %u%s%s", error, error != 0 ? ": " : "", text.str().c_str());
}

HostEvents::HostEvents(bool print) : EventLog(print) {}

HostEvents::~HostEvents() {
    DetachFromMessageLoop();
}

void HostEvents::OnDesignLoaded(unsigned short error, du::Symbol const& text) {
    Loaded(error, text);
}

void HostEvents::OnSublayerColorVisChanged(unsigned int source) {
    Print("sublayer colours changed (source %u)", source);
}
void HostEvents::OnImageChanged(unsigned int source) {
    Print("images changed (source %u)", source);
}
void HostEvents::OnHighlightOnlyVisibleChanged(bool const& onlyVisible,
                                               unsigned int const& source) {
    Print("highlight only visible %s (source %u)", onlyVisible ? "on" : "off", source);
}
void HostEvents::OnOverlayChanged(unsigned int source) {
    Print("overlay changed (source %u)", source);
}
void HostEvents::OnOrientationChanged(unsigned int flipped) {
    Print("orientation %s", flipped != 0 ? "flipped" : "front");
}
void HostEvents::OnRotationChanged(short degrees) {
    Print("rotation %d", degrees);
}
void HostEvents::OnIsolateOnlyVisibleChanged(bool const& onlyVisible, unsigned int const& source) {
    Print("isolate only visible %s (source %u)", onlyVisible ? "on" : "off", source);
}

SchematicHostEvents::SchematicHostEvents(bool print) : EventLog(print) {}

SchematicHostEvents::~SchematicHostEvents() {
    DetachFromMessageLoop();
}

void SchematicHostEvents::OnDrawOrderChanged() {
    Print("draw order changed");
}
void SchematicHostEvents::OnDesignLoaded(unsigned short error, du::Symbol const& text) {
    Loaded(error, text);
}
void SchematicHostEvents::OnSublayerColorVisChanged(unsigned int source) {
    Print("sublayer colours changed (source %u)", source);
}
void SchematicHostEvents::OnPageChanged(unsigned int page) {
    Print("sheet %u", page);
}

CompareHostEvents::CompareHostEvents(bool print) : EventLog(print) {}

CompareHostEvents::~CompareHostEvents() {
    DetachFromMessageLoop();
}

void CompareHostEvents::OnDrawOrderChanged() {
    Print("draw order changed");
}
void CompareHostEvents::OnGroupColorVisChanged(unsigned int source) {
    Print("group colours changed (source %u)", source);
}
void CompareHostEvents::OnDesignLoaded(bool second, unsigned short error, du::Symbol const& text) {
    Print("%s design:", second ? "second" : "first");
    Loaded(error, text);
}
void CompareHostEvents::OnSublayerColorVisChanged(unsigned int source) {
    Print("compare rows changed (source %u)", source);
}
void CompareHostEvents::OnOrientationChanged(unsigned int flipped) {
    Print("orientation %s", flipped != 0 ? "flipped" : "front");
}
void CompareHostEvents::OnRotationChanged(short degrees) {
    Print("rotation %d", degrees);
}

BoardSchematicHostEvents::BoardSchematicHostEvents(bool print) : EventLog(print) {}

BoardSchematicHostEvents::~BoardSchematicHostEvents() {
    DetachFromMessageLoop();
}

void BoardSchematicHostEvents::OnDrawOrderChanged() {
    Print("draw order changed");
}
void BoardSchematicHostEvents::OnGroupColorVisChanged(unsigned int source) {
    Print("group colours changed (source %u)", source);
}
void BoardSchematicHostEvents::OnDesignLoaded(bool second, unsigned short error,
                                              du::Symbol const& text) {
    Print("%s design:", second ? "second" : "first");
    Loaded(error, text);
}
void BoardSchematicHostEvents::OnHighlightOnlyVisibleChanged(bool const& onlyVisible,
                                                             unsigned int const& source) {
    Print("highlight only visible %s (source %u)", onlyVisible ? "on" : "off", source);
}
void BoardSchematicHostEvents::OnOrientationChanged(unsigned int flipped) {
    Print("orientation %s", flipped != 0 ? "flipped" : "front");
}
void BoardSchematicHostEvents::OnRotationChanged(short degrees) {
    Print("rotation %d", degrees);
}
void BoardSchematicHostEvents::OnIsolateOnlyVisibleChanged(bool const& onlyVisible,
                                                           unsigned int const& source) {
    Print("isolate only visible %s (source %u)", onlyVisible ? "on" : "off", source);
}
void BoardSchematicHostEvents::OnPageChanged(unsigned int page) {
    Print("sheet %u", page);
}
void BoardSchematicHostEvents::OnPCBSublayerColorVisChanged(unsigned int source) {
    Print("board sublayer colours changed (source %u)", source);
}
void BoardSchematicHostEvents::OnSchSublayerColorVisChanged(unsigned int source) {
    Print("schematic layer colours changed (source %u)", source);
}
void BoardSchematicHostEvents::OnPcbDrawOrderChanged() {
    Print("board draw order changed");
}
void BoardSchematicHostEvents::OnSchDrawOrderChanged() {
    Print("schematic draw order changed");
}

SchematicCompareHostEvents::SchematicCompareHostEvents(bool print) : EventLog(print) {}

SchematicCompareHostEvents::~SchematicCompareHostEvents() {
    DetachFromMessageLoop();
}

void SchematicCompareHostEvents::OnDrawOrderChanged() {
    Print("draw order changed");
}
void SchematicCompareHostEvents::OnGroupColorVisChanged(unsigned int source) {
    Print("group colours changed (source %u)", source);
}
void SchematicCompareHostEvents::OnDesignLoaded(bool second, unsigned short error,
                                                du::Symbol const& text) {
    Print("%s design:", second ? "second" : "first");
    Loaded(error, text);
}
void SchematicCompareHostEvents::OnSublayerColorVisChanged(unsigned int source) {
    Print("compare rows changed (source %u)", source);
}
void SchematicCompareHostEvents::OnPageChanged(unsigned int page) {
    Print("sheet %u", page);
}

} // namespace qzhost
