// Entities from rows of groups and back, and a drawing context that notes what it is handed.
#pragma once
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "host/db/capture.h"
#include "host/db/database.h"
#include "host/ent/register.h"
#include "host/gi/draw.h"
#include "host/os/text.h"

namespace kinds {

class Context : public host::ReadContext {
public:
    std::vector<std::string> repairs;
    explicit Context(AcDbDatabase* of) { database = of; }
    AcDbObjectId id(std::uint64_t handle) override {
        AcDbObjectId found;
        if (database) database->getAcDbObjectId(found, false, AcDbHandle(handle));
        return found;
    }
    AcDbObjectId layer(std::string_view name) override { return named(AcDbLayerTable::desc(), name); }
    AcDbObjectId linetype(std::string_view name) override { return named(AcDbLinetypeTable::desc(), name); }
    AcDbObjectId textStyle(std::string_view name) override { return named(AcDbTextStyleTable::desc(), name); }
    AcDbObjectId block(std::string_view name) override { return named(AcDbBlockTable::desc(), name); }
    void repaired(const std::string& sentence) override { repairs.push_back(sentence); }

private:
    AcDbObjectId named(const AcRxClass* table, std::string_view name) {
        return database ? database->find(table, host::wide(std::string(name))) : AcDbObjectId();
    }
};

// Codes and values in turn, parted by bars: "70|1|40|2.5".
inline host::GroupList groupsOf(const std::string& rows) {
    host::GroupList list;
    for (size_t at = 0; at < rows.size();) {
        const size_t bar = rows.find('|', at), end = std::min(rows.find('|', bar + 1), rows.size());
        const int code = std::stoi(rows.substr(at, bar - at));
        const std::string value = rows.substr(bar + 1, end - bar - 1);
        switch (host::groupType(code)) {
        case host::GroupType::text: list.append(host::Group::ofText(code, value)); break;
        case host::GroupType::bytes: list.append(host::Group::ofBytes(code, value)); break;
        case host::GroupType::real: list.append(host::Group::ofReal(code, std::stod(value))); break;
        case host::GroupType::handle:
            list.append(host::Group::ofHandle(code, std::stoull(value, nullptr, 16)));
            break;
        default: list.append(host::Group::ofInteger(code, std::stoll(value)));
        }
        at = end + 1;
    }
    return list;
}

// Feeds groups as a file reader does: markers set the place and aren't handed in.
inline void feed(AcDbObject& object, const host::GroupList& groups, AcDbDatabase* database = nullptr) {
    Context context(database);
    std::string marker;
    for (const host::Group group : groups) {
        if (group.code == 100) {
            marker = group.text;
            continue;
        }
        context.subclass = marker;
        EXPECT_TRUE(object.inGroup(group, context)) << "group " << group.code << " behind " << marker;
    }
    object.inDone(context);
}
template <class Entity>
std::unique_ptr<Entity> made(const std::string& rows, AcDbDatabase* database = nullptr) {
    host::registerEntityClasses();
    auto entity = std::make_unique<Entity>();
    feed(*entity, groupsOf(rows), database);
    return entity;
}

inline host::GroupList written(const AcDbObject& object, AcDbDatabase* database = nullptr) {
    host::CapturingWriter writer;
    writer.database = database;
    object.outGroups(writer);
    return writer.groups;
}

// The groups behind those of all entities, one a line, for comparing.
inline std::string rowsOf(const AcDbObject& object, AcDbDatabase* database = nullptr) {
    std::string out;
    bool own = false;
    for (const host::Group group : written(object, database)) {
        if (group.code == 100) own = group.text != "AcDbEntity";
        if (!own) continue;
        if (!out.empty()) out += '|';
        out += std::to_string(group.code) + '|';
        if (group.type == host::GroupType::text) {
            out += group.text;
        } else if (group.type == host::GroupType::real) {
            char digits[32];
            std::snprintf(digits, sizeof digits, "%.10g", group.real);
            out += digits;
        } else if (group.type == host::GroupType::handle) {
            char digits[32];
            std::snprintf(digits, sizeof digits, "%llX", static_cast<unsigned long long>(group.integer));
            out += digits;
        } else {
            out += std::to_string(group.integer);
        }
    }
    return out;
}

// Lines and filled contours in model coordinates.
class Sketch : public AcGiWorldDraw, public AcGiWorldGeometry {
public:
    std::vector<std::vector<AcGePoint3d>> lines;
    std::vector<std::vector<std::vector<AcGePoint3d>>> areas; // of contours each
    std::vector<std::pair<AcGePoint3d, AcGePoint3d>> rays, xlines;
    mutable host::StoredTraits traits;

    explicit Sketch(const AcDbEntity& entity) { entity.worldDraw(this); }
    AcDbExtents extents() const {
        AcDbExtents box;
        for (const auto& line : lines)
            for (const AcGePoint3d& p : line) box.addPoint(p);
        for (const auto& area : areas)
            for (const auto& contour : area)
                for (const AcGePoint3d& p : contour) box.addPoint(p);
        return box;
    }
    double length() const {
        double sum = 0;
        for (const auto& line : lines)
            for (size_t i = 1; i < line.size(); ++i) sum += line[i - 1].distanceTo(line[i]);
        return sum;
    }

    AcGiRegenType regenType() const override { return kAcGiStandardDisplay; }
    Adesk::Boolean regenAbort() const override { return false; }
    AcGiSubEntityTraits& subEntityTraits() const override { return traits; }
    Adesk::Boolean isDragging() const override { return false; }
    double deviation(AcGiDeviationType, const AcGePoint3d&) const override { return 1e-4; }
    Adesk::UInt32 numberOfIsolines() const override { return 4; }
    AcGiContext* context() override { return nullptr; }
    AcGiWorldGeometry& geometry() const override { return const_cast<Sketch&>(*this); }

    void getModelToWorldTransform(AcGeMatrix3d& matrix) const override {
        matrix = stack_.empty() ? AcGeMatrix3d::kIdentity : stack_.back();
    }
    Adesk::Boolean pushModelTransform(const AcGeMatrix3d& matrix) override {
        stack_.push_back((stack_.empty() ? AcGeMatrix3d::kIdentity : stack_.back()) * matrix);
        return true;
    }
    using AcGiWorldGeometry::pushModelTransform;
    Adesk::Boolean popModelTransform() override { return stack_.pop_back(), true; }
    Adesk::Boolean polyline(Adesk::UInt32 count, const AcGePoint3d* points, const AcGeVector3d*,
                            Adesk::GsMarker) override {
        lines.push_back(placed(points, count));
        return false;
    }
    Adesk::Boolean polygon(Adesk::UInt32 count, const AcGePoint3d* points) override {
        areas.push_back({placed(points, count)});
        return false;
    }
    Adesk::Boolean polyPolygon(Adesk::UInt32 loops, const Adesk::UInt32* counts,
                               const AcGePoint3d* points) override {
        areas.emplace_back();
        for (Adesk::UInt32 i = 0; i < loops; points += counts[i++])
            areas.back().push_back(placed(points, counts[i]));
        return false;
    }
    Adesk::Boolean ray(const AcGePoint3d& a, const AcGePoint3d& b) override {
        return rays.push_back({a, b}), false;
    }
    Adesk::Boolean xline(const AcGePoint3d& a, const AcGePoint3d& b) override {
        return xlines.push_back({a, b}), false;
    }
    Adesk::Boolean draw(const AcGiDrawable* drawable) override { return drawable->worldDraw(this), false; }

private:
    std::vector<AcGePoint3d> placed(const AcGePoint3d* points, size_t count) const {
        std::vector<AcGePoint3d> out(points, points + count);
        if (!stack_.empty())
            for (AcGePoint3d& p : out) p = stack_.back() * p;
        return out;
    }
    std::vector<AcGeMatrix3d> stack_;
};

inline void expectPoint(const AcGePoint3d& found, const AcGePoint3d& wanted, double within = 1e-9) {
    EXPECT_LE(found.distanceTo(wanted), within)
        << found.x << ' ' << found.y << ' ' << found.z << " instead of " << wanted.x << ' ' << wanted.y << ' '
        << wanted.z;
}
inline void expectBox(const AcDbExtents& box, const AcGePoint3d& low, const AcGePoint3d& high,
                      double within = 1e-9) {
    expectPoint(box.minPoint(), low, within);
    expectPoint(box.maxPoint(), high, within);
}
inline AcDbExtents boxOf(const AcDbEntity& entity) {
    AcDbExtents box;
    EXPECT_EQ(entity.getGeomExtents(box), Acad::eOk);
    return box;
}

} // namespace kinds
