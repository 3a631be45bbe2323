// CVplcount2 and CVckg: lengths of curves and sizes of objects, one by one and summed up by kind.
#include <cmath>
#include <map>
#include <optional>
#include <tuple>

#include "core/appending.h"
#include "core/curve_services.h"
#include "core/messages.h"
#include "core/selection.h"
#include "core/sysvar_stack.h"
#include "curves/reports/curve_rows.h"
#include "curves/reports/report_commands.h"
#include "curves/reports/report_files.h"
#include "curves/reports/smallest_box.h"

namespace corvane {
namespace {

constexpr wchar_t kFailure[] = L"Create file <%s> fail.";

AcDbDatabase* drawing() { return acdbHostApplicationServices()->workingDatabase(); }

// -- numbers beside objects ---------------------------------------------------------------------------

// Whether numbers are drawn, and how large. The default is the one of marks.
double askNumberHeight(const wchar_t* question) {
    const bool wanted = AskYesNo(question, L"\nDraw index[Y/N](Y): ", true);
    return wanted ? AskTextHeight(L"\n请输入编号文字大小(%.3f):") : 0;
}

// The layer for the numbers of a layer's curves, made when it isn't there. Null when it can't be made.
AcDbObjectId numberLayer(const std::wstring& source) {
    const std::wstring name = source + Translate(L"_编号").GetString();
    AcDbObjectPointer<AcDbLayerTable> table(drawing()->layerTableId(), AcDb::kForWrite);
    AcDbObjectId id;
    if (!table || table->getAt(name.c_str(), id) == Acad::eOk) return id;
    auto layer = std::make_unique<AcDbLayerTableRecord>();
    if (layer->setName(name.c_str()) != Acad::eOk || table->add(id, layer.get()) != Acad::eOk) return {};
    layer.release()->close();
    return id;
}

void drawNumber(int number, const AcDbEntity& beside, double height, AcDbObjectId layer) {
    AcDbExtents box;
    if (beside.getGeomExtents(box) != Acad::eOk) return;
    const AcGePoint3d middle = box.minPoint() + (box.maxPoint() - box.minPoint()) / 2;
    auto text =
        std::make_unique<AcDbText>(middle, std::to_wstring(number).c_str(), drawing()->textstyle(), height);
    text->setDatabaseDefaults(drawing());
    if (!layer.isNull()) text->setLayer(layer);
    AcDbObjectId id;
    if (AppendToCurrentSpace(text.get(), id) == Acad::eOk) text.release();
}

// Where the number of a curve stands: on the curve, at half its length.
void drawNumberOn(const AcDbCurve& curve, int number, double height, AcDbObjectId layer) {
    AcGePoint3d at;
    if (curve.getPointAtDist(CurveLength(curve) / 2, at) != Acad::eOk)
        return drawNumber(number, curve, height, layer);
    AcDbPoint place(at);
    drawNumber(number, place, height, layer);
}

std::wstring kindOf(const AcDbEntity& entity) { return entity.isA()->dxfName(); }

// -- lengths ------------------------------------------------------------------------------------------

// The path of the statistics beside the drawing: its name and what is told, without what no file name can
// hold, and with a number when such a file is there already.
std::wstring statisticsPath() {
    std::wstring folder, name;
    ReadSysVar(L"DWGPREFIX", folder);
    ReadSysVar(L"DWGNAME", name);
    name = name.substr(0, name.rfind(L'.')) + Translate(L"长度统计").GetString();
    for (wchar_t& c : name)
        if (std::wstring_view(L"\\/?|:*\"<>").find(c) != std::wstring_view::npos) c = L'_';
    constexpr int kMostTries = 10000;
    const std::wstring usual = folder + name + L".html";
    std::wstring path = usual;
    for (int number = 1; host_door::isFile(path) && number < kMostTries; ++number)
        path = folder + name + std::to_wstring(number) + L".html";
    if (host_door::isFile(path)) return {};
    if (path != usual) PrintText(TranslateFormat(L"\n文件已存在，自动改为：%s", path.c_str()));
    return path;
}

constexpr TableColumn kLengthColumns[] = {{L"编号", 20}, {L"曲线类型", 40}, {L"长度", 40}};

struct LengthSum {
    int count = 0;
    double length = 0;
};

// Numbers the curves of the set and writes their rows; the sums by kind.
std::map<std::wstring, LengthSum> writeLengths(TableFile& table, const SelectionSet& set, double height) {
    std::map<std::wstring, LengthSum> sums;
    std::map<std::wstring, AcDbObjectId> layers;
    bool told = false;
    int number = 0;
    ForEach<AcDbCurve>(set, AcDb::kForRead, [&](AcDbCurve& curve) {
        const double length = CurveLength(curve);
        table.Add(TableRow(kLengthColumns).Number(++number).Text(kindOf(curve)).Real(length));
        LengthSum& sum = sums[kindOf(curve)];
        ++sum.count, sum.length += length;
        if (height <= 0) return;
        const std::wstring source = curve.layerName();
        const auto [layer, fresh] = layers.try_emplace(source);
        if (fresh) layer->second = numberLayer(source);
        if (layer->second.isNull() && !std::exchange(told, true))
            PrintLine(L"\n创建编号图层失败，将继续但不强制设置图层。\n");
        drawNumberOn(curve, number, height, layer->second);
    });
    return sums;
}

// -- sizes --------------------------------------------------------------------------------------------

struct ObjectSize {
    std::wstring kind, block;
    double x = 0, y = 0, z = 0;           // of the box along the axes; blocks before they were turned
    double bestLength = 0, bestWidth = 0; // of the smallest box, however turned
    AcGeScale3d scale{1, 1, 1};
    auto key() const {
        const auto rounded = [](double v) { return std::int64_t(std::llround(v * 1000)); };
        return std::tuple(kind, block, rounded(x), rounded(y), rounded(z), rounded(scale.sx),
                          rounded(scale.sy), rounded(scale.sz));
    }
};

std::wstring blockNameOf(const AcDbBlockReference& reference) {
    AcDbObjectPointer<AcDbBlockTableRecord> block(reference.blockTableRecord(), AcDb::kForRead);
    return block ? block->name() : std::wstring();
}

// Nothing for objects without extents.
std::optional<ObjectSize> measure(const AcDbEntity& entity) {
    AcDbExtents box;
    ObjectSize size;
    size.kind = kindOf(entity);
    if (const auto* reference = AcDbBlockReference::cast(&entity)) {
        size.block = blockNameOf(*reference);
        size.scale = reference->scaleFactors();
        const AcGeMatrix3d upright =
            AcGeMatrix3d::rotation(-reference->rotation(), reference->normal(), reference->position());
        box = reference->extentsThrough(upright);
        if (!box.isValid()) return std::nullopt;
    } else if (entity.getGeomExtents(box) != Acad::eOk) {
        return std::nullopt;
    }
    const AcGeVector3d sides = box.maxPoint() - box.minPoint();
    size.x = sides.x, size.y = sides.y, size.z = sides.z;
    std::vector<AcGePoint2d> outline;
    for (const AcGePoint3d& p : host_door::drawnPoints(entity, sides.length() * 1e-5))
        outline.push_back({p.x, p.y});
    const BoxSize best = SmallestBox(std::move(outline));
    size.bestLength = best.length, size.bestWidth = best.width;
    return size;
}

constexpr TableColumn kSizeColumns[] = {{L"编号", 5},     {L"类型", 12}, {L"图块名", 12},  {L"长度X", 8},
                                        {L"宽度Y", 8},    {L"高度Z", 8}, {L"优化长度", 8}, {L"优化宽度", 8},
                                        {L"优化高度", 8}, {L"缩放X", 7}, {L"缩放Y", 7},    {L"缩放Z", 7}};
constexpr TableColumn kSizeSumColumns[] = {
    {L"类型", 12},    {L"图块名", 12},  {L"数量", 7},     {L"长度X", 8}, {L"宽度Y", 8}, {L"高度Z", 8},
    {L"优化长度", 8}, {L"优化宽度", 8}, {L"优化高度", 8}, {L"缩放X", 7}, {L"缩放Y", 7}, {L"缩放Z", 7}};

TableRow& addSizes(TableRow& row, const ObjectSize& size) {
    return row.Real(size.x)
        .Real(size.y)
        .Real(size.z)
        .Real(size.bestLength)
        .Real(size.bestWidth)
        .Real(size.z)
        .Real(size.scale.sx)
        .Real(size.scale.sy)
        .Real(size.scale.sz);
}

} // namespace

void CountLengthsCommand() {
    const CommandFrame frame;
    const SelectionSet set =
        SelectionSet::Ask(L"请选择一批任意曲线>\n", CurveFilter::allCurves, L"未选中。\n");
    if (set.empty()) return;
    const double height = askNumberHeight(L"\n是否绘制编号[Y/N](Y): ");
    const std::wstring path = statisticsPath();
    if (path.empty()) return PrintLine(L"\n生成输出文件名失败。\n");
    if (!CanWriteReport(path, kFailure)) return;
    TableFile table(path, L"线条长度统计与编号", kLengthColumns,
                    L"table{table-layout:fixed;}\ntd{width:5cm;}\n");
    for (const auto& [kind, sum] : writeLengths(table, set, height))
        table.Add(TableRow(kLengthColumns, true).Number(sum.count).Text(kind).Real(sum.length));
    FinishReport(table, path, kFailure);
}

void MeasureSizesCommand() {
    const CommandFrame frame;
    const SelectionSet set = SelectionSet::AskAny(L"请选择物体：\n", L"未选择物体。\n");
    std::wstring path;
    if (set.empty()) return;
    const double height = askNumberHeight(L"\n是否绘制编号[Y/N](Y): ");
    if (!AskTableFileName(L"尺寸统计文件 (*.xls)|*.xls|", path) || !CanWriteReport(path, kFailure)) return;
    TableFile table(path, L"物体尺寸统计", kSizeColumns);
    std::map<decltype(ObjectSize().key()), std::pair<ObjectSize, int>> kinds;
    int number = 0;
    ForEach<AcDbEntity>(set, AcDb::kForRead, [&](AcDbEntity& entity) {
        const auto size = measure(entity);
        if (!size) return;
        TableRow row(kSizeColumns);
        row.Number(++number).Text(size->kind).Text(size->block);
        table.Add(addSizes(row, *size));
        ++kinds.try_emplace(size->key(), *size, 0).first->second.second;
        if (height > 0) drawNumber(number, entity, height, {});
    });
    table.BeginTable(L"物体尺寸统计（按类型汇总）", kSizeSumColumns);
    for (const auto& [key, one] : kinds) {
        TableRow row(kSizeSumColumns);
        row.Text(one.first.kind).Text(one.first.block).Number(one.second);
        table.Add(addSizes(row, one.first));
    }
    FinishReport(table, path, kFailure);
}

} // namespace corvane
