#include "dom/MessageReader.h"

#include "dom/WireTag.h"

#include <cstring>

namespace dom {

namespace {

template <class T> bool ReadValue(std::string const& bytes, std::size_t& offset, char tag, T& out) {
    if (offset + 1 + sizeof(T) > bytes.size() || bytes[offset] != tag) {
        return false;
    }
    std::memcpy(&out, bytes.data() + offset + 1, sizeof(T));
    offset += 1 + sizeof(T);
    return true;
}

} // namespace

bool MessageReader::GetInt32Value(int& value) {
    unsigned int word = 0;
    if (!GetUInt32Value(word)) {
        return false;
    }
    value = static_cast<int>(word);
    return true;
}

bool MessageReader::GetUInt32Value(unsigned int& value) {
    return ReadValue(message_->bytes, offset_, wire::UInt32, value);
}

bool MessageReader::GetUInt16Value(unsigned short& value) {
    return ReadValue(message_->bytes, offset_, wire::UInt16, value);
}

bool MessageReader::GetUInt8Value(unsigned char& value) {
    return ReadValue(message_->bytes, offset_, wire::UInt8, value);
}

bool MessageReader::GetBooleanValue(bool& value) {
    unsigned char byte = 0;
    if (!ReadValue(message_->bytes, offset_, wire::Boolean, byte)) {
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
