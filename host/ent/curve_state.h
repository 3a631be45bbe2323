// How a curve's state is told apart from its earlier ones, and where the paths of curves that were
// asked last are kept.
#pragma once

#include <cstdint>
#include <memory>

#include "host/ent/curve_path.h"

namespace host {

// A number that no other state of any object has had. Copies and assignments are states of their own.
class StateMark {
public:
    StateMark() { touch(); }
    StateMark(const StateMark&) { touch(); }
    StateMark& operator=(const StateMark&) { return touch(), *this; }
    void touch() { value_ = ++last_; }
    std::uint64_t value() const { return value_; }

private:
    static inline std::uint64_t last_ = 0;
    std::uint64_t value_ = 0;
};

// The path kept for that state, or null.
std::shared_ptr<const CurvePath> keptPath(std::uint64_t state);
// Keeps it instead of the one that was asked for longest ago.
void keepPath(std::uint64_t state, std::shared_ptr<const CurvePath> path);

} // namespace host
