// A ribbon is cut into pieces between neighbouring points. Smooth runs of pieces share one contour,
// which keeps arcs small; a piece whose inner side turns back stands alone.
#include "host/view/ribbon.h"

#include <cmath>
#include <utility>

namespace host {
namespace {

constexpr double kSharpest = -0.88; // cosine of the turn beyond which corners aren't mitred
constexpr double kSmooth = 0.85;    // and of that below which a run goes on

struct Piece {
    AcGePoint2d rightStart, rightEnd, leftStart, leftEnd;
    bool sound; // both sides run forward
    bool joins; // goes on smoothly from the piece before
};

class Ribbon {
public:
    Ribbon(std::span<const RibbonPoint> line, bool closed) : closed_(closed) {
        for (const RibbonPoint& p : line) {
            if (!points_.empty() && same(points_.back().at, p.at))
                points_.back().after = p.after;
            else
                points_.push_back(p);
        }
        if (closed_ && points_.size() > 1 && same(points_.front().at, points_.back().at)) {
            points_.front().before = points_.back().before;
            points_.pop_back();
        }
        closed_ = closed_ && points_.size() > 2;
    }

    void append(RibbonOutline& out) {
        const std::size_t pieces = points_.size() < 2 ? 0 : points_.size() - !closed_;
        directions_.reserve(pieces);
        for (std::size_t i = 0; i < pieces; ++i) {
            const AcGeVector2d d = next(i).at - points_[i].at;
            directions_.push_back(d / std::hypot(d.x, d.y));
        }
        std::vector<Piece> run;
        for (std::size_t i = 0; i < pieces; ++i) {
            const Piece piece = pieceAt(i);
            if (!run.empty() && (!piece.joins || !piece.sound || !run.back().sound)) flush(out, run);
            run.push_back(piece);
        }
        flush(out, run);
    }

private:
    static bool same(const AcGePoint2d& a, const AcGePoint2d& b) { return a.x == b.x && a.y == b.y; }
    const RibbonPoint& next(std::size_t i) const { return points_[(i + 1) % points_.size()]; }

    // From the corner before piece `i` to its left edge, for the half width `half` of piece `of`.
    AcGeVector2d offset(std::size_t i, std::size_t of, double half, bool& mitred) const {
        const AcGeVector2d own(-directions_[of].y, directions_[of].x);
        mitred = false;
        if (i == 0 && !closed_) return own * half;
        if (i >= directions_.size() && !closed_) return own * half;
        const std::size_t count = directions_.size();
        const AcGeVector2d a = directions_[(i + count - 1) % count], b = directions_[i % count];
        const RibbonPoint& corner = points_[i % points_.size()];
        const double turn = a.x * b.x + a.y * b.y;
        if (turn < kSharpest ||
            std::fabs(corner.before - corner.after) > 1e-9 * (corner.before + corner.after))
            return own * half;
        mitred = true;
        return AcGeVector2d(-a.y - b.y, a.x + b.x) * (half / (1 + turn));
    }

    Piece pieceAt(std::size_t i) const {
        bool mitred = false, ignored = false;
        const AcGePoint2d from = points_[i].at, to = next(i).at;
        const AcGeVector2d start = offset(i, i, points_[i].after, mitred);
        const AcGeVector2d end = offset(i + 1, i, next(i).before, ignored);
        Piece piece{from - start, to - end, from + start, to + end, true, false};
        const AcGeVector2d d = directions_[i];
        const auto forward = [&](const AcGeVector2d& side) { return side.x * d.x + side.y * d.y > 0; };
        piece.sound = forward(piece.rightEnd - piece.rightStart) && forward(piece.leftEnd - piece.leftStart);
        if (i > 0 && mitred) {
            const AcGeVector2d before = directions_[i - 1];
            piece.joins = before.x * d.x + before.y * d.y > kSmooth;
        }
        return piece;
    }

    static void flush(RibbonOutline& out, std::vector<Piece>& run) {
        if (run.empty()) return;
        const std::size_t first = out.points.size();
        out.points.push_back(run.front().rightStart);
        for (const Piece& p : run) out.points.push_back(p.rightEnd);
        for (std::size_t i = run.size(); i-- > 0;) out.points.push_back(run[i].leftEnd);
        out.points.push_back(run.front().leftStart);
        if (run.size() == 1 && !run.front().sound) turnLeft(std::span(out.points).subspan(first));
        out.ends.push_back(static_cast<std::uint32_t>(out.points.size()));
        run.clear();
    }

    static void turnLeft(std::span<AcGePoint2d> contour) {
        double area = 0;
        for (std::size_t i = 0; i < contour.size(); ++i) {
            const AcGePoint2d &a = contour[i], &b = contour[(i + 1) % contour.size()];
            area += (a.x - contour[0].x) * (b.y - contour[0].y) - (b.x - contour[0].x) * (a.y - contour[0].y);
        }
        if (area < 0) std::swap(contour[1], contour[3]);
    }

    std::vector<RibbonPoint> points_;
    std::vector<AcGeVector2d> directions_;
    bool closed_;
};

} // namespace

void appendRibbon(RibbonOutline& out, std::span<const RibbonPoint> line, bool closed) {
    Ribbon(line, closed).append(out);
}

} // namespace host
