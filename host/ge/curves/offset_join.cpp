// Valid pieces joined to chains.
#include <algorithm>
#include <cmath>

#include "host/ge/curves/offset_parts.h"

namespace host::ge::offsetting {

namespace {

constexpr double kJoin = 100;     // slacks between an end and the start that goes on from it
constexpr double kShortest = 1e4; // slacks: chains no longer than this are crumbs of rounding

// Starts of pieces by their abscissa.
class Starts {
public:
    Starts(const std::vector<Piece>& pieces, double reach) : pieces_(pieces), reach_(reach) {
        for (size_t i = 0; i < pieces.size(); ++i) order_.push_back(i);
        std::sort(order_.begin(), order_.end(),
                  [&](size_t a, size_t b) { return x(a) != x(b) ? x(a) < x(b) : a < b; });
    }
    template <class Visit> void near(const AcGePoint2d& p, Visit&& visit) const {
        auto at = std::lower_bound(order_.begin(), order_.end(), p.x - reach_,
                                   [&](size_t i, double value) { return x(i) < value; });
        for (; at != order_.end() && x(*at) <= p.x + reach_; ++at)
            if (pieces_[*at].shape.start.distanceTo(p) <= reach_) visit(*at);
    }

private:
    double x(size_t i) const { return pieces_[i].shape.start.x; }
    const std::vector<Piece>& pieces_;
    double reach_;
    std::vector<size_t> order_;
};

// Turn at a joint, positive to the left, in (-pi, pi].
double turn(const BulgeSegment& a, const BulgeSegment& b) {
    const AcGeVector2d u = a.tangentAt(1), v = b.tangentAt(0);
    return std::atan2(u.crossProduct(v), u.dotProduct(v));
}

constexpr size_t kNone = size_t(-1);

// What goes on from each piece. The free side lies to the right of the pieces: where several go on, the one
// that turns most to the right keeps to the edge of its own free face.
std::vector<size_t> successors(const std::vector<Piece>& pieces, double reach) {
    const Starts starts(pieces, reach);
    std::vector<size_t> next(pieces.size(), kNone);
    std::vector<char> taken(pieces.size());
    for (size_t i = 0; i < pieces.size(); ++i) {
        double best = 10;
        starts.near(pieces[i].shape.end, [&](size_t j) {
            if (taken[j] || (j == i && pieces[i].shape.length() <= 2 * reach)) return;
            const double t = turn(pieces[i].shape, pieces[j].shape);
            if (t < best - 1e-9) best = t, next[i] = j;
        });
        if (next[i] != kNone) taken[next[i]] = 1;
    }
    return next;
}

double lengthOf(const Chain& chain) {
    double sum = 0;
    for (const Piece& p : chain.pieces) sum += p.shape.length();
    return sum;
}

bool goesOn(const Piece& a, const Piece& b) { return a.edge == b.edge && a.to == b.from; }

Piece joined(const Piece& a, const Piece& b) {
    const double sweep = a.shape.sweep() + b.shape.sweep();
    return {a.edge, a.from, b.to, {a.shape.start, b.shape.end, bulgeOfSweep(sweep)}};
}

void merge(Chain& chain) {
    std::vector<Piece> out;
    for (const Piece& p : chain.pieces) {
        if (!out.empty() && goesOn(out.back(), p))
            out.back() = joined(out.back(), p);
        else
            out.push_back(p);
    }
    if (chain.closed && out.size() > 2 && goesOn(out.back(), out.front())) {
        out.front() = joined(out.back(), out.front());
        out.pop_back();
    }
    chain.pieces = std::move(out);
}

// Joints are met exactly.
void closeGaps(Chain& chain) {
    const size_t n = chain.pieces.size();
    for (size_t i = 0; i + 1 < n; ++i) chain.pieces[i].shape.end = chain.pieces[i + 1].shape.start;
    if (chain.closed && n > 1) chain.pieces[n - 1].shape.end = chain.pieces[0].shape.start;
}

} // namespace

std::vector<Chain> stitched(std::vector<Piece> pieces, double slack) {
    const std::vector<size_t> next = successors(pieces, kJoin * slack);
    std::vector<char> hasBefore(pieces.size()), used(pieces.size());
    for (size_t j : next)
        if (j != kNone) hasBefore[j] = 1;
    std::vector<Chain> out;
    const auto follow = [&](size_t first, bool closed) {
        Chain chain{{}, closed};
        for (size_t i = first; i != kNone && !used[i]; i = next[i])
            used[i] = 1, chain.pieces.push_back(pieces[i]);
        if (!(lengthOf(chain) > kShortest * slack)) return;
        merge(chain);
        closeGaps(chain);
        out.push_back(std::move(chain));
    };
    for (size_t i = 0; i < pieces.size(); ++i)
        if (!hasBefore[i]) follow(i, false);
    for (size_t i = 0; i < pieces.size(); ++i)
        if (!used[i]) follow(i, true);
    std::stable_sort(out.begin(), out.end(), [](const Chain& a, const Chain& b) {
        const Piece &p = a.pieces.front(), &q = b.pieces.front();
        return p.edge != q.edge ? p.edge < q.edge : p.from < q.from;
    });
    return out;
}

} // namespace host::ge::offsetting
