// Measures splines and ellipses with Open CASCADE, whose curve mathematics shares nothing with the program's.
// Writes kernel_numbers.txt, which accuracy_test.cpp reads in the same way as curve_numbers.txt. Not part of
// the build; the numbers were made with Debian's libocct-modeling-algorithms-dev 7.6.3:
//     g++ -std=c++20 -O2 -I/usr/include/opencascade make_kernel_numbers.cpp -o make_kernel_numbers
//         -lTKGeomAlgo -lTKGeomBase -lTKG3d -lTKG2d -lTKMath -lTKernel
// Lengths come from GCPnts (Gauss quadrature, 1e-13), places and derivatives from the curves' D2, closest
// places from GeomAPI_ProjectPointOnCurve, meetings in the plane from Geom2dAPI_InterCurveCurve, each brought
// to the last digits by Newton's steps on both curves' own derivatives. Each curve's line tells what was made
// with it.
#include <GCPnts_AbscissaPoint.hxx>
#include <Geom2dAPI_InterCurveCurve.hxx>
#include <Geom2d_Curve.hxx>
#include <GeomAPI.hxx>
#include <GeomAPI_ProjectPointOnCurve.hxx>
#include <GeomAdaptor_Curve.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_Ellipse.hxx>
#include <Geom_TrimmedCurve.hxx>
#include <TColStd_Array1OfInteger.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TColgp_Array1OfPnt.hxx>
#include <cmath>
#include <cstdio>
#include <gp_Pln.hxx>
#include <string>
#include <vector>

namespace {

using Points = std::vector<gp_Pnt>;

struct Named {
    std::string name, text;
    Handle(Geom_Curve) curve;
    bool isFlat = true;
};

std::string show(double x) {
    char out[32];
    std::snprintf(out, sizeof out, " %.17g", x);
    return out;
}
std::string show(const gp_XYZ& v) { return show(v.X()) + show(v.Y()) + show(v.Z()); }

Named spline(std::string name, int degree, const Points& poles, const std::vector<double>& flatKnots,
             const std::vector<double>& weights = {}) {
    std::vector<double> knots;
    std::vector<int> times;
    for (double k : flatKnots)
        if (!knots.empty() && knots.back() == k)
            ++times.back();
        else
            knots.push_back(k), times.push_back(1);
    TColgp_Array1OfPnt p(1, int(poles.size()));
    TColStd_Array1OfReal w(1, int(poles.size())), k(1, int(knots.size()));
    TColStd_Array1OfInteger m(1, int(knots.size()));
    std::string text = "spline " + std::to_string(degree) + (weights.empty() ? " 0 0 " : " 1 0 ") +
                       std::to_string(poles.size());
    for (size_t i = 0; i < poles.size(); ++i) {
        p(int(i) + 1) = poles[i], w(int(i) + 1) = weights.empty() ? 1 : weights[i];
        text += show(poles[i].XYZ());
    }
    for (size_t i = 0; i < knots.size(); ++i) k(int(i) + 1) = knots[i], m(int(i) + 1) = times[i];
    for (double x : flatKnots) text += show(x);
    for (double x : weights) text += show(x);
    return {std::move(name), text, new Geom_BSplineCurve(p, w, k, m, degree), poles[1].Z() == 0};
}

Named ellipse(std::string name, const gp_Pnt& center, const gp_Dir& normal, const gp_Dir& along, double major,
              double minor, double from = 0, double to = 2 * M_PI) {
    const gp_Ax2 axes(center, normal, along);
    const std::string text = "ellipse" + show(center.XYZ()) + show(normal.XYZ()) +
                             show(axes.XDirection().XYZ() * major) + show(minor / major) + show(from) +
                             show(to);
    Handle(Geom_Curve) whole = new Geom_Ellipse(axes, major, minor);
    if (to - from < 2 * M_PI) whole = new Geom_TrimmedCurve(whole, from, to);
    return {std::move(name), text, whole, normal.Z() == 1};
}

struct Jet {
    gp_Pnt p;
    gp_Vec d, dd;
};
Jet jet(const Named& c, double t) {
    Jet out;
    c.curve->D2(t, out.p, out.d, out.dd);
    return out;
}

gp_Pnt closest(const Named& c, const gp_Pnt& q) {
    const double low = c.curve->FirstParameter(), high = c.curve->LastParameter();
    gp_Pnt best = c.curve->Value(low);
    if (c.curve->Value(high).Distance(q) < best.Distance(q)) best = c.curve->Value(high);
    GeomAPI_ProjectPointOnCurve found(q, c.curve, low, high);
    if (found.NbPoints() == 0 || found.LowerDistance() >= best.Distance(q)) return best;
    double t = found.LowerDistanceParameter();
    for (int step = 0; step < 8; ++step) {
        const Jet j = jet(c, t);
        const gp_Vec off(q, j.p);
        t -= off.Dot(j.d) / (j.d.SquareMagnitude() + off.Dot(j.dd));
    }
    return c.curve->Value(std::fmin(std::fmax(t, low), high));
}

// Where curves of the XY plane cross; touchings, which no kernel tells exactly, are left out. What is found
// depends on the order of the curves: both are asked.
void addMeetings(const Named& a, const Named& b, Points& out) {
    const gp_Pln plane(gp::XOY());
    Geom2dAPI_InterCurveCurve found(GeomAPI::To2d(a.curve, plane), GeomAPI::To2d(b.curve, plane), 1e-6);
    for (int i = 1; i <= found.NbPoints(); ++i) {
        const gp_Pnt near(found.Point(i).X(), found.Point(i).Y(), 0);
        double s = GeomAPI_ProjectPointOnCurve(near, a.curve).LowerDistanceParameter();
        double t = GeomAPI_ProjectPointOnCurve(near, b.curve).LowerDistanceParameter();
        for (int step = 0; step < 8; ++step) {
            const Jet p = jet(a, s), q = jet(b, t);
            const gp_Vec gap(p.p, q.p), across = p.d.Crossed(q.d);
            const double square = across.SquareMagnitude();
            s += gap.Crossed(q.d).Dot(across) / square, t += gap.Crossed(p.d).Dot(across) / square;
        }
        const gp_Pnt p = a.curve->Value(s);
        const gp_Vec u = jet(a, s).d, v = jet(b, t).d;
        const bool crosses = u.Crossed(v).Magnitude() > 1e-3 * u.Magnitude() * v.Magnitude();
        bool known = !crosses || p.Distance(b.curve->Value(t)) > 1e-12 || p.Distance(near) > 1e-3;
        for (const gp_Pnt& other : out) known = known || other.Distance(p) < 1e-9;
        if (!known) out.push_back(p);
    }
}

void tell(const Named& c) {
    GeomAdaptor_Curve adaptor(c.curve);
    const double low = c.curve->FirstParameter(), high = c.curve->LastParameter();
    std::printf("curve %s\n%s\nlength%s\n", c.name.c_str(), c.text.c_str(),
                show(GCPnts_AbscissaPoint::Length(adaptor, low, high, 1e-13)).c_str());
    for (double share : {0.06, 0.33, 0.71, 0.9}) {
        const double t = low + (high - low) * share;
        const Jet j = jet(c, t);
        std::printf("at%s%s%s%s%s\n", show(t).c_str(),
                    show(GCPnts_AbscissaPoint::Length(adaptor, low, t, 1e-13)).c_str(),
                    show(j.p.XYZ()).c_str(), show(j.d.XYZ()).c_str(), show(j.dd.XYZ()).c_str());
    }
    for (const gp_Pnt& q : {gp_Pnt(1.7, 0.8, 0.3), gp_Pnt(-4, 3, 1), gp_Pnt(6, -5, 2), gp_Pnt(0.3, 9, -1)})
        std::printf("closest%s%s\n", show(q.XYZ()).c_str(), show(closest(c, q).XYZ()).c_str());
}

} // namespace

int main() {
    const Points wave{{0, 0, 0}, {1, 4, 0}, {3, -4, 0}, {5, 4, 0}, {6, -3, 0}, {8, 1, 0}};
    const Points bow{{-1, 2, 0}, {2, -5, 0}, {5, 6, 0}, {7, -1, 0}};
    const Points space{{0, 0, 0}, {1, 3, 2}, {4, 1, -3}, {6, 2, 5}, {7, -2, 1}};
    const gp_Dir up(0, 0, 1), askew(1, -2, 2);
    const std::vector<Named> curves{
        spline("a wave", 3, wave, {0, 0, 0, 0, 0.3, 0.8, 1, 1, 1, 1}),
        spline("a bow of degree two", 2, bow, {0, 0, 0, 0.5, 2, 2, 2}),
        spline("a weighted wave", 3, wave, {0, 0, 0, 0, 1, 3, 4, 4, 4, 4}, {1, 0.3, 4, 1, 2, 1}),
        spline("a wave of degree five", 5, wave, {0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 1}),
        spline("a curve of space", 4, space, {0, 0, 0, 0, 0, 1, 1, 1, 1, 1}),
        ellipse("an ellipse", {3, 0, 0}, up, {2, 1, 0}, 3, 1.25),
        ellipse("an arc of an ellipse", {4, 1, 0}, up, {1, 0, 0}, 4, 1.5, 0.4, 5),
        ellipse("a slim ellipse", {3, 0.5, 0}, up, {0, 1, 0}, 3, 0.05),
        ellipse("an ellipse askew", {1, 2, 3}, askew, {2, 1, 0}, 2, 0.7)};
    std::printf("# Made by make_kernel_numbers.cpp: curves, what is true of them, and where they meet.\n");
    for (const Named& c : curves) {
        tell(c);
        for (const Named& other : curves) {
            if (&other <= &c || !c.isFlat || !other.isFlat) continue;
            Points at;
            addMeetings(c, other, at), addMeetings(other, c, at);
            std::printf("meets %d", int(&other - &curves[0]));
            for (const gp_Pnt& p : at) std::printf("%s", show(p.XYZ()).c_str());
            std::printf("\n");
        }
    }
}
