// The groups of an entity that stay as they came: kinds whose groups form nested or repeated lists keep
// them in their order, read from them what they draw, and change values in place. So a file that is read
// and written loses nothing, known or not.
#pragma once

#include <vector>

#include "host/db/entity.h"
#include "host/db/groups.h"

namespace host {

class OwnGroups {
public:
    // Takes a group behind any marker but that of all entities. `marker` is the entity's own, for files
    // without markers. False: the group isn't the entity's own.
    bool take(const Group& group, const ReadContext& context, std::string_view marker);
    // The markers with their groups; `marker` alone when there are no groups.
    void write(GroupWriter& writer, const char* marker) const;
    bool hasMarker(std::string_view marker) const;
    bool isEmpty() const { return list_.empty(); }
    void assign(GroupList list) { list_ = std::move(list); } // markers (100) included
    const GroupList& list() const { return list_; }

    // Values of the first group of that code; the fallback when there is none of that type.
    double real(int code, double fallback = 0) const;
    std::int64_t integer(int code, std::int64_t fallback = 0) const;
    std::wstring text(int code) const;
    std::uint64_t handle(int code) const;
    // The first point or vector with its X under that code; components that are missing are 0.
    AcGePoint3d point(int code, const AcGePoint3d& fallback = {}) const;
    AcGeVector3d vector(int code, const AcGeVector3d& fallback = {}) const;
    // All of them, in order. Each begins with its X.
    std::vector<AcGePoint3d> points(int code) const;
    std::vector<double> reals(int code) const;

    // Calls `change(group)` for every group but markers; it may change values, not codes or text.
    template <class Change> void edit(Change change);
    // The value of the first group of that code; appended at the end of the marker's groups else.
    void setReal(int code, double value);
    void setInteger(int code, std::int64_t value);
    void setText(int code, const std::wstring& value);
    // The first point of that code; a new one stands behind the point of the code `after`, or at the end.
    void setPoint(int code, const AcGePoint3d& value, int after);
    // Replaces the components of every point with its X under one of the codes by `image(point)`.
    template <class Image> void mapPoints(std::initializer_list<int> codes, Image image);

private:
    void set(const Group& value);
    GroupList list_;      // behind each marker (100) the groups as they came
    std::string reading_; // the marker of the last group taken
};

template <class Change> void OwnGroups::edit(Change change) {
    GroupList edited;
    for (Group group : list_) {
        if (group.code != 100) change(group);
        edited.append(group);
    }
    list_ = std::move(edited);
}

template <class Image> void OwnGroups::mapPoints(std::initializer_list<int> codes, Image image) {
    for (int code : codes) {
        std::vector<AcGePoint3d> moved = points(code);
        for (AcGePoint3d& p : moved) p = image(p);
        size_t next = 0;
        edit([&](Group& group) {
            if (group.code == code) ++next;
            if (next == 0 || next > moved.size()) return;
            if (group.code == code) group.real = moved[next - 1].x;
            if (group.code == code + 10) group.real = moved[next - 1].y;
            if (group.code == code + 20) group.real = moved[next - 1].z;
        });
    }
}

// An entity with nothing but such groups.
class GroupedEntity : public AcDbEntity {
public:
    bool inGroup(const Group& group, ReadContext& context) override;
    void outGroups(GroupWriter& writer) const override;

protected:
    virtual const char* marker() const = 0;
    Acad::ErrorStatus change(); // the door of the setters
    OwnGroups own_;
};

// Drops the picture that other programs keep in an entity's common groups; for entities that change.
void forgetKeptPicture(AcDbEntity& entity);

} // namespace host
