#include "dom/MessageReader.h"

#include "dom/WireTag.h"

#include <cstring>

namespace dom {

bool MessageReader::ReadFixed(char tag, void* out, std::size_t size) {
    std::string const& bytes = message_->bytes;
    if (offset_ + 1 + size > bytes.size() || bytes[offset_] != tag) {
        return false;
    }
    std::memcpy(out, bytes.data() + offset_ + 1, size);
    offset_ += 1 + size;
    return true;
}

bool MessageReader::GetInt32Value(int& value) {
    unsigned int word = 0;
    if (!GetUInt32Value(word)) {
        return false;
    }
    value = static_cast<int>(word);
    return true;
}

bool MessageReader::GetUInt32Value(unsigned int& value) {
    return ReadFixed(wire::UInt32, &value, sizeof value);
}

bool MessageReader::GetUInt16Value(unsigned short& value) {
    return ReadFixed(wire::UInt16, &value, sizeof value);
}

bool MessageReader::GetUInt8Value(unsigned char& value) {
    return ReadFixed(wire::UInt8, &value, sizeof value);
}

bool MessageReader::GetBooleanValue(bool& value) {
    unsigned char byte = 0;
    if (!ReadFixed(wire::Boolean, &byte, sizeof byte)) {
        return false;
    }
    value = byte != 0;
    return true;
}

bool MessageReader::GetStringValue(std::string& value) {
    std::string const& bytes = message_->bytes;
    std::uint32_t length = 0;
    std::size_t const header = 1 + sizeof length;
    if (offset_ + header > bytes.size() || bytes[offset_] != wire::String) {
        return false;
    }
    std::memcpy(&length, bytes.data() + offset_ + 1, sizeof length);
    if (offset_ + header + length > bytes.size()) {
        return false;
    }
    value.assign(bytes, offset_ + header, length);
    offset_ += header + length;
    return true;
}

bool MessageReader::GetObjectValue(du::SmartPtr<du::RefCounted>& value) {
    if (objectIndex_ >= message_->objects.size() || offset_ >= message_->bytes.size() ||
        message_->bytes[offset_] != wire::Object) {
        return false;
    }
    value = message_->objects[objectIndex_++];
    ++offset_;
    return true;
}

} // namespace dom
