// Points of curves, rows and marks.
#include "curves/reports/curve_rows.h"

#include <algorithm>
#include <cmath>

#include "core/appending.h"
#include "core/curve_services.h"
#include "core/host/editor.h"
#include "core/messages.h"
#include "core/sysvar_stack.h"

namespace corvane {
namespace {

constexpr TableColumn kVertexColumns[] = {{L"序号", 5},   {L"顶点序号", 5}, {L"X坐标", 20}, {L"Y坐标", 20},
                                          {L"Z坐标", 20}, {L"长度", 15},    {L"面积", 15}};

std::vector<AcGePoint3d> ownPoints(const AcDbCurve& curve) {
    std::vector<AcGePoint3d> points = PolylineVertices(curve);
    if (!points.empty()) return points;
    AcGePoint3d point;
    if (const auto* spline = AcDbSpline::cast(&curve)) {
        for (int i = 0; spline->getFitPointAt(i, point) == Acad::eOk; ++i) points.push_back(point);
        if (points.empty())
            for (int i = 0; spline->getControlPointAt(i, point) == Acad::eOk; ++i) points.push_back(point);
        return points;
    }
    // An open curve has ends, a closed one its quadrants.
    AcGePoint3dArray handles;
    curve.isClosed() ? curve.getGripPoints(handles) : curve.getStretchPoints(handles);
    return {handles.begin(), handles.end()};
}

void beginAtLowerLeft(std::vector<AcGePoint3d>& points, bool closed) {
    if (points.size() < 2) return;
    AcGePoint3d corner = points.front();
    for (const AcGePoint3d& p : points)
        corner.x = std::min(corner.x, p.x), corner.y = std::min(corner.y, p.y);
    const auto distance = [&](const AcGePoint3d& p) { return std::hypot(p.x - corner.x, p.y - corner.y); };
    if (!closed) {
        if (distance(points.back()) < distance(points.front())) std::reverse(points.begin(), points.end());
        return;
    }
    const auto nearest =
        std::min_element(points.begin(), points.end(), [&](const AcGePoint3d& a, const AcGePoint3d& b) {
            return distance(a) < distance(b);
        });
    std::rotate(points.begin(), nearest, points.end());
}

template <class Entity> void append(std::unique_ptr<Entity> entity) {
    entity->setDatabaseDefaults(acdbHostApplicationServices()->workingDatabase());
    AcDbObjectId id;
    if (AppendToCurrentSpace(entity.get(), id) == Acad::eOk) entity.release();
}

} // namespace

TableColumns VertexColumns() { return kVertexColumns; }

std::vector<AcGePoint3d> ReportPoints(const AcDbCurve& curve, bool lowerLeft) {
    std::vector<AcGePoint3d> points = ownPoints(curve);
    if (lowerLeft) beginAtLowerLeft(points, curve.isClosed());
    return points;
}

void DrawMark(const AcGePoint3d& at, const std::wstring& words, double textHeight) {
    append(std::make_unique<AcDbPoint>(at));
    if (words.empty()) return;
    const AcGePoint3d beside = at + AcGeVector3d(textHeight / 3, textHeight / 3, 0);
    append(std::make_unique<AcDbText>(
        beside, words.c_str(), acdbHostApplicationServices()->workingDatabase()->textstyle(), textHeight));
}

void WriteCurveRows(CString& rows, const AcDbCurve& curve, double textHeight, bool marks, int index,
                    bool lowerLeft) {
    int number = 0;
    for (const AcGePoint3d& point : ReportPoints(curve, lowerLeft)) {
        TableRow row(kVertexColumns);
        ++number == 1 ? row.Number(index) : row.Empty();
        rows += row.Number(number).Real(point.x).Real(point.y).Real(point.z).Html();
        if (marks) DrawMark(point, std::to_wstring(number), textHeight);
    }
    double area = 0;
    curve.getArea(area);
    rows += TableRow(kVertexColumns, true).Empty(5).Real(CurveLength(curve)).Real(area).Html();
}

double AskTextHeight(const wchar_t* prompt) {
    constexpr double kPart = 30, kSmallest = 0.001, kUnreadable = 100;
    double view = kUnreadable, answer = 0;
    ReadSysVar(L"VIEWSIZE", view);
    const double height = view / kPart;
    const int status = acedGetReal(TranslateFormat(prompt, height), &answer);
    return status == RTNORM && answer > kSmallest ? answer : height;
}

double AskMarkHeight() { return AskTextHeight(L"\n请输入标记文字高度(%.2f):"); }

bool AskLowerLeftStart() {
    return AskYesNo(L"是否把默认起点设在左下角[Y/N](Y):", L"Lower Left default?[Y/N](Y):", true);
}

void ShowMarks() {
    constexpr int kCrossInCircle = 35;
    SetSysVarInt(L"PDMODE", kCrossInCircle);
}

} // namespace corvane
