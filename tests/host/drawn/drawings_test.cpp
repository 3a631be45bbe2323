// Laws over real drawings: every kind that has a class is read into it, is drawn inside its box, and is
// written alike from its groups and from its data.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>
#include <set>

#include "host/db/capture.h"
#include "host/db/database.h"
#include "host/db/kept.h"
#include "host/dxf/dxf.h"
#include "host/ent/hatch.h"
#include "host/ent/line.h"
#include "host/ent/register.h"
#include "host/ent/text.h"
#include "host/view/collector.h"
#include "host/view/database_source.h"

using namespace host;

namespace {

std::vector<std::filesystem::path> samples() {
    std::vector<std::filesystem::path> files;
    const auto folder = std::filesystem::path(CORVANE_TEST_DATA) / "drawings";
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == ".dxf") files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

void eachDrawing(const std::function<void(AcDbDatabase&)>& visit) {
    registerEntityClasses();
    ASSERT_GE(samples().size(), 20u);
    for (const auto& path : samples()) {
        SCOPED_TRACE(path.filename().string());
        AcDbDatabase drawing(false);
        ASSERT_TRUE(readDrawing(path, drawing).ok);
        visit(drawing);
    }
}

void eachEntity(AcDbDatabase& drawing, const std::function<void(const AcDbEntity&)>& visit) {
    for (const auto& cell : drawing.cells())
        if (const auto* entity = AcDbEntity::cast(cell.object); entity && !entity->isErased()) visit(*entity);
}

// Letters and what blocks hold are measured in other ways, points without the figure that PDMODE draws for
// them.
bool isMeasuredAsDrawn(const AcDbEntity& entity) {
    return entity.referencedBlock().isNull() && !AcDbText::cast(&entity) && !AcDbMText::cast(&entity) &&
           !AcDbPoint::cast(&entity);
}

// Widths reach beyond the line that is measured.
bool isWide(const DisplayList& list) {
    return std::any_of(list.primitives.begin(), list.primitives.end(),
                       [](const DisplayPrimitive& p) { return p.kind == DisplayPrimitive::Kind::ribbon; });
}

bool holds(const AcDbExtents& outer, const AcDbExtents& inner, double slack) {
    for (unsigned axis = 0; axis < 3; ++axis)
        if (inner.minPoint()[axis] < outer.minPoint()[axis] - slack ||
            inner.maxPoint()[axis] > outer.maxPoint()[axis] + slack)
            return false;
    return true;
}

GroupList groupsOf(const AcDbEntity& entity, AcDbDatabase& drawing) {
    CapturingWriter writer;
    writer.database = &drawing;
    entity.outGroups(writer);
    return writer.groups;
}

// The same codes in the same order, numbers alike to rounding.
void expectAlike(const GroupList& a, const GroupList& b) {
    auto p = a.begin(), q = b.begin();
    for (; !(p == a.end()) && !(q == b.end()); ++p, ++q) {
        const Group x = *p, y = *q;
        ASSERT_EQ(x.code, y.code);
        if (x.type == GroupType::real)
            EXPECT_NEAR(x.real, y.real, 1e-12 * (1 + std::fabs(x.real))) << x.code;
        else
            EXPECT_TRUE(x == y) << x.code;
    }
    EXPECT_TRUE(p == a.end() && q == b.end());
}

} // namespace

TEST(DrawnDrawings, KindsWithAClassAreOfIt) {
    const std::set<std::string> known = {
        "3DFACE", "ARC",   "ARC_DIMENSION", "CIRCLE",   "DIMENSION", "ELLIPSE",    "HATCH",
        "HELIX",  "IMAGE", "INSERT",        "LINE",     "LEADER",    "LWPOLYLINE", "MESH",
        "MLINE",  "MTEXT", "POINT",         "POLYLINE", "RAY",       "SOLID",      "SPLINE",
        "TEXT",   "TRACE", "VERTEX",        "VIEWPORT", "WIPEOUT",   "XLINE"};
    std::set<std::string> seen;
    eachDrawing([&](AcDbDatabase& drawing) {
        eachEntity(drawing, [&](const AcDbEntity& entity) {
            const std::string name = entity.dxfName();
            seen.insert(name);
            const bool kept = dynamic_cast<const KeptEntity*>(&entity);
            EXPECT_FALSE(kept && known.contains(name)) << name;
        });
    });
    for (const char* name :
         {"HATCH", "DIMENSION", "MESH", "MLINE", "LEADER", "WIPEOUT", "IMAGE", "RAY", "XLINE"})
        EXPECT_TRUE(seen.contains(name)) << name;
}

TEST(DrawnDrawings, WhatIsDrawnLiesInTheBox) {
    int measured = 0;
    eachDrawing([&](AcDbDatabase& drawing) {
        eachEntity(drawing, [&](const AcDbEntity& entity) {
            AcDbExtents box;
            if (!isMeasuredAsDrawn(entity) || entity.getGeomExtents(box) != Acad::eOk) return;
            DatabaseSource source(&drawing);
            DisplayCollector collector(source);
            collector.add(entity);
            const DisplayList list = collector.take();
            if (!list.extents.isValid() || isWide(list)) return;
            EXPECT_TRUE(holds(box, list.extents, 1e-6 * box.minPoint().distanceTo(box.maxPoint())))
                << entity.dxfName() << ' ' << entity.objectId().handle();
            ++measured;
        });
    });
    EXPECT_GT(measured, 300);
}

TEST(DrawnDrawings, SpacesAreDrawnWhole) {
    eachDrawing([](AcDbDatabase& drawing) {
        for (AcDbObjectId space : {drawing.modelSpaceId(), drawing.paperSpaceId()}) {
            const DisplayList list = displaySpace(drawing, space);
            EXPECT_FALSE(list.truncated);
            for (const AcGePoint3d& p : list.points)
                ASSERT_TRUE(std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z));
        }
    });
}

TEST(DrawnDrawings, HatchesAreWrittenAlikeFromGroupsAndFromData) {
    int hatches = 0;
    eachDrawing([&](AcDbDatabase& drawing) {
        eachEntity(drawing, [&](const AcDbEntity& entity) {
            const auto* hatch = AcDbHatch::cast(&entity);
            if (!hatch) return;
            const std::unique_ptr<AcDbHatch> copy(AcDbHatch::cast(static_cast<AcDbObject*>(hatch->clone())));
            ASSERT_EQ(copy->setHatchStyle(hatch->hatchStyle()), Acad::eOk); // counts as a change
            expectAlike(groupsOf(*hatch, drawing), groupsOf(*copy, drawing));
            ++hatches;
        });
    });
    EXPECT_GT(hatches, 3);
}
