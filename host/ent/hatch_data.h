// What a hatch holds, as plain data: outlines of several kinds, the pattern, and what files add. Reading
// and writing the groups is in hatch_filing.cpp, the outlines' geometry in hatch_loops.cpp.
#pragma once

#include <optional>
#include <variant>

#include "host/ent/curve_path.h"
#include "host/ent/hatch_lines.h"
#include "host/ent/own_groups.h"

namespace host {

struct HatchLine {
    AcGePoint2d start, end;
};
// Angles in radians, measured from the X axis in the sense of the arc, from start to end.
struct HatchArc {
    AcGePoint2d center;
    double radius = 0, start = 0, end = 0;
    bool clockwise = false;
};
// The same from the major axis: angles of places on the ellipse, not parameters.
struct HatchEllipse {
    AcGePoint2d center;
    AcGeVector2d major;
    double ratio = 1, start = 0, end = 0;
    bool clockwise = false;
};
struct HatchSpline {
    ge::Nurbs curve; // at Z 0
    std::vector<AcGePoint2d> fitPoints;
    std::optional<AcGeVector2d> startTangent, endTangent;
};
using HatchEdge = std::variant<HatchLine, HatchArc, HatchEllipse, HatchSpline>; // as numbered in files from 1

struct HatchLoop {
    int type = 0; // AcDbHatch::HatchLoopType bits
    // A loop is a polyline or a run of edges.
    bool isPolyline = false, closed = true, bulged = false;
    std::vector<ge::BulgeVertex> vertices;
    std::vector<HatchEdge> edges;
    std::vector<std::uint64_t> sources; // handles of the entities that it follows
};

struct HatchData {
    std::wstring name = L"SOLID";
    double elevation = 0;
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    bool solid = true, associative = false, doubled = false;
    std::vector<HatchLoop> loops;
    int style = 0, patternType = 1;
    double angle = 0, scale = 1; // radians
    std::vector<HatchLineFamily> lines;
    std::optional<double> pixelSize;
    std::vector<AcGePoint2d> seeds;
    GroupList rest; // the gradient, and what isn't known
};

// False when the groups are not those of a hatch from some point on; what came before is read.
bool readHatch(const GroupList& groups, HatchData& data);
void writeHatch(const HatchData& data, GroupWriter& writer);

// The outline's curves in the world; one path for a polyline, one for each edge else.
std::vector<CurvePath> pathsOf(const HatchLoop& loop, const AcGeVector3d& normal, double elevation);
// The outline as points of the plane, chords within the tolerance; empty when it encloses nothing.
std::vector<AcGePoint2d> flatten(const HatchLoop& loop, double chordTolerance);
// A loop that follows a curve's path, whose points are taken in the plane's coordinates.
void appendPath(const CurvePath& path, HatchLoop& loop);
// Images of all under a similarity of the plane.
void transform(HatchData& data, const AcGeMatrix2d& local);
// As an arc of the plane at Z 0, the normal telling the sense; nothing for one without a size.
std::optional<ge::EllipticArc> conicOf(const HatchEdge& edge);

} // namespace host
