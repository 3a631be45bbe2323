// The connecting lines of thread art as pairs of numbers: which division point is tied to which. Plain
// numbers; the commands that draw them are in thread_commands.cpp.
#pragma once
#include <cstddef>
#include <cstdint>
#include <unordered_set>
#include <vector>

namespace corvane {

struct LinePair {
    std::int32_t start = 0, end = 0; // numbers of division points, from 0
    bool operator==(const LinePair&) const = default;
};

// Pairs that stand already. The direction counts: 3 to 7 is not 7 to 3.
class LinePairs {
public:
    bool add(LinePair pair) {
        return keys_.insert(std::uint64_t(std::uint32_t(pair.start)) << 32 | std::uint32_t(pair.end)).second;
    }
    std::size_t size() const { return keys_.size(); }

private:
    std::unordered_set<std::uint64_t> keys_;
};

// How the end point goes on while the start point runs along one curve.
enum class ThreadMode {
    together, // as fast as the start: T
    fixed,    // stays for N starts, then jumps by N: G
    slow,     // fixed, and creeps on by a half: M
    ahead     // fixed, and creeps on by a third: C
};

// The lines on one curve with M division points (M at least 2) and the offset N (1 to M - 1), each once, in
// the order in which they are drawn. At most `most` of them: M and N in the thousands ask for millions.
std::vector<LinePair> SingleCurveThreads(int m, int n, ThreadMode mode, bool closed, std::size_t most);

// The lines of one pass between two rings of m1 and m2 points: both ends advance by one from (a, b) for
// max(m1, m2) + 10 steps. Those that stand in `drawn` already are left out; the others join it.
std::vector<LinePair> RingThreads(int m1, int m2, int a, int b, LinePairs& drawn);

} // namespace corvane
