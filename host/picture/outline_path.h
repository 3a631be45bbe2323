// Outlines of text as Qt draws them.
#pragma once

#include <QPainterPath>

#include "host/gi/text_metrics.h"

namespace host {

// The outline with each of its points where `place` puts it (AcGePoint2d to QPointF); filled by the nonzero
// rule.
template <class Place> QPainterPath outlinePath(const TextOutline& outline, Place place) {
    using Step = TextOutline::Step;
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    const AcGePoint2d* p = outline.points.data();
    const auto at = [&](int i) { return place(p[i]); };
    for (const Step step : outline.steps) {
        switch (step) {
        case Step::move: path.moveTo(at(0)), p += 1; break;
        case Step::line: path.lineTo(at(0)), p += 1; break;
        case Step::quadratic: path.quadTo(at(0), at(1)), p += 2; break;
        case Step::cubic: path.cubicTo(at(0), at(1), at(2)), p += 3; break;
        case Step::close: path.closeSubpath(); break;
        }
    }
    return path;
}

} // namespace host
