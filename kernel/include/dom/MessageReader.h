// Reads the values of one message in the order they were pushed.
//
// Every value in a message carries its kind and width. A read takes the next value only when it
// is of the kind asked for; otherwise it returns false and consumes nothing, so a handler can
// tell a malformed message from a short one. The rule for widths: a 32-bit read (signed or not)
// takes a 32-bit value of either signedness, reinterpreting the bits; 16- and 8-bit reads take
// only values pushed with that width; no read widens or narrows.
#pragma once

#include "dom/WireTag.h"
#include "du/RefCounted.h"
#include "du/SmartPtr.h"

#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

namespace dom {

// The wire form of a message: tagged values, plus the counted objects some kernel notifications
// carry (selection items, scenes) that cannot travel as bytes.
struct MessageData {
    std::string bytes;
    std::vector<du::SmartPtr<du::RefCounted>> objects;
};

class MessageReader {
public:
    // The reader refers to message; message must outlive it.
    explicit MessageReader(MessageData const& message) noexcept : message_(&message) {}

    // The fixed-width reads are inline: a handler reads a few per message, and a call would cost
    // more than the read.
    bool GetInt32Value(int& value) {
        unsigned int word = 0;
        if (!ReadValue(wire::UInt32, word)) {
            return false;
        }
        value = static_cast<int>(word);
        return true;
    }
    bool GetUInt32Value(unsigned int& value) { return ReadValue(wire::UInt32, value); }
    bool GetUInt16Value(unsigned short& value) { return ReadValue(wire::UInt16, value); }
    bool GetUInt8Value(unsigned char& value) { return ReadValue(wire::UInt8, value); }
    bool GetBooleanValue(bool& value) {
        unsigned char byte = 0;
        if (!ReadValue(wire::Boolean, byte)) {
            return false;
        }
        value = byte != 0;
        return true;
    }
    bool GetStringValue(std::string& value);
    // Kernel notifications only: the next counted object.
    bool GetObjectValue(du::SmartPtr<du::RefCounted>& value);

    // True when every value has been read.
    bool AtEnd() const noexcept { return offset_ >= message_->bytes.size(); }
    // The bytes not yet read. Every value takes at least one, so a list count read from the
    // message can be checked against this before anything is allocated for it.
    std::size_t BytesLeft() const noexcept {
        return offset_ >= message_->bytes.size() ? 0 : message_->bytes.size() - offset_;
    }

private:
    template <class T> bool ReadValue(char tag, T& out) {
        std::string const& bytes = message_->bytes;
        if (offset_ + 1 + sizeof(T) > bytes.size() || bytes[offset_] != tag) {
            return false;
        }
        std::memcpy(&out, bytes.data() + offset_ + 1, sizeof(T));
        offset_ += 1 + sizeof(T);
        return true;
    }

    MessageData const* message_;
    std::size_t offset_ = 0;
    std::size_t objectIndex_ = 0;
};

} // namespace dom
