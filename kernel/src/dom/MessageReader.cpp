#include "dom/MessageReader.h"

#include <cstring>

namespace dom {

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
