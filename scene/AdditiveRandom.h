// The additive random source behind overlay and image ids: 55 words of state, all arithmetic in
// unsigned 32 bits modulo 100,000,000, seeded once from the calendar time.
//
// Ids must differ between processes that open the same design (a saved comparison names its
// overlays by id), so the seed is the time and not a constant. Every source of one process is
// seeded alike within a second and so draws the same sequence: whoever draws checks the id
// against those in use. A generator guards its own state:
// scenes of different kernels each hold only their own lock while they draw, and two of them may
// draw from one process-wide generator at once.
#pragma once

#include "du/Types.h"

#include <array>
#include <cstdint>
#include <ctime>
#include <mutex>

namespace qzkapp::ecad {

class AdditiveRandom {
public:
    AdditiveRandom() {
        state_[0] = static_cast<std::uint32_t>(static_cast<uint64>(std::time(nullptr))) % kModulus;
        for (std::size_t i = 1; i < state_.size(); ++i) {
            state_[i] = (state_[i - 1] * 31u + 1u) % kModulus;
        }
        index_ = static_cast<std::uint32_t>(state_.size());
    }
    AdditiveRandom(AdditiveRandom const&) = delete;
    AdditiveRandom& operator=(AdditiveRandom const&) = delete;

    // A 32-bit word from two values: the first in the high half, the second's low 16 bits below.
    std::uint32_t NextWord() const {
        std::lock_guard lock(mutex_);
        std::uint32_t const high = Draw();
        std::uint32_t const low = Draw();
        return (high << 16) | (low & 0xFFFFu);
    }

    // Two words, the first in the high half; may be 0.
    uint64 NextId() const {
        uint64 const high = NextWord();
        return (high << 32) | NextWord();
    }

    // Draws until the id is not 0, which means "none" wherever an id is read.
    uint64 NextNonZeroId() const {
        for (;;) {
            if (uint64 const id = NextId(); id != 0) {
                return id;
            }
        }
    }

private:
    static constexpr std::uint32_t kModulus = 100000000u;

    std::uint32_t Draw() const {
        std::size_t const size = state_.size();
        index_ = static_cast<std::uint32_t>((index_ + 1) % size);
        state_[index_] =
            (state_[(index_ + size - 1) % size] + state_[(index_ + 23) % size]) % kModulus;
        return state_[index_];
    }

    mutable std::mutex mutex_;
    mutable std::array<std::uint32_t, 55> state_{};
    mutable std::uint32_t index_ = 0;
};

} // namespace qzkapp::ecad
