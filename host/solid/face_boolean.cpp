// Plane faces to Open CASCADE and back, and its Boolean operations.
#include "host/solid/face_boolean.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRepAlgoAPI_Common.hxx>
#include <BRepAlgoAPI_Cut.hxx>
#include <BRepAlgoAPI_Fuse.hxx>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepTools_WireExplorer.hxx>
#include <GeomConvert.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_TrimmedCurve.hxx>
#include <Precision.hxx>
#include <ShapeUpgrade_UnifySameDomain.hxx>
#include <Standard_Failure.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Builder.hxx>
#include <TopoDS_Compound.hxx>
#include <gp_Circ.hxx>
#include <gp_Elips.hxx>
#include <gp_Pln.hxx>

#include <algorithm>

#include "host/solid/face_polygons.h"

namespace host {
namespace {

gp_Pnt toSolid(const AcGePoint3d& p) { return {p.x, p.y, p.z}; }
gp_Dir toSolid(const AcGeVector3d& v) { return {v.x, v.y, v.z}; }
AcGePoint3d fromSolid(const gp_Pnt& p) { return {p.X(), p.Y(), p.Z()}; }
AcGeVector3d fromSolid(const gp_Dir& d) { return {d.X(), d.Y(), d.Z()}; }

// -- to the modeller ----------------------------------------------------------------------------------

TopoDS_Edge edgeOf(const ge::EllipticArc& arc) {
    const gp_Ax2 axes(toSolid(arc.center), toSolid(arc.normal), toSolid(arc.majorAxis));
    if (arc.isCircular())
        return BRepBuilderAPI_MakeEdge(gp_Circ(axes, arc.majorRadius()), arc.start, arc.end);
    return BRepBuilderAPI_MakeEdge(gp_Elips(axes, arc.majorRadius(), arc.minorRadius()), arc.start, arc.end);
}

TopoDS_Edge edgeOf(const ge::Nurbs& given) {
    const ge::Nurbs curve = ge::clamped(given);
    TColgp_Array1OfPnt poles(1, int(curve.poles.size()));
    TColStd_Array1OfReal weights(1, int(curve.poles.size()));
    for (size_t i = 0; i < curve.poles.size(); ++i) {
        poles.SetValue(int(i) + 1, toSolid(curve.poles[i]));
        weights.SetValue(int(i) + 1, curve.weight(i));
    }
    const std::vector<double> distinct = curve.distinctKnots();
    TColStd_Array1OfReal knots(1, int(distinct.size()));
    TColStd_Array1OfInteger counts(1, int(distinct.size()));
    for (size_t i = 0; i < distinct.size(); ++i) {
        knots.SetValue(int(i) + 1, distinct[i]);
        counts.SetValue(int(i) + 1, curve.multiplicityAt(distinct[i]));
    }
    const Handle(Geom_BSplineCurve) spline =
        new Geom_BSplineCurve(poles, weights, knots, counts, curve.degree, false);
    return BRepBuilderAPI_MakeEdge(spline);
}

TopoDS_Edge edgeOf(const CurvePath& path) {
    if (const auto* conic = path.asConic()) return edgeOf(*conic);
    if (const auto* curve = path.asNurbs()) return edgeOf(*curve);
    return BRepBuilderAPI_MakeEdge(toSolid(path.pointAt(path.startParam())),
                                   toSolid(path.pointAt(path.endParam())));
}

TopoDS_Wire wireOf(const FaceLoop& loop) {
    BRepBuilderAPI_MakeWire wire;
    for (const FaceEdge& edge : loop) {
        if (edge.path.length() <= Precision::Confusion()) continue; // its ends are one vertex
        const TopoDS_Edge made = edgeOf(edge.path);
        wire.Add(edge.reversed ? TopoDS::Edge(made.Reversed()) : made);
    }
    return wire.Wire();
}

// The outer loop first; holes run the other way round.
TopoDS_Face faceOfLoops(const PlanarFace& face) {
    std::vector<const FaceLoop*> loops;
    for (const FaceLoop& loop : face.loops) loops.push_back(&loop);
    std::stable_sort(loops.begin(), loops.end(), [](const FaceLoop* a, const FaceLoop* b) {
        return areaVector(*a).length() > areaVector(*b).length();
    });
    const gp_Pln plane(toSolid(loops.front()->front().start()), toSolid(face.normal));
    const auto wire = [&](const FaceLoop& loop, bool outer) {
        const bool forward = areaVector(loop).dotProduct(face.normal) > 0;
        const TopoDS_Wire made = wireOf(loop);
        return forward == outer ? made : TopoDS::Wire(made.Reversed());
    };
    BRepBuilderAPI_MakeFace made(plane, wire(*loops[0], true));
    for (size_t i = 1; i < loops.size(); ++i) made.Add(wire(*loops[i], false));
    return made.Face();
}

TopoDS_Shape shapeOf(const PlanarFaces& faces) {
    TopoDS_Compound all;
    TopoDS_Builder builder;
    builder.MakeCompound(all);
    for (const PlanarFace& face : faces) builder.Add(all, faceOfLoops(face));
    return all;
}

// -- and back -----------------------------------------------------------------------------------------

CurvePath pathOf(const BRepAdaptor_Curve& curve) {
    const double from = curve.FirstParameter(), to = curve.LastParameter();
    if (curve.GetType() == GeomAbs_Line)
        return CurvePath::line(fromSolid(curve.Value(from)), fromSolid(curve.Value(to)));
    if (curve.GetType() == GeomAbs_Circle) {
        const gp_Circ circle = curve.Circle();
        return CurvePath::conic({fromSolid(circle.Location()), fromSolid(circle.Axis().Direction()),
                                 fromSolid(circle.XAxis().Direction()) * circle.Radius(), 1, from, to});
    }
    if (curve.GetType() == GeomAbs_Ellipse) {
        const gp_Elips ellipse = curve.Ellipse();
        return CurvePath::conic({fromSolid(ellipse.Location()), fromSolid(ellipse.Axis().Direction()),
                                 fromSolid(ellipse.XAxis().Direction()) * ellipse.MajorRadius(),
                                 ellipse.MinorRadius() / ellipse.MajorRadius(), from, to});
    }
    const auto geometry = Handle(Geom_Curve)::DownCast(curve.Curve().Curve()->Transformed(curve.Trsf()));
    const Handle(Geom_BSplineCurve) spline =
        GeomConvert::CurveToBSplineCurve(new Geom_TrimmedCurve(geometry, from, to));
    ge::Nurbs made;
    made.degree = spline->Degree();
    made.rational = spline->IsRational();
    for (int i = 1; i <= spline->NbPoles(); ++i) {
        made.poles.push_back(fromSolid(spline->Pole(i)));
        if (made.rational) made.weights.push_back(spline->Weight(i));
    }
    for (int i = 1; i <= spline->NbKnots(); ++i)
        made.knots.insert(made.knots.end(), size_t(spline->Multiplicity(i)), spline->Knot(i));
    return CurvePath::spline(made);
}

PlanarFaces facesOf(const TopoDS_Shape& shape, const AcGeVector3d& normal) {
    PlanarFaces faces;
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next()) {
        PlanarFace made;
        made.normal = normal;
        for (TopExp_Explorer wire(face.Current(), TopAbs_WIRE); wire.More(); wire.Next()) {
            FaceLoop loop;
            for (BRepTools_WireExplorer edge(TopoDS::Wire(wire.Current()), TopoDS::Face(face.Current()));
                 edge.More(); edge.Next()) {
                const CurvePath path = pathOf(BRepAdaptor_Curve(edge.Current()));
                if (!path.isEmpty()) loop.push_back({path, edge.Current().Orientation() == TopAbs_REVERSED});
            }
            if (!loop.empty()) made.loops.push_back(std::move(loop));
        }
        if (!made.loops.empty()) faces.push_back(std::move(made));
    }
    return faces;
}

TopoDS_Shape combined(const TopoDS_Shape& a, const TopoDS_Shape& b, AcDb::BoolOperType operation) {
    if (operation == AcDb::kBoolIntersect) return BRepAlgoAPI_Common(a, b).Shape();
    if (operation == AcDb::kBoolSubtract) return BRepAlgoAPI_Cut(a, b).Shape();
    return BRepAlgoAPI_Fuse(a, b).Shape();
}

} // namespace

// The modeller tells of failures by exceptions.
std::optional<PlanarFaces> combineFaces(const PlanarFaces& first, const PlanarFaces& second,
                                        AcDb::BoolOperType operation) {
    const bool unite = operation == AcDb::kBoolUnite;
    if (second.empty()) return operation == AcDb::kBoolIntersect ? PlanarFaces() : first;
    if (first.empty()) return unite ? second : PlanarFaces();
    if (isStraight(first) && isStraight(second)) return combinePolygons(first, second, operation);
    try {
        const TopoDS_Shape shape = combined(shapeOf(first), shapeOf(second), operation);
        if (shape.IsNull()) return std::nullopt;
        ShapeUpgrade_UnifySameDomain merge(shape);
        merge.Build();
        return facesOf(merge.Shape(), first.front().normal);
    } catch (const Standard_Failure&) {
        return std::nullopt;
    }
}

} // namespace host
