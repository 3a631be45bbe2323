// VINS, insert2p and mcopy: prompts and entities round the placements.
#include "aids/insert/insert_commands.h"

#include <memory>
#include <vector>

#include "aids/insert/placement.h"
#include "core/appending.h"
#include "core/host/entities.h"
#include "core/messages.h"
#include "core/properties.h"
#include "core/selection.h"
#include "core/settings.h"

namespace corvane {
namespace {

constexpr wchar_t kLastBlock[] = L"insert_block"; // setting: the block that was inserted last

AcGePoint3d toWorld(const ads_point ucs) {
    AcGePoint3d point(ucs[X], ucs[Y], ucs[Z]);
    UcsToWcs(point);
    return point;
}

AcDbObjectId findBlock(const std::wstring& name) {
    AcDbBlockTable* table = nullptr;
    AcDbObjectId id;
    if (acdbHostApplicationServices()->workingDatabase()->getBlockTable(table, AcDb::kForRead) != Acad::eOk)
        return id;
    table->getAt(name.c_str(), id);
    table->close();
    return id;
}

// The block that the user names; Enter takes the last one. Null, with a message, when there is none.
AcDbObjectId askBlock() {
    const std::wstring last = SettingsStore::ReadText(kLastBlock);
    std::wstring name;
    const CString prompt =
        last.empty() ? Translate(L"\n请输入图块名: ") : TranslateFormat(L"\n请输入图块名 <%s>: ", last);
    if (acedGetString(0, prompt, name) == RTCAN) return {}; // names with blanks come in quotes
    if (name.empty()) name = last;
    const AcDbObjectId block = findBlock(name);
    if (block.isNull())
        PrintText(TranslateFormat(L"\n图形中没有图块 \"%s\"。", name));
    else
        SettingsStore::WriteText(kLastBlock, name);
    return block;
}

// The extent of the block's contents along X from its insertion point.
double blockWidth(AcDbObjectId blockId) {
    AcDbObjectPointer<AcDbBlockTableRecord> block(blockId, AcDb::kForRead);
    if (!block) return 0;
    AcDbObjectIdArray ids;
    for (AcDbObjectId id : block->entities()) ids.append(id);
    AcDbExtents extents;
    IdsExtents(extents, ids);
    return extents.isValid() ? extents.maxPoint().x - block->origin().x : 0;
}

bool insertAt(AcDbObjectId block, const Placement& placement) {
    auto reference = std::make_unique<AcDbBlockReference>(placement.position, block);
    reference->setDatabaseDefaults();
    reference->setRotation(placement.rotation);
    reference->setScaleFactors(AcGeScale3d(placement.scale, placement.scale, placement.scale));
    AcDbObjectId id;
    if (AppendToCurrentSpace(reference.get(), id) != Acad::eOk) return false;
    reference.release();
    return true;
}

void reportInserted(int count) {
    if (count > 0) PrintText(TranslateFormat(L"\n插入了< %d >个图块。 ", count));
}

// The place on the curve nearest to the point.
std::optional<Placement> placeOn(AcDbObjectId curveId, const AcGePoint3d& point) {
    AcDbObjectPointer<AcDbCurve> curve(curveId, AcDb::kForRead);
    AcGePoint3d nearest;
    AcGeVector3d tangent;
    if (!curve || curve->getClosestPointTo(point, nearest) != Acad::eOk ||
        curve->getFirstDeriv(nearest, tangent) != Acad::eOk)
        return std::nullopt;
    return AcrossCurve(nearest, tangent);
}

} // namespace

void InsertAcrossCurveCommand() {
    const CommandFrame frame;
    const AcDbObjectId block = askBlock();
    if (block.isNull()) return;
    ads_name picked;
    ads_point at;
    AcDbObjectId curve;
    if (acedEntSel(Translate(L"\n请选择曲线: "), picked, at) != RTNORM ||
        acdbGetObjectId(curve, picked) != Acad::eOk)
        return PrintLine(L"\n未选中曲线。");
    if (!AcDbObjectPointer<AcDbCurve>(curve, AcDb::kForRead)) return PrintLine(L"\n错误：选中的不是曲线。");
    int count = 0;
    while (acedGetPoint(nullptr, Translate(L"\n请指定插入点(回车结束): "), at) == RTNORM)
        if (const auto place = placeOn(curve, toWorld(at)); place && insertAt(block, *place)) ++count;
    reportInserted(count);
}

void InsertByTwoPointsCommand() {
    const CommandFrame frame;
    const AcDbObjectId block = askBlock();
    if (block.isNull()) return;
    const double width = blockWidth(block);
    int count = 0;
    ads_point from, to;
    while (acedGetPoint(nullptr, Translate(L"\n请指定第一点(回车结束): "), from) == RTNORM &&
           acedGetPoint(from, Translate(L"\n请指定第二点: "), to) == RTNORM) {
        if (const auto place = ByTwoPoints(toWorld(from), toWorld(to), width);
            place && insertAt(block, *place))
            ++count;
        else
            PrintLine(L"\n两点重合，请重新指定。");
    }
    reportInserted(count);
}

void MultipleCopyCommand() {
    const CommandFrame frame;
    const SelectionSet set = SelectionSet::AskAny(L"\n请选择要复制的对象: ", L"\n未选中对象。");
    ads_point base, to;
    if (set.empty() || acedGetPoint(nullptr, Translate(L"\n请指定基点: "), base) != RTNORM) return;
    const AcGePoint3d origin = toWorld(base);
    int count = 0;
    while (acedGetPoint(base, Translate(L"\n请指定目标点(回车结束): "), to) == RTNORM) {
        const AcGeMatrix3d move = AcGeMatrix3d::translation(toWorld(to) - origin);
        ForEach<AcDbEntity>(set, AcDb::kForRead, [&](AcDbEntity& entity) {
            AcDbEntity* copy = nullptr;
            AcDbObjectId id;
            if (entity.getTransformedCopy(move, copy) != Acad::eOk) return;
            if (AppendBesideEntity(entity.database(), copy, entity.objectId(), id) == Acad::eOk)
                ++count;
            else
                delete copy;
        });
    }
    PrintText(TranslateFormat(L"\n复制了< %d >个对象。 ", count));
}

} // namespace corvane
