// The host's random generator: linear congruential, 15 bits a number (0 to 32767), so that seeded
// results are the same everywhere. One sequence for the process.
#pragma once

#include <cstdint>

namespace host {

constexpr int kRandomMax = 0x7FFF;

class Random {
public:
    explicit Random(std::uint32_t seed = 1) : state_(seed) {}
    int next() {
        state_ = state_ * 214013u + 2531011u;
        return static_cast<int>(state_ >> 16 & 0x7FFFu);
    }

private:
    std::uint32_t state_;
};

inline Random& processRandom() {
    static Random generator;
    return generator;
}

inline void srand(std::uint32_t seed) { processRandom() = Random(seed); }
inline int rand() { return processRandom().next(); }

} // namespace host
