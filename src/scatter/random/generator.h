// The random sequence of scatters: linear congruential modulo 2^32, with the multiplier and increment of
// Knuth and Lewis (Press et al., Numerical Recipes, 1992); a draw takes the upper 24 bits.
#pragma once
#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace corvane::scatter {

class Generator {
public:
    explicit Generator(std::uint32_t state) : state_(state) {}
    double Draw() { // in [0, 1)
        state_ = state_ * 1664525u + 1013904223u;
        return (state_ >> 8) * 5.960464477539063e-8;
    }
    double Between(double low, double high) { return low + Draw() * (high - low); }
    size_t Index(size_t count) {
        return std::min(size_t(double(count) * Draw()), count - 1);
    } // count above 0

private:
    std::uint32_t state_;
};

} // namespace corvane::scatter
