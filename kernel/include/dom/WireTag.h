// The kind bytes that precede each value in a message's bytes (see dom::MessageReader).
#pragma once

#include <cstdint>

namespace dom::wire {

inline constexpr char UInt8 = 'b';
inline constexpr char UInt16 = 'h';
inline constexpr char UInt32 = 'w';
inline constexpr char Boolean = 'z';
// Followed by a 32-bit length and the bytes.
inline constexpr char String = 's';
// Stands for the next entry of the message's objects.
inline constexpr char Object = 'o';

} // namespace dom::wire
