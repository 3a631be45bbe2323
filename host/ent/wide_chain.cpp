// Chains of vertices with bulges and widths.
#include "host/ent/wide_chain.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace host {

namespace {
constexpr double kRounding = 1e-12; // of a growth, as a part of the segment or in radians
}

int WideChain::segments() const {
    const int n = int(vertices.size());
    return n < 2 ? 0 : closed ? n : n - 1;
}

ge::BulgeSegment WideChain::segment(int index) const {
    const auto& from = vertices[size_t(index)];
    return {from.point, vertices[size_t(index + 1) % vertices.size()].point, from.bulge};
}

std::vector<ge::BulgeVertex> WideChain::plain() const {
    std::vector<ge::BulgeVertex> out;
    out.reserve(vertices.size());
    for (const auto& v : vertices) out.push_back({v.point, v.bulge});
    return out;
}

WideChain WideChain::part(double from, double to) const {
    WideChain out;
    const int first = std::clamp(int(std::floor(from)), 0, segments() - 1);
    int last = std::clamp(int(std::ceil(to)) - 1, first, segments() - 1);
    AcGePoint2d end;
    for (int i = first; i <= last; ++i) {
        const double a = std::clamp(from - i, 0.0, 1.0), b = std::clamp(to - i, 0.0, 1.0);
        const auto& v = vertices[size_t(i)];
        const ge::BulgeSegment s = segment(i), piece = a == 0 && b == 1 ? s : s.part(a, b);
        const double grow = v.endWidth - v.startWidth;
        out.vertices.push_back({piece.start, piece.bulge, v.startWidth + grow * a, v.startWidth + grow * b});
        end = piece.end;
    }
    out.vertices.push_back({end, 0, out.vertices.back().endWidth, out.vertices.back().endWidth});
    return out;
}

WideChain WideChain::reversed() const {
    WideChain out{{}, closed};
    const size_t n = vertices.size();
    out.vertices.reserve(n);
    for (size_t i = 0; i < n; ++i) {
        // Vertex i of the new order, and the old one at whose segment it begins.
        const auto& at = vertices[closed ? (n - i) % n : n - 1 - i];
        const auto& before = vertices[closed ? n - 1 - i : (2 * n - 2 - i) % n];
        out.vertices.push_back({at.point, -before.bulge, before.endWidth, before.startWidth});
    }
    return out;
}

bool WideChain::extendEnd(const AcGePoint2d& to) {
    if (closed || vertices.size() < 2) return false;
    auto& from = vertices[vertices.size() - 2];
    auto& end = vertices.back().point;
    const ge::BulgeSegment s = segment(segments() - 1);
    if (!(s.chord() > 0)) return false;
    if (s.isStraight()) {
        const AcGeVector2d along = s.end - s.start;
        const double t = (to - s.start).dotProduct(along) / along.lengthSqrd();
        if (!(t > 1 + kRounding)) return false;
        return end = s.start + along * t, true;
    }
    ge::BulgeCircle circle = s.circle();
    double turn = std::fmod((to - circle.center).angle() - circle.startAngle, 2 * std::numbers::pi);
    const double sense = circle.sweep < 0 ? -1 : 1;
    if (turn * sense <= 0) turn += sense * 2 * std::numbers::pi;
    const double most = 2 * std::numbers::pi - kRounding;
    if (!(std::fabs(turn) > std::fabs(circle.sweep) + kRounding && std::fabs(turn) < most)) return false;
    circle.sweep = turn;
    from.bulge = ge::bulgeOfSweep(turn);
    end = ge::bulgeSegment(circle).end;
    return true;
}

bool WideChain::extend(bool atStart, const AcGePoint2d& to) {
    if (!atStart) return extendEnd(to);
    WideChain back = reversed();
    if (!back.extendEnd(to)) return false;
    *this = back.reversed();
    return true;
}

AcGePoint2d WideChain::beyond(double param) const {
    const int index = param < 0 ? 0 : segments() - 1;
    return segment(index).pointAt(param - index);
}

bool WideChain::transformBy(const AcGeMatrix2d& local) {
    const bool hasArcs =
        std::any_of(vertices.begin(), vertices.end(), [](const auto& v) { return v.bulge != 0; });
    if (hasArcs && !local.isUniScaledOrtho()) return false;
    const double scale = std::sqrt(std::fabs(local.det())), sense = local.det() < 0 ? -1 : 1;
    const bool sameSize = std::fabs(scale - 1) < 1e-14;
    for (auto& v : vertices) {
        v.point = local * v.point;
        v.bulge *= sense;
        if (!sameSize) v.startWidth *= scale, v.endWidth *= scale;
    }
    return true;
}

} // namespace host
