// What the old polylines and block references share: parts of their own (vertices, attributes)
// that are objects of the drawing, in order, closed by an end mark in files.
#pragma once
#include <memory>
#include <vector>

#include "host/db/entity.h"
#include "host/ent/curve_state.h"

class AcDbSequenceEnd;

namespace host {

// A vertex that is an object: its polyline sees by the mark that it has changed.
class VertexEntity : public AcDbEntity {
public:
    std::uint64_t mark() const { return mark_.value(); }
    std::string dxfName() const override { return "VERTEX"; }

protected:
    VertexEntity() = default;
    Acad::ErrorStatus willModify() {
        const auto es = AcDbEntity::willModify();
        return mark_.touch(), es;
    }

private:
    StateMark mark_;
};

// The parts of one whole. Until the whole joins a drawing the parts are held here; then they are
// residents owned by it.
class OwnedParts {
public:
    OwnedParts() = default;
    // Copies hold fresh copies of parts that wait, and the ids of residents.
    OwnedParts(const OwnedParts& from);
    OwnedParts& operator=(const OwnedParts& from);

    size_t size() const { return ids_.empty() ? waiting_.size() : ids_.size(); }
    // How many there are that aren't erased.
    size_t living() const;
    const std::vector<AcDbObjectId>& ids() const { return ids_; }
    const std::vector<std::unique_ptr<AcDbEntity>>& waiting() const { return waiting_; }
    // Appends behind the last part, or behind `after`. The part joins the drawing when its whole
    // has (and then stays open for write), and belongs to the whole in any case.
    AcDbObjectId append(AcDbEntity& whole, AcDbEntity* part, AcDbObjectId after = {});
    AcDbObjectId insertFirst(AcDbEntity& whole, AcDbEntity* part);
    // Behind the part with that number, counted without erased ones; the part is closed afterwards.
    void insertBehind(AcDbEntity& whole, size_t number, AcDbEntity* part);
    // Erases residents, and drops waiting parts, for which the test holds.
    template <class Test> void removeIf(Test test);
    // Takes in a part that stands in the drawing, or the end mark.
    void adopt(AcDbObjectId part);
    // The whole has joined a drawing.
    void join(AcDbEntity& whole, AcDbDatabase& database);
    void list(std::vector<AcDbObjectId>& parts) const;
    AcDbObjectId endMark() const { return end_; }
    // Calls `visit` for each part that isn't erased, opened for read.
    template <class Part, class Visit> void each(Visit visit) const;
    // The same for write; for wholes that are open for write themselves.
    template <class Part, class Visit> void eachForWrite(Visit visit) const;
    // Copies of residents become waiting parts: for clones outside the drawing.
    void detach();
    // The whole's own state with that of its parts, which are vertices.
    std::uint64_t state(std::uint64_t ownState) const;

private:
    // Files need a mark behind the last part; wholes that were made here get theirs with their first part.
    void addEndMark(AcDbEntity& whole, AcDbDatabase& database);
    std::vector<AcDbObjectId> ids_;
    std::vector<std::unique_ptr<AcDbEntity>> waiting_;
    AcDbObjectId end_;
};

template <class Part, class Visit> void OwnedParts::each(Visit visit) const {
    for (const auto& part : waiting_) visit(static_cast<const Part&>(*part));
    for (AcDbObjectId id : ids_) {
        // Straight from the cell: a whole that is open may read its parts whatever their own state.
        const AcDbObject* object = id.isNull() ? nullptr : id.cell()->object;
        if (object && !object->isErased()) visit(static_cast<const Part&>(*object));
    }
}

template <class Test> void OwnedParts::removeIf(Test test) {
    std::erase_if(waiting_, [&](const auto& part) { return test(*part); });
    for (AcDbObjectId id : std::vector<AcDbObjectId>(ids_)) {
        AcDbEntity* part = nullptr;
        if (acdbOpenObject(part, id, AcDb::kForWrite) != Acad::eOk) continue;
        if (test(*part)) part->erase();
        part->close();
    }
}

template <class Part, class Visit> void OwnedParts::eachForWrite(Visit visit) const {
    for (const auto& part : waiting_) visit(static_cast<Part&>(*part));
    for (AcDbObjectId id : ids_) {
        AcDbObject* object = nullptr;
        if (acdbOpenAcDbObject(object, id, AcDb::kForWrite) != Acad::eOk) continue;
        visit(static_cast<Part&>(*object));
        object->close();
    }
}

} // namespace host

// Walks through the ids of parts that aren't erased. The caller deletes it.
class AcDbObjectIterator {
public:
    explicit AcDbObjectIterator(std::vector<AcDbObjectId> ids, bool skipDeleted = true);
    void start(bool atBeginning = true, bool skipDeleted = true);
    bool done() const { return at_ < 0 || at_ >= long(ids_.size()); }
    void step(bool forward = true, bool skipDeleted = true);
    AcDbObjectId objectId() const { return done() ? AcDbObjectId() : ids_[size_t(at_)]; }
    AcDbEntity* entity() const; // opened for read; the caller closes it

private:
    void skip(long direction, bool skipDeleted);
    std::vector<AcDbObjectId> ids_;
    long at_ = 0;
};
