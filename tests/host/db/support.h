// What the database's tests share: a plain entity, a rendering of a whole drawing as text, and
// listeners that write down what they hear.
#pragma once
#include <gtest/gtest.h>

#include "host/db/capture.h"
#include "host/db/database.h"
#include "host/db/kept.h"
#include "host/os/numbers.h"
#include "host/os/text.h"

#include <cmath>

// A mark at a point, as an entity kind of host/ent would be written.
class TestMark : public AcDbEntity {
    HOST_DB_CLASS(TestMark)
public:
    AcGePoint3d at() const { return at_; }
    Acad::ErrorStatus setAt(const AcGePoint3d& at) {
        if (auto es = willModify(); es != Acad::eOk) return es;
        return at_ = at, Acad::eOk;
    }
    void addPart(AcDbObjectId part) { parts_.push_back(part); }
    void ownedParts(std::vector<AcDbObjectId>& parts) const override {
        parts.insert(parts.end(), parts_.begin(), parts_.end());
    }
    void outGroups(host::GroupWriter& writer) const override {
        AcDbEntity::outGroups(writer);
        writer.subclass("TestMark");
        writer.point(10, at_);
    }

protected:
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override {
        extents.addPoint(at_);
        return Acad::eOk;
    }
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& m) override { return at_ = m * at_, Acad::eOk; }

private:
    AcGePoint3d at_;
    std::vector<AcDbObjectId> parts_;
};

inline AcDbObjectId addMark(AcDbDatabase& database, double x = 0, AcDbObjectId block = {}) {
    AcDbObjectPointer<AcDbBlockTableRecord> record(block.isNull() ? database.modelSpaceId() : block,
                                                   AcDb::kForWrite);
    auto* mark = new TestMark;
    mark->setAt({x, 0, 0});
    AcDbObjectId id;
    EXPECT_EQ(record->appendAcDbEntity(id, mark), Acad::eOk);
    mark->close();
    return id;
}

inline AcDbObjectId addLayer(AcDbDatabase& database, const wchar_t* name) {
    AcDbLayerTable* table = nullptr;
    EXPECT_EQ(database.getLayerTable(table, AcDb::kForWrite), Acad::eOk);
    auto* layer = new AcDbLayerTableRecord;
    layer->setName(name);
    AcDbObjectId id;
    EXPECT_EQ(table->add(id, layer), Acad::eOk);
    layer->close();
    table->close();
    return id;
}

inline std::string text(const host::GroupList& groups) {
    std::string out;
    for (const auto g : groups) {
        out += std::to_string(g.code) + ' ';
        if (g.type == host::GroupType::text || g.type == host::GroupType::bytes)
            out += g.text;
        else
            out += g.type == host::GroupType::real ? host::formatReal(g.real) : std::to_string(g.integer);
        out += '\n';
    }
    return out;
}

// One object as a file would have it.
inline std::string rendering(const AcDbObject& object, AcDb::AcDbDwgVersion version = AcDb::kDHL_1032) {
    host::CapturingWriter writer;
    writer.database = object.database();
    writer.version = version;
    const host::ObjectTail* tail = object.tail();
    writer.beginObject(tail ? &tail->kept : nullptr);
    object.outGroups(writer);
    writer.endObject();
    std::string out = "0 " + object.dxfName() + "\n5 " + std::to_string(object.objectId().handle()) +
                      "\n330 " + std::to_string(object.ownerId().handle()) + '\n';
    if (tail) {
        for (auto id : tail->persistentReactors) out += "reactor " + std::to_string(id.handle()) + '\n';
        out += "extension " + std::to_string(tail->extensionDictionary.handle()) + '\n';
    }
    return out + text(writer.groups) + (tail ? text(tail->xdata) : std::string());
}

// All that a file of the drawing would hold.
inline std::string rendering(const AcDbDatabase& database) {
    std::string out = "seed " + std::to_string(database.handseed()) + '\n';
    for (const auto& variable : database.header()) out += variable.name + '\n' + text(variable.value);
    for (const auto& cell : database.cells())
        if (cell.object && !cell.object->isErased()) out += rendering(*cell.object);
    for (const auto& cell : database.cells())
        if (const auto* block = AcDbBlockTableRecord::cast(cell.object))
            for (auto id : block->entities())
                if (!id.isErased())
                    out += "in " + std::to_string(cell.handle) + ' ' + std::to_string(id.handle()) + '\n';
    return out;
}

// Writes down what happens to objects, one word each.
class Diary : public AcDbObjectReactor {
public:
    std::string heard;
    void openedForModify(const AcDbObject*) override { heard += "opened "; }
    void modified(const AcDbObject*) override { heard += "modified "; }
    void modifiedXData(const AcDbObject*) override { heard += "xdata "; }
    void erased(const AcDbObject*, Adesk::Boolean erasing) override {
        heard += erasing ? "erased " : "back ";
    }
    void copied(const AcDbObject*, const AcDbObject*) override { heard += "copied "; }
    void goodbye(const AcDbObject*) override { heard += "goodbye "; }
    void cancelled(const AcDbObject*) override { heard += "cancelled "; }
    void modifyUndone(const AcDbObject* o) override { heard += o->isUndoing() ? "undone " : "wrong "; }
    void unappended(const AcDbObject*) override { heard += "unappended "; }
    void reappended(const AcDbObject*) override { heard += "reappended "; }
    void subObjModified(const AcDbObject*, const AcDbObject*) override { heard += "part "; }
    void objectClosed(const AcDbObjectId) override { heard += "closed "; }
    std::string take() { return std::exchange(heard, {}); }
};
