// Reading event payloads in the observers' HandleEvent: each read either yields its value or
// raises std::runtime_error with the text the caller gives, before any handler is called.
#pragma once

#include "dom/MessageReader.h"
#include "du/Symbol.h"

#include <optional>
#include <stdexcept>
#include <string>

namespace qzkapp::ecad {

// A 32-bit value written unsigned and read as int (counts and change sources).
inline unsigned int ReadInt(dom::MessageReader& reader, char const* error) {
    int value = 0;
    if (!reader.GetInt32Value(value)) {
        throw std::runtime_error(error);
    }
    return static_cast<unsigned int>(value);
}

inline unsigned int ReadUInt(dom::MessageReader& reader, char const* error) {
    unsigned int value = 0;
    if (!reader.GetUInt32Value(value)) {
        throw std::runtime_error(error);
    }
    return value;
}

inline unsigned short ReadUShort(dom::MessageReader& reader, char const* error) {
    unsigned short value = 0;
    if (!reader.GetUInt16Value(value)) {
        throw std::runtime_error(error);
    }
    return value;
}

inline bool ReadBool(dom::MessageReader& reader, char const* error) {
    bool value = false;
    if (!reader.GetBooleanValue(value)) {
        throw std::runtime_error(error);
    }
    return value;
}

inline du::Symbol ReadSymbol(dom::MessageReader& reader, char const* error) {
    std::string value;
    if (!reader.GetStringValue(value)) {
        throw std::runtime_error(error);
    }
    return du::Symbol(value);
}

// Payloads the board scenes' families share.

// A rotation travels as a word whose low half is the signed degrees.
inline short ReadRotation(dom::MessageReader& reader) {
    unsigned int const word = ReadUInt(reader, "Failed to retrieve rotation");
    return static_cast<short>(static_cast<unsigned short>(word & 0xFFFFu));
}

// A switch of what only visible objects get: the change source, then the new value.
struct OnlyVisibleChange {
    unsigned int source;
    bool onlyVisible;
};
// flagError: the text a missing value throws; the overlay compare's highlight switch has its own.
inline OnlyVisibleChange
ReadOnlyVisibleChange(dom::MessageReader& reader,
                      char const* flagError = "Failed to retrieve the Only Visible value") {
    unsigned int const source = ReadUInt(reader, "Failed to retrieve the ChangeSource value");
    bool const onlyVisible = ReadBool(reader, flagError);
    return {source, onlyVisible};
}

// An observer family's events follow its base family's: a tag below first goes to Base's
// decoder. Gives the tag's place within this family, or nothing once it was handed down.
template <class Base, class Observer>
std::optional<unsigned int> OwnEvent(Observer& observer, unsigned char tag, unsigned char first,
                                     dom::MessageReader& reader) {
    if (tag < first) {
        observer.Base::HandleEvent(tag, reader);
        return std::nullopt;
    }
    return static_cast<unsigned int>(tag - first);
}

[[noreturn]] inline void ThrowUnrecognised(char const* observerClass, unsigned char tag) {
    throw std::runtime_error(std::string("Unrecognised ") + observerClass + " tag <" +
                             std::to_string(tag) + ">.");
}

} // namespace qzkapp::ecad
