// What lies at a point, in a window or along a fence, by what entities draw.
#include <algorithm>
#include <cmath>

#include "host/ed/prompting.h"
#include "host/ed/sysvars.h"
#include "host/ge/polygon2d.h"
#include "host/os/numbers.h"
#include "host/view/collector.h"
#include "host/view/database_source.h"

namespace host {
namespace {

AcDbDatabase* database() { return acdbHostApplicationServices()->workingDatabase(); }

// The strokes of one entity in display coordinates, its texts as boxes.
struct Strokes {
    std::vector<std::vector<AcGePoint2d>> paths;
    AcDbExtents2d box;
};

class Tracer {
public:
    Tracer() : source_(database()), collector_(source_, options()), view_(surroundings().view) {}

    AcGePoint2d seen(const AcGePoint3d& world) const {
        const auto point = view_.seen(world);
        return point ? AcGePoint2d(point->x, point->y) : AcGePoint2d(1e300, 1e300);
    }
    // The box of the entity in display coordinates, from its extents alone; false when it has none.
    bool box(const AcDbEntity& entity, AcDbExtents2d& out) const {
        AcDbExtents world;
        if (entity.getGeomExtents(world) != Acad::eOk) return false;
        for (unsigned corner = 0; corner < 8; ++corner)
            out.addPoint(seen({(corner & 1 ? world.maxPoint() : world.minPoint()).x,
                               (corner & 2 ? world.maxPoint() : world.minPoint()).y,
                               (corner & 4 ? world.maxPoint() : world.minPoint()).z}));
        return true;
    }
    Strokes strokes(const AcDbEntity& entity) {
        collector_.add(entity, entity.objectId());
        const DisplayList list = collector_.take();
        Strokes result;
        for (const DisplayPrimitive& p : list.primitives) {
            if (p.kind == DisplayPrimitive::Kind::text) {
                addText(list, list.texts[p.first], result);
                continue;
            }
            for (std::uint32_t c = p.first; c < p.first + p.count; ++c)
                addPath(list.contour(c), p.kind != DisplayPrimitive::Kind::line, result);
        }
        return result;
    }

private:
    static DisplayOptions options() {
        DisplayOptions o;
        o.chordError = std::max(surroundings().view.height / 4000, 1e-9);
        return o;
    }
    void addPath(std::span<const AcGePoint3d> points, bool closed, Strokes& out) const {
        std::vector<AcGePoint2d> path;
        for (const AcGePoint3d& p : points) path.push_back(seen(p));
        if (closed && path.size() > 1) path.push_back(path.front());
        for (const AcGePoint2d& p : path) out.box.addPoint(p);
        if (!path.empty()) out.paths.push_back(std::move(path));
    }
    void addText(const DisplayList& list, const DisplayText& text, Strokes& out) const {
        const auto measure = textMetrics()->measure(list.faces[text.face], 1.0, text.text);
        const AcGeVector3d across = text.right * measure.advance;
        const AcGePoint3d corners[] = {text.origin, text.origin + across, text.origin + across + text.up,
                                       text.origin + text.up};
        addPath(corners, true, out);
    }

    DatabaseSource source_;
    DisplayCollector collector_;
    ViewFrame view_;
};

double distanceToSegment(const AcGePoint2d& p, const AcGePoint2d& a, const AcGePoint2d& b) {
    const AcGeVector2d along = b - a;
    const double squared = along.x * along.x + along.y * along.y;
    double t = squared > 0 ? ((p.x - a.x) * along.x + (p.y - a.y) * along.y) / squared : 0;
    t = std::clamp(t, 0.0, 1.0);
    return std::hypot(p.x - a.x - t * along.x, p.y - a.y - t * along.y);
}

double distanceTo(const Strokes& strokes, const AcGePoint2d& p) {
    double best = 1e300;
    for (const auto& path : strokes.paths) {
        best = std::min(best, p.distanceTo(path.front()));
        for (size_t i = 1; i < path.size(); ++i)
            best = std::min(best, distanceToSegment(p, path[i - 1], path[i]));
    }
    return best;
}

double side(const AcGePoint2d& a, const AcGePoint2d& b, const AcGePoint2d& p) {
    return (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
}
bool between(const AcGePoint2d& a, const AcGePoint2d& b, const AcGePoint2d& p) {
    return std::min(a.x, b.x) <= p.x && p.x <= std::max(a.x, b.x) && std::min(a.y, b.y) <= p.y &&
           p.y <= std::max(a.y, b.y);
}
bool cross(const AcGePoint2d& a, const AcGePoint2d& b, const AcGePoint2d& c, const AcGePoint2d& d) {
    const double s1 = side(a, b, c), s2 = side(a, b, d), s3 = side(c, d, a), s4 = side(c, d, b);
    if (((s1 > 0) != (s2 > 0)) && ((s3 > 0) != (s4 > 0)) && s1 != 0 && s2 != 0 && s3 != 0 && s4 != 0)
        return true;
    return (s1 == 0 && between(a, b, c)) || (s2 == 0 && between(a, b, d)) || (s3 == 0 && between(c, d, a)) ||
           (s4 == 0 && between(c, d, b));
}

bool crosses(const Strokes& strokes, const std::vector<AcGePoint2d>& line, bool closed) {
    for (const auto& path : strokes.paths)
        for (size_t i = 1; i < path.size(); ++i)
            for (size_t j = closed ? 0 : 1; j < line.size(); ++j)
                if (cross(path[i - 1], path[i], line[j == 0 ? line.size() - 1 : j - 1], line[j])) return true;
    return false;
}
bool overlap(const AcDbExtents2d& a, const AcDbExtents2d& b) {
    return a.minPoint().x <= b.maxPoint().x && b.minPoint().x <= a.maxPoint().x &&
           a.minPoint().y <= b.maxPoint().y && b.minPoint().y <= a.maxPoint().y;
}

bool onVisibleLayer(const AcDbEntity& entity) {
    const AcDbObjectId id = entity.layerId();
    const auto* layer = id.isValid() ? AcDbLayerTableRecord::cast(id.cell()->object) : nullptr;
    return entity.visibility() == AcDb::kVisible && (!layer || (!layer->isOff() && !layer->isFrozen()));
}

// Calls `visit` with each entity of the current space that is shown.
template <class Visit> void eachShown(Visit visit) {
    if (!database()) return;
    AcDbObjectPointer<AcDbBlockTableRecord> space(database()->currentSpaceId(), AcDb::kForRead);
    if (!space) return;
    for (const AcDbObjectId id : space->entities()) {
        const AcDbEntity* entity = id.isValid() ? AcDbEntity::cast(id.cell()->object) : nullptr;
        if (entity && !entity->isErased() && onVisibleLayer(*entity)) visit(*entity);
    }
}

// Those whose strokes pass the test; entities whose box is clear of the region are not drawn for it.
template <class Test>
std::vector<AcDbObjectId> select(const std::vector<AcGePoint2d>& region, Test test, Tracer& tracer) {
    AcDbExtents2d around;
    for (const AcGePoint2d& p : region) around.addPoint(p);
    std::vector<AcDbObjectId> found;
    eachShown([&](const AcDbEntity& entity) {
        AcDbExtents2d box;
        if (tracer.box(entity, box) && !overlap(box, around)) return;
        const Strokes strokes = tracer.strokes(entity);
        if (!strokes.paths.empty() && test(strokes)) found.push_back(entity.objectId());
    });
    return found;
}

std::vector<AcGePoint2d> flat(const std::vector<AcGePoint3d>& points, const Tracer& tracer) {
    std::vector<AcGePoint2d> out;
    for (const AcGePoint3d& p : points) out.push_back(tracer.seen(p));
    return out;
}

} // namespace

double pickTolerance() {
    const auto number = [](const wchar_t* name) {
        return parseReal(std::wstring_view(systemVariableText(*findSystemVariable(name)))).value_or(0);
    };
    constexpr double kScreenHeight = 1080; // the pick box counts pixels of a plain screen
    return number(L"PICKBOX") / kScreenHeight * surroundings().view.height;
}

AcDbObjectId entityAt(const AcGePoint3d& world, double tolerance) {
    Tracer tracer;
    const AcGePoint2d p = tracer.seen(world);
    AcDbObjectId best;
    double nearest = tolerance;
    eachShown([&](const AcDbEntity& entity) {
        AcDbExtents2d box;
        if (tracer.box(entity, box) &&
            (p.x < box.minPoint().x - tolerance || p.x > box.maxPoint().x + tolerance ||
             p.y < box.minPoint().y - tolerance || p.y > box.maxPoint().y + tolerance))
            return;
        const Strokes strokes = tracer.strokes(entity);
        const double distance = strokes.paths.empty() ? 1e300 : distanceTo(strokes, p);
        if (distance <= nearest) best = entity.objectId(), nearest = distance;
    });
    return best;
}

bool seenInside(const std::vector<AcGePoint3d>& worldPolygon, const AcGePoint3d& world) {
    const Tracer tracer;
    const std::vector<AcGePoint2d> polygon = flat(worldPolygon, tracer), point = flat({world}, tracer);
    return polygon.size() > 2 && point.size() == 1 && polygonHolds(polygon, point.front());
}

std::vector<AcDbObjectId> entitiesIn(const std::vector<AcGePoint3d>& worldPolygon, bool crossing) {
    Tracer tracer;
    const std::vector<AcGePoint2d> polygon = flat(worldPolygon, tracer);
    if (polygon.size() < 3) return {};
    return select(
        polygon,
        [&](const Strokes& strokes) {
            const bool cut = crosses(strokes, polygon, true);
            if (crossing) return cut || polygonHolds(polygon, strokes.paths.front().front());
            return !cut && std::all_of(strokes.paths.begin(), strokes.paths.end(),
                                       [&](const auto& path) { return polygonHolds(polygon, path.front()); });
        },
        tracer);
}

std::vector<AcDbObjectId> entitiesAlong(const std::vector<AcGePoint3d>& worldPath) {
    Tracer tracer;
    const std::vector<AcGePoint2d> line = flat(worldPath, tracer);
    if (line.size() < 2) return {};
    return select(
        line, [&](const Strokes& strokes) { return crosses(strokes, line, false); }, tracer);
}

std::optional<AcGePoint3d> snapPoint(int snapBit, const AcGePoint3d& world) {
    static constexpr std::pair<int, AcDb::OsnapMode> kModes[] = {
        {1, AcDb::kOsModeEnd},    {2, AcDb::kOsModeMid},   {4, AcDb::kOsModeCen},
        {8, AcDb::kOsModeNode},   {16, AcDb::kOsModeQuad}, {64, AcDb::kOsModeIns},
        {128, AcDb::kOsModePerp}, {256, AcDb::kOsModeTan}, {512, AcDb::kOsModeNear}};
    AcDbObjectPointer<AcDbEntity> entity(entityAt(world, 4 * pickTolerance()), AcDb::kForRead);
    if (!entity) return std::nullopt;
    const AcGePoint3d last = ucsToWorld(pointFrame().last);
    AcGePoint3dArray points;
    for (const auto& [bit, mode] : kModes)
        if (snapBit & bit) entity->getOsnapPoints(mode, world, last, points);
    if (snapBit & 32) {
        // Intersections are made with whatever else passes by.
        eachShown([&](const AcDbEntity& other) {
            if (other.objectId() != entity->objectId())
                entity->intersectWith(&other, AcDb::kOnBothOperands, points);
        });
    }
    if (points.isEmpty()) return std::nullopt;
    return *std::min_element(points.begin(), points.end(), [&](const AcGePoint3d& a, const AcGePoint3d& b) {
        return a.distanceTo(world) < b.distanceTo(world);
    });
}

} // namespace host
