// Where two curves in space meet: points, touching ones included, and stretches that they share. For the
// apparent intersection in a view, project both curves onto its plane first.
#pragma once

#include <vector>

#include "host/ge/curves/bulge.h"
#include "host/ge/curves/conic.h"
#include "host/ge/curves/nurbs.h"
#include "host/ge/line.h"

namespace host::ge {

struct Crossing {
    AcGePoint3d point;            // on the first curve
    double first = 0, second = 0; // the curves' own parameters
};

// A shared stretch; the second curve may run against the first.
struct SharedStretch {
    double firstFrom = 0, firstTo = 0; // rising
    double secondFrom = 0, secondTo = 0;
};

struct Intersections {
    std::vector<Crossing> points; // by rising parameter of the first curve; none inside a shared stretch
    std::vector<SharedStretch> shared;
    bool isComplete = true; // false when the bound on the work was reached
};

// Own parameters: line segments [0, 1]; plane segments with a bulge the fraction of their length; conics
// their angle; B-splines their knots' parameter. tolerance is the distance at which curves meet; 0 takes 1e-9
// of the larger one. Boxes are halved until pieces are straight enough for Gauss and Newton's iteration; hits
// that the curves stay together between are one. A B-spline with itself tells where its loops cross, too.
Intersections intersect(const Nurbs& first, const Nurbs& second, double tolerance = 0);
Intersections intersect(const EllipticArc& first, const EllipticArc& second, double tolerance = 0);
Intersections intersect(const AcGeLineSeg3d& first, const EllipticArc& second, double tolerance = 0);
Intersections intersect(const AcGeLineSeg3d& first, const AcGeLineSeg3d& second, double tolerance = 0);
Intersections intersect(const AcGeLineSeg3d& first, const Nurbs& second, double tolerance = 0);
Intersections intersect(const EllipticArc& first, const Nurbs& second, double tolerance = 0);
Intersections intersect(const BulgeSegment& first, const BulgeSegment& second,
                        double tolerance = 0); // at z = 0

} // namespace host::ge
