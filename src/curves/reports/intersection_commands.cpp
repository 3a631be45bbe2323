// PLJD and PLJD1: meetings of curves marked, numbered, listed, filled with a block, or broken at.
#include <algorithm>

#include "core/appending.h"
#include "core/host/editor.h"
#include "core/messages.h"
#include "core/selection.h"
#include "curves/reports/curve_rows.h"
#include "curves/reports/meetings.h"
#include "curves/reports/report_commands.h"
#include "curves/reports/report_files.h"

namespace corvane {
namespace {

constexpr TableColumn kMeetingColumns[] = {{L"序号", 10}, {L"X坐标", 30}, {L"Y坐标", 20}, {L"Z坐标", 20}};
constexpr wchar_t kFailure[] = L"Create file <%s> fail.";

enum class AtMeetings { mark = 1, number, list, insert, breakCurves };

std::optional<AtMeetings> askWhat() {
    std::wstring word;
    acedInitGet(0, L"1 2 3 4 5");
    const int status =
        acedGetKword(Translate(L"\n在交点处：1、添加标记点; 2、标记点+编号; 3、标记点+编号+输出坐标列表; "
                               L"4、插入图块; 5、打断交点。\n请选择 [1/2/3/4/5] <2>:"),
                     word);
    if (status == RTNONE || word.empty())
        return status == RTNONE ? std::optional(AtMeetings::number) : std::nullopt;
    return AtMeetings(word[0] - L'0');
}

void drawMarks(const std::vector<AcGePoint3d>& points, bool numbers) {
    const double height = AskMarkHeight();
    for (size_t i = 0; i < points.size(); ++i)
        DrawMark(points[i], numbers ? std::to_wstring(i + 1) : std::wstring(), height);
    ShowMarks();
}

// The table of the points, which are consumed.
void WriteIntersectionTable(std::vector<AcGePoint3d>& points) {
    const std::vector<AcGePoint3d> all = std::exchange(points, {});
    std::wstring path;
    if (!AskTableFileName(L"交点坐标文件 (*.xls)|*.xls|", path) || !CanWriteReport(path, kFailure)) return;
    TableFile table(path, L"交点坐标", kMeetingColumns);
    int index = 0;
    for (const AcGePoint3d& p : all)
        table.Add(TableRow(kMeetingColumns).Number(++index).Real(p.x).Real(p.y).Real(p.z));
    FinishReport(table, path, kFailure);
}

void insertBlocks(const std::vector<AcGePoint3d>& points) {
    std::wstring name;
    if (acedGetString(0, Translate(L"\n请输入图块名称："), name) != RTNORM || name.empty()) return;
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    AcDbObjectPointer<AcDbBlockTable> table(database->blockTableId(), AcDb::kForRead);
    AcDbObjectId block;
    if (!table || table->getAt(name.c_str(), block) != Acad::eOk) return PrintLine(L"\n图块名错误！");
    for (const AcGePoint3d& point : points) {
        auto reference = std::make_unique<AcDbBlockReference>(point, block);
        reference->setDatabaseDefaults(database);
        AcDbObjectId id;
        if (AppendToCurrentSpace(reference.get(), id) == Acad::eOk) reference.release();
    }
}

void treat(const std::vector<AcDbObjectId>& curves, AtMeetings what) {
    CurveMeetings meetings = MeetingsOf(curves);
    if (meetings.points.empty()) return PrintLine(L"\n没有找到交点。");
    switch (what) {
    case AtMeetings::mark: return drawMarks(meetings.points, false);
    case AtMeetings::number: return drawMarks(meetings.points, true);
    case AtMeetings::list: return drawMarks(meetings.points, true), WriteIntersectionTable(meetings.points);
    case AtMeetings::insert: return insertBlocks(meetings.points);
    case AtMeetings::breakCurves:
        for (size_t i = 0; i < curves.size(); ++i) BreakCurve(curves[i], meetings.ofCurve[i]);
    }
}

} // namespace

void IntersectCurvesCommand() {
    const CommandFrame frame;
    const SelectionSet set =
        SelectionSet::Ask(L"\n请选择多根曲线>", CurveFilter::allCurves, L"\nNothing selected");
    const auto what = set.empty() ? std::nullopt : askWhat();
    if (!what) return;
    std::vector<AcDbObjectId> curves;
    for (long i = 0; i < set.length(); ++i) curves.push_back(set.at(i));
    // One curve alone has no partner; its own crossings are for PLJD1.
    curves.size() > 1 ? treat(curves, *what) : PrintLine(L"\n没有找到交点。");
}

void IntersectOneCurveCommand() {
    const CommandFrame frame;
    ads_name name;
    ads_point at;
    AcDbObjectId id;
    if (acedEntSel(Translate(L"\n请选择一根曲线: "), name, at) != RTNORM ||
        acdbGetObjectId(id, name) != Acad::eOk)
        return PrintLine(L"\nNothing selected");
    AcDbObjectPointer<AcDbCurve> curve(id, AcDb::kForRead);
    if (!curve) return PrintLine(L"\n错误：选中的不是曲线。");
    curve.close();
    if (const auto what = askWhat()) treat({id}, *what);
}

} // namespace corvane
