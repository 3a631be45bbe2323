// PLBLENDS: prompts, the dialog and messages.
#include "assoc/blend/blend_commands.h"

#include "assoc/blend/blend.h"
#include "assoc/blend/blend_orientation.h"
#include "core/brackets.h"
#include "core/host/entities.h"
#include "core/messages.h"
#include "core/properties.h"
#include "core/selection.h"

namespace corvane {
namespace {

constexpr wchar_t kNothingPicked[] = L"\n未选中。", kNoCurve[] = L"\n错误：选中的不是曲线。",
                  kBadChoice[] = L"\n选择错误。";

// What a prompt for one entity gave. The point is in world coordinates.
struct Pick {
    int result = RTERROR;
    AcDbObjectId entity{};
    AcGePoint3d point{};
    explicit operator bool() const { return result == RTNORM; }
};

Pick ask(const wchar_t* prompt) {
    Pick pick;
    ads_name name;
    ads_point at;
    pick.result = acedEntSel(Translate(prompt), name, at);
    if (pick && acdbGetObjectId(pick.entity, name) != Acad::eOk) pick.result = RTERROR;
    pick.point.set(at[X], at[Y], at[Z]);
    if (pick) UcsToWcs(pick.point);
    return pick;
}

bool isOf(AcDbObjectId id, const AcRxClass* cls) { return id.objectClass()->isDerivedFrom(cls); }

struct EndsAndNearest {
    CurveEnds ends;
    AcGePoint3d nearest; // to the pick
};
std::optional<EndsAndNearest> lookAt(const Pick& pick) {
    AcDbObjectPointer<AcDbCurve> curve(pick.entity, AcDb::kForRead);
    EndsAndNearest seen;
    if (!curve || curve->getStartPoint(seen.ends.start) != Acad::eOk ||
        curve->getEndPoint(seen.ends.end) != Acad::eOk)
        return {};
    if (curve->getClosestPointTo(pick.point, seen.nearest) != Acad::eOk) seen.nearest = pick.point;
    return seen;
}

void editBlend(AcDbObjectId reference) {
    const auto record = ReadBlend(reference);
    if (!record) return;
    const auto rebuild = [&](const CopyFamily& family) {
        const DocumentLock lock;
        BlendRecord next = *record;
        next.family = family;
        return lock && UpdateBlend(reference, next);
    };
    static constexpr SpacingDialogTexts kTexts{L"编辑渐变", L"数量:", L"数量必须在 1~100。",
                                               L"CVN_BLEND_GRAPH"};
    const auto done = EditCopyFamily(kTexts, record->family, rebuild);
    if (done && !*done) PrintLine(L"\n更新失败。");
}

// Enter means no guide; so does something that isn't one, with a word about it.
Pick askGuide(const wchar_t* prompt) {
    Pick pick = ask(prompt);
    if (pick && !lookAt(pick)) {
        PrintLine(kNoCurve);
        pick.result = RTERROR;
    }
    return pick;
}

// False on Esc.
bool askGuides(std::vector<Pick>& guides) {
    for (const wchar_t* prompt :
         {L"\n请选择一条端部参考曲线(可回车不选)：  ", L"\n请选择第2条端部参考曲线(可回车不选)： "}) {
        const Pick guide = askGuide(prompt);
        if (guide.result == RTCAN) return false;
        if (!guide) break;
        guides.push_back(guide);
    }
    return true;
}

bool askFamily(CopyFamily& family) {
    short count = 0;
    do {
        acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
        const int result = acedGetShort(Translate(L"\n请输入渐变曲线数量，允许值1--100，默认值16:"), &count);
        if (result == RTNONE) count = short(family.count);
        if (result != RTNORM && result != RTNONE) return false;
    } while (count < kSmallestFamily || count > kLargestFamily);
    family.count = count;
    short accel = 0;
    acedInitGet(RSG_NOLIM, nullptr);
    const int result = acedGetShort(
        Translate(L"\n请输入渐变曲线疏密加速度，允许值 -100（减速） ~ 100（加速），默认值0:"), &accel);
    if (result == RTCAN) return false;
    family.spacing.accel =
        result == RTNORM ? std::clamp(int(accel), -kMostAcceleration, kMostAcceleration) : 0;
    return true;
}

void orient(BlendRecord& record, const EndsAndNearest& first, const AcGePoint3d& firstPick,
            const EndsAndNearest& second, const std::vector<Pick>& guides) {
    if (guides.empty()) {
        record.reversed1 = ReversedByPick(first.ends, firstPick);
        record.reversed2 = ReversedByPick(second.ends, second.nearest);
    } else {
        const auto other = guides.size() > 1 ? lookAt(guides[1]) : std::nullopt;
        const BlendOrientation found = OrientByGuides(first.ends, second.ends, lookAt(guides[0])->ends,
                                                      other ? std::optional(other->ends) : std::nullopt);
        record.reversed1 = found.reversed1;
        record.reversed2 = found.reversed2;
        record.hasGuide1 = found.atStarts >= 0;
        record.hasGuide2 = found.atEnds >= 0;
        if (record.hasGuide1) record.guide1 = guides[size_t(found.atStarts)].entity;
        if (record.hasGuide2) record.guide2 = guides[size_t(found.atEnds)].entity;
    }
    record.hasAnchors = true;
    record.anchor1 = first.ends.turnedIf(record.reversed1).start;
    record.anchor2 = second.ends.turnedIf(record.reversed2).start;
}

void tellFailure(BlendFailure failure) {
    switch (failure) {
    case BlendFailure::none: break;
    case BlendFailure::lock: PrintLine(L"\n创建融合曲线失败：文档加锁失败。"); break;
    case BlendFailure::curves: PrintLine(L"\n创建融合曲线失败：曲线太短或没有端点。"); break;
    case BlendFailure::block: PrintLine(L"\n创建融合曲线失败：创建匿名块失败。"); break;
    case BlendFailure::definition: PrintLine(L"\n创建融合曲线失败：打开匿名块定义失败。"); break;
    case BlendFailure::reference: PrintLine(L"\n创建融合曲线失败：插入匿名块参照失败。"); break;
    }
}

void makeBlend(const Pick& firstPick, const EndsAndNearest& first) {
    const Pick secondPick = ask(L"\n请选择第二条曲线： ");
    if (!secondPick) return PrintLine(kNothingPicked);
    const auto second = lookAt(secondPick);
    if (!second) return PrintLine(kNoCurve);
    if (secondPick.entity == firstPick.entity) return PrintLine(kBadChoice);
    std::vector<Pick> guides;
    BlendRecord record;
    if (!askGuides(guides) || !askFamily(record.family)) return;
    record.curve1 = firstPick.entity;
    record.curve2 = secondPick.entity;
    orient(record, first, firstPick.point, *second, guides);
    tellFailure(CreateBlend(record).failure);
}

} // namespace

void BlendCommand() {
    const CommandFrame frame;
    const Pick pick = ask(L"\n请选择第一条曲线/或本命令生成的匿名块： ");
    if (!pick) return PrintLine(kNothingPicked);
    if (const AcDbObjectId blend = FindBlend(pick.entity, pick.point); !blend.isNull())
        return editBlend(blend);
    if (isOf(pick.entity, AcDbBlockReference::desc()))
        return PrintLine(L"\n选择错误：不是本命令生成的匿名块。");
    if (!isOf(pick.entity, AcDbCurve::desc())) return PrintLine(kNoCurve);
    const auto first = lookAt(pick);
    if (!first) return PrintLine(kBadChoice);
    makeBlend(pick, *first);
}

} // namespace corvane
