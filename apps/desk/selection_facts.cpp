// Facts gathered in one pass over the entities; changes one by one.
#include "apps/desk/selection_facts.h"

#include <algorithm>
#include <map>
#include <set>

#include "apps/desk/qt_text.h"
#include "apps/desk/texts.h"
#include "host/ed/commands.h"
#include "host/ed/host_commands.h"
#include "host/ent/curve.h"
#include "host/os/text.h"
#include "src/core/app_names.h"

namespace desk {
namespace {

constexpr size_t kMostMeasured = 5000; // lengths and areas take time
constexpr int kApplicationName = 1001; // group of xdata

struct KindName {
    const wchar_t* className;
    const wchar_t* name;
};
constexpr KindName kKinds[] = {{L"AcDbLine", L"直线"},
                               {L"AcDbPoint", L"点"},
                               {L"AcDbRay", L"射线"},
                               {L"AcDbXline", L"构造线"},
                               {L"AcDbCircle", L"圆"},
                               {L"AcDbArc", L"圆弧"},
                               {L"AcDbEllipse", L"椭圆"},
                               {L"AcDbPolyline", L"多段线"},
                               {L"AcDb2dPolyline", L"旧式多段线"},
                               {L"AcDb3dPolyline", L"三维多段线"},
                               {L"AcDbSpline", L"样条曲线"},
                               {L"AcDbHelix", L"螺旋线"},
                               {L"AcDbText", L"单行文字"},
                               {L"AcDbMText", L"多行文字"},
                               {L"AcDbAttributeDefinition", L"属性定义"},
                               {L"AcDbBlockReference", L"图块"},
                               {L"AcDbHatch", L"图案填充"},
                               {L"AcDbSolid", L"实心面"},
                               {L"AcDbFace", L"三维面"},
                               {L"AcDbPolyFaceMesh", L"多面网格"},
                               {L"AcDbPolygonMesh", L"多边形网格"},
                               {L"AcDbSubDMesh", L"细分网格"},
                               {L"AcDb3dSolid", L"三维实体"},
                               {L"AcDbRegion", L"面域"},
                               {L"AcDbMline", L"多线"},
                               {L"AcDbLeader", L"引线"},
                               {L"AcDbDimension", L"标注"},
                               {L"AcDbRasterImage", L"光栅图像"},
                               {L"AcDbViewport", L"视口"}};

namespace apps = corvane::RegisteredAppNames;
struct Feature {
    const wchar_t* application;
    const wchar_t* command; // its global name
};
constexpr Feature kFeatures[] = {{apps::kArrayOneCurve, L"SCVN_ArrayAlignCurve"},
                                 {apps::kArrayTwoCurves, L"SCVN_ArrayAlignDoubleCurve"},
                                 {apps::kArrayThreeCurves, L"SCVN_ArrayAlignThreeCurve"},
                                 {apps::kWave, L"SCVN_WaveAlignCurve"},
                                 {apps::kWeave, L"SCVN_SplinAlignMultiCurve"},
                                 {apps::kBlend, L"SCVN_PLBLENDS"},
                                 {apps::kNumbering, L"SCVN_NumberPL"},
                                 {apps::kRigidTiles, L"SCVN_tileRigidity"},
                                 {apps::kImageHoleNet, L"SCVN_ImageHoleNet"},
                                 {apps::kImageAffect, L"SCVN_imgAffect"},
                                 {apps::kReliefLines, L"SCVN_ParaHatch"},
                                 {apps::kScatterOnCurves, L"SCVN_rndScatter1"},
                                 {apps::kScatterInRegions, L"SCVN_rndScatter2"},
                                 {apps::kCurveTransform, L"SCVN_CurveTransform"}};

// Objects by kind. There may be very many, so that classes are counted and named at the end.
class KindCount {
public:
    void add(const AcDbEntity& entity) {
        if (entity.isA() != last_) last_ = entity.isA(), row_ = rowOf(last_);
        row_ ? ++known_[row_] : ++others_[entity.dxfName()];
    }
    QStringList told(bool single) const {
        std::map<QString, int> named;
        for (const auto& [row, count] : known_) named[say(row->name)] = count;
        for (const auto& [name, count] : others_) named[QString::fromStdString(name)] = count;
        QStringList lines;
        for (const auto& [name, count] : named)
            lines += single ? name : QString("%1 (%2)").arg(name).arg(count);
        return lines;
    }

private:
    // Of the nearest class up the line that has a name; what has none goes by its name in files.
    static const KindName* rowOf(const AcRxClass* kind) {
        for (; kind; kind = kind->myParent())
            for (const KindName& row : kKinds)
                if (host::equalNoCase(row.className, kind->name())) return &row;
        return nullptr;
    }
    std::map<const KindName*, int> known_;
    std::map<std::string, int> others_;
    const AcRxClass* last_ = nullptr;
    const KindName* row_ = nullptr;
};

QString told(const Feature& feature) {
    const auto* stack = static_cast<AcEdCommandStack*>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
    const AcEdCommand* command = stack->lookUpCmd(feature.command);
    if (!command) return shown(feature.application);
    return shown(command->localName()) + " - " + shown(host::commandNote(*command).summary);
}

void addFeatures(const AcDbEntity& entity, std::set<const Feature*>& found) {
    const host::ResbufChain all(entity.xData());
    for (const resbuf* group = all.get(); group; group = group->rbnext)
        if (group->restype == kApplicationName && group->resval.rstring)
            for (const Feature& feature : kFeatures)
                if (host::equalNoCase(feature.application, group->resval.rstring)) found.insert(&feature);
}

// What names none is by layer.
AcDbObjectId linetypeOf(const AcDbEntity& entity) {
    return entity.linetypeId().isNull() ? entity.database()->byLayerLinetype() : entity.linetypeId();
}

template <class T> void narrow(std::optional<T>& common, const T& value, bool first) {
    if (first)
        common = value;
    else if (common != value)
        common.reset();
}

void measure(const AcDbCurve& curve, SelectionFacts& facts) {
    double end = 0, length = 0, area = 0;
    if (curve.getEndParam(end) == Acad::eOk && curve.getDistAtParam(end, length) == Acad::eOk)
        facts.length = facts.length.value_or(0) + length;
    if (curve.isClosed() && curve.getArea(area) == Acad::eOk) facts.area = facts.area.value_or(0) + area;
}

template <class Change> int changeEach(const std::vector<AcDbObjectId>& entities, Change change) {
    int locked = 0;
    for (const AcDbObjectId id : entities) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (!entity) continue;
        if (isOnLockedLayer(*entity))
            ++locked;
        else if (entity->upgradeOpen() == Acad::eOk)
            change(*entity);
    }
    return locked;
}

} // namespace

bool isOnLockedLayer(const AcDbEntity& entity) {
    AcDbObjectPointer<AcDbLayerTableRecord> layer(entity.layerId(), AcDb::kForRead);
    return layer && layer->isLocked();
}

SelectionFacts factsOf(const std::vector<AcDbObjectId>& entities) {
    SelectionFacts facts;
    KindCount kinds;
    std::set<const Feature*> features;
    for (const AcDbObjectId id : entities) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (!entity) continue;
        const bool first = facts.count++ == 0;
        kinds.add(*entity);
        narrow(facts.layer, entity->layerId(), first);
        narrow(facts.color, entity->color(), first);
        narrow(facts.linetype, linetypeOf(*entity), first);
        narrow(facts.weight, entity->lineWeight(), first);
        addFeatures(*entity, features);
        if (const auto* curve = AcDbCurve::cast(&*entity); curve && entities.size() <= kMostMeasured)
            measure(*curve, facts);
    }
    facts.kinds = kinds.told(facts.count == 1);
    for (const Feature& feature : kFeatures)
        if (features.contains(&feature)) facts.features += told(feature);
    return facts;
}

int moveToLayer(const std::vector<AcDbObjectId>& entities, AcDbObjectId layer) {
    return changeEach(entities, [&](AcDbEntity& entity) { entity.setLayer(layer); });
}
int setColor(const std::vector<AcDbObjectId>& entities, const AcCmColor& color) {
    return changeEach(entities, [&](AcDbEntity& entity) { entity.setColor(color); });
}
int setLinetype(const std::vector<AcDbObjectId>& entities, AcDbObjectId linetype) {
    return changeEach(entities, [&](AcDbEntity& entity) { entity.setLinetype(linetype); });
}

std::vector<LinetypeRow> linetypeRows(AcDbDatabase& database) {
    std::vector<LinetypeRow> rows;
    AcDbObjectPointer<AcDbLinetypeTable> table(database.linetypeTableId(), AcDb::kForRead);
    if (!table) return rows;
    for (const AcDbObjectId id : table->records()) {
        AcDbObjectPointer<AcDbLinetypeTableRecord> linetype(id, AcDb::kForRead);
        if (!linetype || linetype->isDependent()) continue;
        const bool layer = id == database.byLayerLinetype(), block = id == database.byBlockLinetype();
        rows.push_back({id, layer ? say(L"随层") : block ? say(L"随块") : shown(linetype->name())});
    }
    const auto rank = [&](const LinetypeRow& row) {
        return row.id == database.byLayerLinetype() ? 0 : row.id == database.byBlockLinetype() ? 1 : 2;
    };
    std::stable_sort(rows.begin(), rows.end(), [&](const LinetypeRow& a, const LinetypeRow& b) {
        return rank(a) != rank(b) ? rank(a) < rank(b)
                                  : rank(a) == 2 && host::compareNoCase(wide(a.name), wide(b.name)) < 0;
    });
    return rows;
}

} // namespace desk
