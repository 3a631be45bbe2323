// Blends in tests: a drawing with the module's classes, what stands in it, and the same drawing opened anew.
#pragma once
#include "assoc/blend/blend.h"
#include "support/drawing.h"

namespace support {

// Where the copies of a reference to a block of splines pass, in world coordinates: their fit points.
using CopyPoints = std::vector<std::vector<AcGePoint3d>>;

class BlendDrawing : public Drawing {
public:
    BlendDrawing() { corvane::LoadBlends(); }

    AcDbObjectId addLine(double x0, double y0, double x1, double y1) {
        return add(std::make_unique<AcDbLine>(AcGePoint3d(x0, y0, 0), AcGePoint3d(x1, y1, 0)));
    }
    // Two parallel lines of length 60 at y = 0 and y = 30, both drawn from the left.
    void addTwoLines() { first = addLine(0, 0, 60, 0), second = addLine(0, 30, 60, 30); }
    // A blend of them, picked near their left ends.
    AcDbObjectId blendTwoLines(const std::wstring& count = L"2", const std::wstring& accel = L"0") {
        addTwoLines();
        run(L"PLBLENDS\n10,0\n10,30\n\n" + count + L"\n" + accel + L"\n");
        return blend();
    }
    // The last block reference of model space; null when there is none.
    AcDbObjectId blend() const { return lastReference(database()); }

    AcDbObjectId first, second;

    static AcDbObjectId lastReference(AcDbDatabase& database) {
        AcDbObjectId found;
        AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForRead);
        for (const AcDbObjectId id : space->entities())
            if (!id.isErased() && id.objectClass()->isDerivedFrom(AcDbBlockReference::desc())) found = id;
        return found;
    }
};

inline CopyPoints copiesOf(AcDbObjectId reference) {
    CopyPoints copies;
    AcDbObjectPointer<AcDbBlockReference> opened(reference, AcDb::kForRead);
    if (!opened) return copies;
    AcDbObjectPointer<AcDbBlockTableRecord> block(opened->blockTableRecord(), AcDb::kForRead);
    for (const AcDbObjectId id : block->entities()) {
        if (id.isErased()) continue;
        AcDbObjectPointer<AcDbSpline> spline(id, AcDb::kForRead);
        auto& points = copies.emplace_back(size_t(spline->numFitPoints()));
        for (int i = 0; i < spline->numFitPoints(); ++i) {
            spline->getFitPointAt(i, points[size_t(i)]);
            points[size_t(i)].transformBy(opened->blockTransform());
        }
    }
    return copies;
}

// A drawing from its bytes, as a second run of the program finds it: nothing in memory knows of its blends.
class Reopened {
public:
    explicit Reopened(const std::string& bytes) {
        corvane::BlendAssociation().Detach();
        auto database = std::make_unique<AcDbDatabase>(false);
        host::readDrawingBytes(bytes, "reopened", *database);
        document_ = acDocManagerPtr()->add(std::move(database));
    }
    ~Reopened() { acDocManagerPtr()->close(document_); }
    Reopened(const Reopened&) = delete;
    Reopened& operator=(const Reopened&) = delete;
    AcDbDatabase& database() const { return *document_->database(); }
    AcApDocument* document() const { return document_; }
    AcDbObjectId blend() const { return BlendDrawing::lastReference(database()); }
    // The object of the same handle.
    AcDbObjectId same(AcDbObjectId other) const {
        AcDbObjectId id;
        database().getAcDbObjectId(id, false, other.handle());
        return id;
    }

private:
    AcApDocument* document_;
};

} // namespace support
