// Entities by the turn of their number, placed by chance with a fixed seed.
#include "benchmarks/apps/desk/mixed_drawing.h"

#include <cmath>
#include <random>

#include "host/ent/blockreference.h"
#include "host/ent/conics.h"
#include "host/ent/hatch.h"
#include "host/ent/line.h"
#include "host/ent/polyline.h"
#include "host/ent/spline.h"
#include "host/ent/text.h"

namespace deskbench {
namespace {

constexpr double kRoom = 12; // side of the square that an entity has for itself

class Planner {
public:
    Planner(AcDbDatabase& database, int count)
        : database_(database), place_(0, kRoom * std::sqrt(double(count))), size_(1, kRoom) {
        for (int i = 0; i < 5; ++i) addLayer(i);
        block_ = addBlock();
        AcDbObjectPointer<AcDbBlockTableRecord> space(database_.modelSpaceId(), AcDb::kForWrite);
        space->reserve(size_t(count));
        for (int i = 0; i < count; ++i) add(*space.object(), make(i % 20), i % 5);
    }

private:
    double size() { return size_(random_); }
    AcGePoint3d place() { return {place_(random_), place_(random_), 0}; }

    void addLayer(int i) {
        AcDbLayerTable* table = nullptr;
        database_.getLayerTable(table, AcDb::kForWrite);
        auto* layer = new AcDbLayerTableRecord;
        layer->setName((L"L" + std::to_wstring(i)).c_str());
        AcCmColor color;
        color.setColorIndex(Adesk::UInt16(i + 1));
        layer->setColor(color);
        table->add(layers_[i], layer);
        layer->close();
        table->close();
    }

    AcDbObjectId addBlock() {
        AcDbBlockTable* table = nullptr;
        database_.getBlockTable(table, AcDb::kForWrite);
        auto* record = new AcDbBlockTableRecord;
        record->setName(L"CHAIR");
        AcDbObjectId id;
        table->add(id, record);
        table->close();
        add(*record, new AcDbLine(AcGePoint3d(-1, 0, 0), AcGePoint3d(1, 0, 0)), 0);
        add(*record, new AcDbCircle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 1), 0);
        add(*record, polyline(AcGePoint3d(0, 0, 0), 5, 1, 0), 0);
        record->close();
        return id;
    }

    void add(AcDbBlockTableRecord& record, AcDbEntity* entity, int layer) {
        entity->setDatabaseDefaults(&database_);
        AcDbObjectId id;
        record.appendAcDbEntity(id, entity);
        entity->setLayer(layers_[layer]);
        entity->close();
    }

    static AcDbPolyline* polyline(const AcGePoint3d& at, int corners, double radius, double width) {
        auto* line = new AcDbPolyline;
        for (int i = 0; i < corners; ++i) {
            const double turn = i * 2.4, far = radius * (0.4 + 0.6 * i / corners);
            line->addVertexAt(unsigned(i), {at.x + far * std::cos(turn), at.y + far * std::sin(turn)},
                              i % 4 == 3 ? 0.4 : 0, width, width);
        }
        return line;
    }

    AcDbEntity* make(int kind) {
        const AcGePoint3d at = place();
        const double s = size();
        const AcGeVector3d z = AcGeVector3d::kZAxis;
        switch (kind) {
        case 0: return new AcDbCircle(at, z, s / 2);
        case 1: return new AcDbArc(at, s / 2, s, s + 2);
        case 2: return new AcDbEllipse(at, z, AcGeVector3d(s / 2, 0, 0), 0.5);
        case 3: return polyline(at, 24, s, s / 30);
        case 4:
        case 5:
        case 6: return polyline(at, 12, s, 0);
        case 7: return new AcDbText(at, L"Room 12.5", {}, s / 6);
        case 8: return spline(at, s);
        case 9: return area(at, s);
        case 10:
        case 11: return new AcDbBlockReference(at, block_);
        default: return new AcDbLine(at, at + AcGeVector3d(s * std::cos(s * 9), s * std::sin(s * 9), 0));
        }
    }

    static AcDbEntity* spline(const AcGePoint3d& at, double s) {
        AcGePoint3dArray points;
        for (int i = 0; i < 8; ++i) points.append(at + AcGeVector3d(s * i / 8, s / 4 * std::sin(i * 1.7), 0));
        return new AcDbSpline(points, 4, 0.0);
    }

    static AcDbEntity* area(const AcGePoint3d& at, double s) {
        auto* hatch = new AcDbHatch;
        AcGePoint2dArray corners;
        AcGeDoubleArray bulges;
        for (const auto& [x, y] : {std::pair{0.0, 0.0}, {s / 2, 0.0}, {s / 2, s / 3}, {0.0, s / 3}})
            corners.append(AcGePoint2d(at.x + x, at.y + y)), bulges.append(0);
        hatch->setPattern(AcDbHatch::kPreDefined, L"SOLID");
        hatch->appendLoop(AcDbHatch::kPolyline, corners, bulges);
        return hatch;
    }

    AcDbDatabase& database_;
    std::mt19937 random_{20240607};
    std::uniform_real_distribution<double> place_, size_;
    AcDbObjectId layers_[5], block_;
};

} // namespace

std::unique_ptr<AcDbDatabase> mixedDrawing(int count) {
    auto database = std::make_unique<AcDbDatabase>(true);
    database->undoLog().setRecording(false);
    Planner(*database, count);
    database->undoLog().setRecording(true);
    return database;
}

} // namespace deskbench
