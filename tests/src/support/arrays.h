// Arrays in tests: drawings with paths and objects, the blocks that array commands leave, and what stands in
// them.
#pragma once
#include "arrays/one_curve/copies.h"
#include "support/drawing.h"

namespace support {

inline std::wstring handleAnswer(AcDbObjectId id) { return L"(handent \"" + id.handle().ascii() + L"\")"; }

// A drawing for arrays along curves: prototypes and paths are added as the test needs them.
class ArrayDrawing : public Drawing {
public:
    AcDbObjectId addLine(const AcGePoint3d& from, const AcGePoint3d& to) {
        return add(std::make_unique<AcDbLine>(from, to));
    }
    AcDbObjectId addCircle(const AcGePoint3d& centre, double radius) {
        return add(std::make_unique<AcDbCircle>(centre, AcGeVector3d::kZAxis, radius));
    }
    AcDbObjectId addSpline(const std::vector<AcGePoint3d>& points) {
        return add(std::make_unique<AcDbSpline>(AcGePoint3dArray(points), 4, 0.0));
    }
    // A reference to a new block that holds the entity.
    AcDbObjectId addBlock(const wchar_t* name, AcDbEntity* content, const AcGePoint3d& at) {
        AcDbBlockTable* table = nullptr;
        database().getBlockTable(table, AcDb::kForWrite);
        auto* record = new AcDbBlockTableRecord;
        record->setName(name);
        AcDbObjectId block, id;
        table->add(block, record);
        table->close();
        content->setDatabaseDefaults(&database());
        record->appendAcDbEntity(id, content);
        content->close();
        record->close();
        return add(std::make_unique<AcDbBlockReference>(at, block));
    }
    // The references to anonymous blocks in model space.
    std::vector<AcDbObjectId> arrays() const {
        std::vector<AcDbObjectId> found;
        for (const AcDbObjectId id : entities()) {
            AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForRead);
            if (!reference) continue;
            AcDbObjectPointer<AcDbBlockTableRecord> block(reference->blockTableRecord(), AcDb::kForRead);
            if (block && block->isAnonymous()) found.push_back(id);
        }
        return found;
    }
    AcDbObjectId array() const {
        const auto all = arrays();
        EXPECT_EQ(1u, all.size());
        return all.empty() ? AcDbObjectId() : all.back();
    }
};

// The entities of an array as the drawing shows them, in their order.
template <class Entity> std::vector<std::unique_ptr<Entity>> contentsOf(AcDbObjectId array) {
    std::vector<std::unique_ptr<Entity>> shown;
    AcDbObjectPointer<AcDbBlockReference> reference(array, AcDb::kForRead);
    if (!reference) return shown;
    AcDbObjectPointer<AcDbBlockTableRecord> block(reference->blockTableRecord(), AcDb::kForRead);
    for (const AcDbObjectId id : block->entities()) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        AcDbEntity* copy = nullptr;
        EXPECT_EQ(Acad::eOk, entity->getTransformedCopy(reference->blockTransform(), copy));
        if (Entity::cast(copy))
            shown.emplace_back(static_cast<Entity*>(copy));
        else
            delete copy;
    }
    return shown;
}

// The middles of the boxes of what an array shows.
inline std::vector<AcGePoint3d> middlesOf(AcDbObjectId array) {
    std::vector<AcGePoint3d> all;
    for (const auto& entity : contentsOf<AcDbEntity>(array)) {
        AcDbExtents box;
        EXPECT_EQ(Acad::eOk, entity->getGeomExtents(box));
        all.push_back(box.minPoint() + (box.maxPoint() - box.minPoint()) / 2);
    }
    return all;
}

inline corvane::ArrayRecord recordOf(AcDbObjectId array) {
    const auto record = corvane::DecodeArray(corvane::ReadArrayPayload(array, corvane::kArrayAlongCurve));
    EXPECT_TRUE(record);
    return record.value_or(corvane::ArrayRecord());
}

inline void expectAt(const AcGePoint3d& expected, const AcGePoint3d& point, const std::string& caption = {}) {
    EXPECT_NEAR(0, (expected - point).length(), 1e-6)
        << caption << " " << point.x << "," << point.y << "," << point.z;
}

// AAC on path and object, the answers behind them, OK.
inline std::string runArray(ArrayDrawing& drawing, AcDbObjectId path, AcDbObjectId object,
                            const std::wstring& answers) {
    return drawing.run(L"AAC\n" + handleAnswer(path) + L"\n" + handleAnswer(object) + L"\n" + answers +
                       L"\nOK\n");
}

} // namespace support
