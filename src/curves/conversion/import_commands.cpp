// ZB2PL and txt2PL: prompts, host commands and messages. Coordinate lists are read by coordinate_file.h.
#include "curves/conversion/import_commands.h"

#include <optional>
#include <string>
#include <vector>

#include "core/appending.h"
#include "core/curve_services.h"
#include "core/host/entities.h"
#include "core/host/text_files.h"
#include "core/messages.h"
#include "core/properties.h"
#include "core/selection.h"
#include "core/sysvar_stack.h"
#include "curves/conversion/coordinate_file.h"

namespace corvane {
namespace {

std::optional<std::wstring> askCoordinateFile() {
    resbuf answer;
    answer.restype = RTNONE;
    if (acedGetFileD(Translate(L"请选择一个坐标列表文件"), nullptr, L"txt", 0, &answer) != RTNORM)
        return std::nullopt;
    const std::wstring path = answer.resval.rstring;
    acutDelString(answer.resval.rstring);
    return path;
}

// A point of the world as a command takes it.
struct CommandPoint {
    ads_point ucs;
    explicit CommandPoint(AcGePoint3d point) {
        WcsToUcs(point);
        ucs[X] = point.x, ucs[Y] = point.y, ucs[Z] = point.z;
    }
};

AcDbObjectId lastEntity() {
    ads_name set, name;
    AcDbObjectId id;
    if (acedSSGet(L"L", nullptr, nullptr, nullptr, set) != RTNORM) return id;
    if (acedSSName(set, 0, name) == RTNORM) acdbGetObjectId(id, name);
    acedSSFree(set);
    return id;
}

// The lines of multi-line text as texts of their own, in place of it: it stays readable when it is mirrored,
// and its outlines would come back the wrong way round. Nothing when it has none.
std::vector<AcDbObjectId> takeApart(AcDbMText& text) {
    std::vector<AcDbObjectId> lines;
    AcDbVoidPtrArray parts;
    if (text.explode(parts) != Acad::eOk) return lines;
    for (void* part : parts) {
        auto* line = static_cast<AcDbEntity*>(part);
        AcDbObjectId id;
        if (AppendBesideEntity(text.database(), line, text.objectId(), id) == Acad::eOk)
            lines.push_back(id);
        else
            delete line;
    }
    if (!lines.empty() && text.upgradeOpen() == Acad::eOk) text.erase();
    return lines;
}

SelectionSet plainTexts(const SelectionSet& set) {
    std::vector<AcDbObjectId> ids;
    for (long i = 0; i < set.length(); ++i) {
        AcDbObjectPointer<AcDbMText> text(set.at(i), AcDb::kForRead);
        if (!text) {
            ids.push_back(set.at(i));
            continue;
        }
        const std::vector<AcDbObjectId> lines = takeApart(*text);
        ids.insert(ids.end(), lines.begin(), lines.end());
    }
    return SelectionSet::Of(ids);
}

// Text through a metafile and back. Mirrored text can't be written as text, so its outlines are; they come in
// as mirrored as they went out and are turned over again.
class OutlineTrip {
public:
    OutlineTrip(const SelectionSet& set, const AcDbExtents& extents)
        : set_(set), low_(extents.minPoint()), high_(extents.maxPoint()),
          axisFrom_(
              AcGePoint3d(0.5 * (low_.x + high_.x), 0.5 * (low_.y + high_.y), 0.5 * (low_.z + high_.z))),
          axisTo_(AcGePoint3d(0.5 * (low_.x + high_.x), 0.5 * (low_.y + high_.y) + 1000,
                              0.5 * (low_.z + high_.z))) {}

    // False, with the text as it was, when no outlines came of it.
    bool run(const std::wstring& path) {
        zoom();
        mirrorText();
        acedCommandS(RTSTR, L"_WMFOUT", RTSTR, path.c_str(), RTPICKS, set_.name(), RTSTR, L"", RTNONE);
        const AcDbObjectId before = lastEntity();
        import(path);
        if (lastEntity() == before) return mirrorText(), false;
        acedCommandS(RTSTR, L"_ERASE", RTPICKS, set_.name(), RTSTR, L"", RTNONE);
        acedCommandS(RTSTR, L"_MIRROR", RTSTR, L"L", RTSTR, L"", RT3DPOINT, axisFrom_.ucs, RT3DPOINT,
                     axisTo_.ucs, RTSTR, L"Y", RTNONE);
        return true;
    }

private:
    void zoom() const {
        const CommandPoint low(low_), high(high_);
        acedCommandS(RTSTR, L"_ZOOM", RT3DPOINT, low.ucs, RT3DPOINT, high.ucs, RTNONE);
    }
    void mirrorText() const {
        acedCommandS(RTSTR, L"_MIRROR", RTPICKS, set_.name(), RTSTR, L"", RT3DPOINT, axisFrom_.ucs, RT3DPOINT,
                     axisTo_.ucs, RTSTR, L"Y", RTNONE);
    }
    // A metafile comes in at half its size, with its upper left corner at the point.
    static void import(const std::wstring& path) {
        AcGePoint3d lowerLeft, upperRight;
        ActiveViewWindow(lowerLeft, upperRight);
        const CommandPoint corner(AcGePoint3d(lowerLeft.x, upperRight.y, 0));
        acedCommandS(RTSTR, L"_WMFIN", RTSTR, path.c_str(), RT3DPOINT, corner.ucs, RTREAL, 2.0, RTREAL, 2.0,
                     RTREAL, 0.0, RTNONE);
    }

    const SelectionSet& set_;
    AcGePoint3d low_, high_;
    CommandPoint axisFrom_, axisTo_;
};

} // namespace

void CoordinateFileCommand() {
    const CommandFrame frame;
    const auto path = askCoordinateFile();
    if (!path) return;
    const auto text = host_door::textOfFile(*path);
    if (!text) return PrintText(TranslateFormat(L"\n无法读取文件: %s", *path));
    const CoordinateFile file = ReadCoordinates(*text);
    if (file.lines <= 1) return PrintLine(L"\n文件中行数太少！");
    for (const CoordinateFile::BadLine& line : file.badLines)
        PrintText(TranslateFormat(L"\n第 %d 行错误，数据被抛弃，请检查: 【%s】", line.number, line.text));
    int count = 0;
    for (const std::vector<AcGePoint3d>& row : file.rows) {
        AcDbObjectId id;
        count += MakePolylineThroughPoints(id, int(row.size()), row.data(), false) == Acad::eOk;
    }
    PrintText(TranslateFormat(L"\nAdded < %d> polylines.", count));
}

void TextOutlinesCommand() {
    const CommandFrame frame;
    const SelectionSet chosen =
        SelectionSet::Ask(L"请选择文字>\n", CurveFilter::text, L"未选中。\n", Purpose::change);
    if (chosen.empty()) return;
    const SelectionSet set = plainTexts(chosen);
    AcDbExtents extents;
    SelectionExtents(extents, set.name());
    const std::wstring path = host_door::temporaryFile(L".wmf");
    SdSysVarStack saved;
    saved.Push(L"MIRRTEXT", short(1));
    if (!extents.isValid() || path.empty() || !OutlineTrip(set, extents).run(path))
        PrintLine(L"\n文字无法转为轮廓。");
}

} // namespace corvane
