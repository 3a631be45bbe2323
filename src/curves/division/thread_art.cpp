// The rules by which division points are tied.
#include "curves/division/thread_art.h"

#include <algorithm>

namespace corvane {
namespace {

// A number into 1..m, round and round.
int wrap(int value, int m) { return (value - 1) % m + 1; }

class SingleCurve {
public:
    SingleCurve(int m, int n, ThreadMode mode, bool closed, size_t most)
        : m_(m), n_(n), creep_(mode == ThreadMode::slow    ? 2
                               : mode == ThreadMode::ahead ? 3
                                                           : 0),
          closed_(closed), most_(most) {}

    std::vector<LinePair> together() {
        for (int i = 1; i <= (closed_ ? m_ : m_ - n_); ++i) tie(i, closed_ ? wrap(n_ + i, m_) : n_ + i);
        return std::move(lines_);
    }
    std::vector<LinePair> stepped() {
        for (int round = 0; round < m_ && lines_.size() < most_; ++round) {
            const size_t before = lines_.size();
            for (int i = 1; i <= m_ - n_; ++i) tieShifted(i, end(i, ((i - 1) / n_ + 1) * n_, round), round);
            // The points that the offset leaves at the seam of a closed curve.
            for (int i = 1; closed_ && i <= n_; ++i) {
                const int start = m_ - n_ + i;
                const int target = start + n_ > m_ ? start + n_ - m_ : start + n_;
                tieShifted(start, end(start, target, round), round);
            }
            // On an open curve ends only go on to the last point: a round without a new line is the last.
            if (!closed_ && lines_.size() == before) break;
        }
        return std::move(lines_);
    }

private:
    int end(int start, int target, int round) const {
        return std::clamp(creep_ == 0 ? target : start / creep_ + round + target, 1, m_);
    }
    void tieShifted(int start, int end, int round) {
        closed_ ? tie(wrap(start + round, m_), wrap(end + round, m_)) : tie(start, end);
    }
    void tie(int start, int end) {
        if (start == end) return; // no length, nothing to be seen
        const LinePair pair{start - 1, end - 1};
        if (lines_.size() < most_ && drawn_.add(pair)) lines_.push_back(pair);
    }
    int m_, n_, creep_;
    bool closed_;
    size_t most_;
    LinePairs drawn_;
    std::vector<LinePair> lines_;
};

} // namespace

std::vector<LinePair> SingleCurveThreads(int m, int n, ThreadMode mode, bool closed, size_t most) {
    SingleCurve curve(m, n, mode, closed, most);
    return mode == ThreadMode::together ? curve.together() : curve.stepped();
}

std::vector<LinePair> RingThreads(int m1, int m2, int a, int b, LinePairs& drawn) {
    std::vector<LinePair> lines;
    constexpr int kBeyond = 10; // steps past one turn of the larger ring
    for (int k = 0; k < std::max(m1, m2) + kBeyond; ++k)
        if (const LinePair pair{(a + k) % m1, (b + k) % m2}; drawn.add(pair)) lines.push_back(pair);
    return lines;
}

} // namespace corvane
