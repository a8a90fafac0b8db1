#include "SceneMessages.h"

#include <bit>
#include <cstdint>
#include <stdexcept>

namespace qzk::ecad::detail {

namespace {

void PushWord64(dom::ObserverProxy& proxy, std::uint64_t word) {
    proxy.PushUInt32Value(static_cast<unsigned int>(word >> 32));
    proxy.PushUInt32Value(static_cast<unsigned int>(word & 0xFFFFFFFFu));
}

} // namespace

void PayloadEvent::Post(dom::ObserverProxy* proxy) const {
    proxy->PushUInt8Value(id_);
    if (pusher_) {
        pusher_(*proxy);
    }
}

void PushPointer(dom::ObserverProxy& proxy, void const* pointer) {
    PushWord64(proxy, static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(pointer)));
}

void PushDouble(dom::ObserverProxy& proxy, double value) {
    PushWord64(proxy, std::bit_cast<std::uint64_t>(value));
}

void PushShorts(dom::ObserverProxy& proxy, std::vector<short> const& values) {
    proxy.PushUInt32Value(static_cast<unsigned int>(values.size()));
    for (short value : values) {
        proxy.PushUInt16Value(static_cast<unsigned short>(value));
    }
}

void PushItems(dom::ObserverProxy& proxy, std::vector<AppearanceItem> const& items) {
    proxy.PushUInt32Value(static_cast<unsigned int>(items.size()));
    for (AppearanceItem const& item : items) {
        PushPointer(proxy, item.object);
        proxy.PushUInt16Value(static_cast<unsigned short>(item.firstHandle));
        proxy.PushUInt16Value(static_cast<unsigned short>(item.secondHandle));
        PushPointer(proxy, item.icm);
    }
}

void PushUInts(dom::ObserverProxy& proxy, std::vector<unsigned int> const& values) {
    proxy.PushUInt32Value(static_cast<unsigned int>(values.size()));
    for (unsigned int value : values) {
        proxy.PushUInt32Value(value);
    }
}

void Decoder::Fail() const {
    throw std::runtime_error(std::string(who_) + ": malformed message " +
                             std::to_string(static_cast<unsigned int>(id_)));
}

bool Decoder::Bool() {
    bool value = false;
    if (!reader_.GetBooleanValue(value)) {
        Fail();
    }
    return value;
}

unsigned int Decoder::UInt32() {
    unsigned int value = 0;
    if (!reader_.GetUInt32Value(value)) {
        Fail();
    }
    return value;
}

unsigned short Decoder::UInt16() {
    unsigned short value = 0;
    if (!reader_.GetUInt16Value(value)) {
        Fail();
    }
    return value;
}

unsigned char Decoder::UInt8() {
    unsigned char value = 0;
    if (!reader_.GetUInt8Value(value)) {
        Fail();
    }
    return value;
}

std::string Decoder::String() {
    std::string value;
    if (!reader_.GetStringValue(value)) {
        Fail();
    }
    return value;
}

void* Decoder::Pointer() {
    std::uint64_t high = UInt32();
    std::uint64_t word = (high << 32) | UInt32();
    // An item travels as the address it had when it was posted, by design of the notice.
    return reinterpret_cast<void*>( // NOLINT(performance-no-int-to-ptr)
        static_cast<std::uintptr_t>(word));
}

double Decoder::Double() {
    std::uint64_t high = UInt32();
    return std::bit_cast<double>((high << 32) | UInt32());
}

std::size_t Decoder::Count(std::size_t elementBytes) {
    unsigned int const count = UInt32();
    if (count > reader_.BytesLeft() / elementBytes) {
        Fail();
    }
    return count;
}

// Each element's wire size: a tag byte before every value, pointers and doubles as two words.
std::vector<short> Decoder::Shorts() {
    std::vector<short> values(Count(1 + sizeof(std::uint16_t)));
    for (short& value : values) {
        value = static_cast<short>(UInt16());
    }
    return values;
}

std::vector<AppearanceItem> Decoder::Items() {
    std::vector<AppearanceItem> items(Count((std::size_t{4} * (1 + sizeof(std::uint32_t))) +
                                            (std::size_t{2} * (1 + sizeof(std::uint16_t)))));
    for (AppearanceItem& item : items) {
        item.object = Pointer();
        item.firstHandle = static_cast<short>(UInt16());
        item.secondHandle = static_cast<short>(UInt16());
        item.icm = static_cast<IcmApiEcad*>(Pointer());
    }
    return items;
}

std::vector<unsigned int> Decoder::UInts() {
    std::vector<unsigned int> values(Count(1 + sizeof(std::uint32_t)));
    for (unsigned int& value : values) {
        value = UInt32();
    }
    return values;
}

du::SmartPtr<du::RefCounted> Decoder::Object() {
    du::SmartPtr<du::RefCounted> value;
    if (!reader_.GetObjectValue(value)) {
        Fail();
    }
    return value;
}

} // namespace qzk::ecad::detail
