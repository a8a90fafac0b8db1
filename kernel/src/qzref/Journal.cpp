#include "qzref/Journal.h"

#include "du/StringConversion.h"

#include <atomic>
#include <cstdio>
#include <mutex>

namespace qzref {
namespace {

struct State {
    std::mutex mutex;
    std::vector<std::string> lines;
    std::atomic<bool> enabled{true};
};

State& GetState() {
    static State state;
    return state;
}

} // namespace

void Journal::Record(std::string_view receiver, std::string_view operation,
                     std::initializer_list<std::string> args) {
    if (!IsEnabled()) {
        return;
    }
    std::string line;
    line.reserve(receiver.size() + operation.size() + 16);
    line.append(receiver).append(".").append(operation).append("(");
    bool first = true;
    for (std::string const& arg : args) {
        if (!first) {
            line += ", ";
        }
        first = false;
        line += arg;
    }
    line += ')';
    Append(std::move(line));
}

void Journal::Append(std::string line) {
    State& state = GetState();
    if (!state.enabled.load(std::memory_order_relaxed)) {
        return;
    }
    std::lock_guard lock(state.mutex);
    state.lines.push_back(std::move(line));
}

std::vector<std::string> Journal::Lines() {
    State& state = GetState();
    std::lock_guard lock(state.mutex);
    return state.lines;
}

std::vector<std::string> Journal::Since(std::size_t mark) {
    State& state = GetState();
    std::lock_guard lock(state.mutex);
    if (mark >= state.lines.size()) {
        return {};
    }
    return {state.lines.begin() + static_cast<std::ptrdiff_t>(mark), state.lines.end()};
}

std::size_t Journal::Size() {
    State& state = GetState();
    std::lock_guard lock(state.mutex);
    return state.lines.size();
}

void Journal::Clear() {
    State& state = GetState();
    std::lock_guard lock(state.mutex);
    state.lines.clear();
}

void Journal::SetEnabled(bool enabled) {
    GetState().enabled.store(enabled);
}
bool Journal::IsEnabled() {
    return GetState().enabled.load(std::memory_order_relaxed);
}

std::string Fmt(bool value) {
    return value ? "true" : "false";
}
std::string Fmt(int value) {
    return std::to_string(value);
}
std::string Fmt(unsigned int value) {
    return std::to_string(value);
}
std::string Fmt(short value) {
    return std::to_string(value);
}
std::string Fmt(unsigned short value) {
    return std::to_string(value);
}
std::string Fmt(unsigned char value) {
    return std::to_string(value);
}
std::string Fmt(long value) {
    return std::to_string(value);
}
std::string Fmt(unsigned long value) {
    return std::to_string(value);
}

std::string Fmt(double value) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%g", value);
    return buffer;
}

std::string Fmt(ColorWord value) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "0x%08X", value.word);
    return buffer;
}

std::string Fmt(char const* text) {
    return Fmt(std::string(text != nullptr ? text : ""));
}
std::string Fmt(std::string const& text) {
    return "\"" + text + "\"";
}
std::string Fmt(std::wstring const& text) {
    return Fmt(du::WideStrToUtf8(text));
}

} // namespace qzref
