// PLLIST, CLIST, ELLLIST and ARCLIST: one frame, and what each tells of a curve.
#include <functional>
#include <numbers>

#include "core/curve_services.h"
#include "core/messages.h"
#include "core/selection.h"
#include "curves/reports/curve_rows.h"
#include "curves/reports/report_commands.h"
#include "curves/reports/report_files.h"

namespace corvane {
namespace {

constexpr TableColumn kCircleColumns[] = {{L"序号", 10}, {L"X坐标", 15}, {L"Y坐标", 15}, {L"Z坐标", 15},
                                          {L"半径", 15}, {L"周长", 15},  {L"面积", 15}};
constexpr TableColumn kEllipseColumns[] = {{L"序号", 9},  {L"X坐标", 13}, {L"Y坐标", 13}, {L"Z坐标", 13},
                                           {L"长轴", 13}, {L"短轴", 13},  {L"周长", 13},  {L"面积", 13}};
constexpr TableColumn kArcColumns[] = {{L"序号", 9},  {L"X坐标", 13},    {L"Y坐标", 13},    {L"Z坐标", 13},
                                       {L"半径", 13}, {L"起点角度", 13}, {L"终点角度", 13}, {L"周长", 13}};

// The marks that the user wants.
struct Marks {
    bool wanted = false, lowerLeft = false;
    double height = 0;
};

struct Report {
    const wchar_t* kinds; // names in files, parted by blanks
    const wchar_t* prompt;
    const wchar_t* nothing;
    const wchar_t* filter;
    const wchar_t* failure;
    const wchar_t* title;
    TableColumns columns;
    void (*write)(CString& rows, const AcDbCurve& curve, int index, const Marks& marks);
};

double degrees(double radians) { return radians * 180 / std::numbers::pi; }

TableRow centred(TableColumns columns, int index, const AcGePoint3d& centre, const Marks& marks) {
    if (marks.wanted) DrawMark(centre, std::to_wstring(index), marks.height);
    return TableRow(columns).Number(index).Real(centre.x).Real(centre.y).Real(centre.z);
}

void writeVertices(CString& rows, const AcDbCurve& curve, int index, const Marks& marks) {
    WriteCurveRows(rows, curve, marks.height, marks.wanted, index, marks.lowerLeft);
}
void writeCircle(CString& rows, const AcDbCurve& curve, int index, const Marks& marks) {
    const auto* circle = AcDbCircle::cast(&curve);
    const double r = circle->radius(), pi = std::numbers::pi;
    rows += centred(kCircleColumns, index, circle->center(), marks)
                .Real(r)
                .Real(2 * pi * r)
                .Real(pi * r * r)
                .Html();
}
void writeEllipse(CString& rows, const AcDbCurve& curve, int index, const Marks& marks) {
    const auto* ellipse = AcDbEllipse::cast(&curve);
    double area = 0;
    ellipse->getArea(area);
    // The axes from end to end, as the headings say.
    rows += centred(kEllipseColumns, index, ellipse->center(), marks)
                .Real(2 * ellipse->majorRadius())
                .Real(2 * ellipse->minorRadius())
                .Real(CurveLength(curve))
                .Real(area)
                .Html();
}
void writeArc(CString& rows, const AcDbCurve& curve, int index, const Marks& marks) {
    const auto* arc = AcDbArc::cast(&curve);
    rows += centred(kArcColumns, index, arc->center(), marks)
                .Real(arc->radius())
                .Real(degrees(arc->startAngle()))
                .Real(degrees(arc->endAngle()))
                .Real(CurveLength(curve))
                .Html();
}

constexpr wchar_t kCentreFilter[] = L"圆心坐标和半径文件 (*.xls)|*.xls|";
const Report kVertices = {L"POLYLINE LWPOLYLINE SPLINE ELLIPSE CIRCLE ARC LINE",
                          L"请选择直线、圆弧、多段线、样条曲线等>\n",
                          L"未选中。\n",
                          L"曲线顶点坐标文件 (*.xls)|*.xls|",
                          L"Create file <%s> fail.",
                          L"直线、圆弧、多段线、样条曲线坐标",
                          VertexColumns(),
                          writeVertices};
const Report kCircles = {
    L"CIRCLE",         L"请选择圆>\n", L"未选中圆。\n", kCentreFilter, L"Create file <%s> Error！",
    L"圆心坐标和半径", kCircleColumns, writeCircle};
const Report kEllipses = {L"ELLIPSE",
                          L"请选择椭圆>\n",
                          L"未选中椭圆。\n",
                          kCentreFilter,
                          L"Create file <%s> fail!",
                          L"椭圆圆心坐标和半径",
                          kEllipseColumns,
                          writeEllipse};
const Report kArcs = {L"ARC",
                      L"请选择圆弧>\n",
                      L"未选中圆弧。\n",
                      kCentreFilter,
                      L"Create file <%s> fail！",
                      L"圆弧圆心坐标和半径",
                      kArcColumns,
                      writeArc};

Marks askMarks() {
    Marks marks;
    marks.wanted = AskYesNo(L"\n是否绘制标记和编号[Y/N](Y): ", L"\nMarks and numbers[Y/N](Y): ", true);
    if (!marks.wanted) return marks;
    marks.height = AskMarkHeight();
    marks.lowerLeft = AskLowerLeftStart();
    return marks;
}

void runReport(const Report& report) {
    const CommandFrame frame;
    const SelectionSet set = SelectionSet::AskKinds(report.prompt, report.kinds, report.nothing);
    std::wstring path;
    if (set.empty() || !AskTableFileName(report.filter, path) || !CanWriteReport(path, report.failure))
        return;
    TableFile table(path, report.title, report.columns);
    const Marks marks = askMarks();
    int index = 0;
    ForEach<AcDbCurve>(set, AcDb::kForRead, [&](AcDbCurve& curve) {
        CString rows;
        report.write(rows, curve, ++index, marks);
        table.Add(rows);
    });
    if (marks.wanted) ShowMarks();
    FinishReport(table, path, report.failure);
}

} // namespace

void ListVerticesCommand() { runReport(kVertices); }
void ListCirclesCommand() { runReport(kCircles); }
void ListEllipsesCommand() { runReport(kEllipses); }
void ListArcsCommand() { runReport(kArcs); }

} // namespace corvane
