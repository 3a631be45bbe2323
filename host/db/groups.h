// Groups: the code-and-value pairs that drawing files are made of, as plain data. Objects take
// them in one at a time and write them to a GroupWriter; what an object doesn't know it keeps in
// a GroupList and gives back where it stood. The text and binary forms live in host/dxf.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/db/adesk.h"
#include "host/db/objectid.h"
#include "host/ge/point2d.h"
#include "host/ge/point3d.h"
#include "host/ge/vector3d.h"

namespace host {

enum class GroupType : std::uint8_t { text, real, boolean, int16, int32, int64, handle, bytes };

// The type of the value that a code carries; text for codes outside all known ranges.
GroupType groupType(int code);

// One group. Text (UTF-8) and bytes are views: valid as long as what they were read from.
struct Group {
    int code = 0;
    GroupType type = GroupType::text;
    union {
        double real;
        std::int64_t integer = 0; // booleans, integers and handles
    };
    std::string_view text; // text and bytes

    static Group ofText(int code, std::string_view value);
    static Group ofReal(int code, double value);
    static Group ofInteger(int code, std::int64_t value); // typed by the code
    static Group ofHandle(int code, std::uint64_t value);
    static Group ofBytes(int code, std::string_view value);

    std::uint64_t handle() const { return static_cast<std::uint64_t>(integer); }
    std::wstring wide() const; // the text as wide text
    bool is(int c, std::string_view t) const { return code == c && text == t; }
};
bool operator==(const Group& a, const Group& b);

// An owned sequence of groups, packed into one block of memory.
class GroupList {
public:
    class Iterator {
    public:
        Iterator(const char* at) : at_(at) {}
        Group operator*() const;
        Iterator& operator++();
        bool operator==(const Iterator&) const = default;

    private:
        const char* at_;
    };
    void append(const Group& group);
    void append(const GroupList& other) { data_ += other.data_; }
    void clear() { data_.clear(); }
    void shrink() { data_.shrink_to_fit(); }
    bool empty() const { return data_.empty(); }
    size_t bytes() const { return data_.size(); }
    Iterator begin() const { return {data_.data()}; }
    Iterator end() const { return {data_.data() + data_.size()}; }
    // The first group of that code, if there is one.
    bool find(int code, Group& out) const;
    bool operator==(const GroupList&) const = default;

private:
    std::string data_;
};

// What a drawing being read offers to its objects while they take in their groups.
class ReadContext {
public:
    virtual ~ReadContext() = default;
    AcDbDatabase* database = nullptr;
    AcDb::AcDbDwgVersion version = AcDb::kDHL_1032;
    // The subclass marker that the current group stands behind; empty before the first and in
    // files of R12 and older, which have none.
    std::string_view subclass;

    // True when the current group belongs to the class with this marker, or might (no markers).
    bool within(std::string_view marker) const { return subclass.empty() || subclass == marker; }
    // The id of a handle, also of one that stands further on in the file; null for 0.
    virtual AcDbObjectId id(std::uint64_t handle) = 0;
    // Table records by name; a missing one is made and reported (blocks become empty blocks).
    virtual AcDbObjectId layer(std::string_view name) = 0;
    virtual AcDbObjectId linetype(std::string_view name) = 0;
    virtual AcDbObjectId textStyle(std::string_view name) = 0;
    virtual AcDbObjectId block(std::string_view name) = 0;
    // A fault that was put right, in one sentence; the reader adds where it stood.
    virtual void repaired(const std::string& sentence) = 0;
};

// Takes the groups of a drawing being written, in the order of the file.
class GroupWriter {
public:
    virtual ~GroupWriter() = default;
    AcDbDatabase* database = nullptr;
    AcDb::AcDbDwgVersion version = AcDb::kDHL_1032;

    virtual void write(const Group& group) = 0;
    bool isOriginal() const; // the drawing is written in the version that it came in
    // Whether what came with that version is written: files of older versions that held it all the same
    // keep it while they stay in their version.
    bool carries(AcDb::AcDbDwgVersion since) const { return version >= since || isOriginal(); }

    void text(int code, std::string_view utf8) { write(Group::ofText(code, utf8)); }
    void text(int code, const std::wstring& wide);
    void real(int code, double value) { write(Group::ofReal(code, value)); }
    void integer(int code, std::int64_t value) { write(Group::ofInteger(code, value)); }
    // The name of a table record (layer, style, block); nothing for a null id.
    virtual void recordName(int code, AcDbObjectId record);
    void handle(int code, AcDbObjectId id) { write(Group::ofHandle(code, id.handle())); }
    void handle(int code, std::uint64_t value) { write(Group::ofHandle(code, value)); }
    // code, code + 10 and code + 20.
    void point(int code, const AcGePoint3d& p) {
        real(code, p.x), real(code + 10, p.y), real(code + 20, p.z);
    }
    void point(int code, const AcGePoint2d& p) { real(code, p.x), real(code + 10, p.y); }
    void vector(int code, const AcGeVector3d& v) {
        real(code, v.x), real(code + 10, v.y), real(code + 20, v.z);
    }
    // Extrusion directions are written when they are not the Z axis.
    void normal(int code, const AcGeVector3d& n);

    // Starts the subclass with that marker: first gives back what the object kept of the one
    // before, then writes the marker (no marker in R12 and older).
    void subclass(const char* marker);
    // Around one object: what it kept is woven in by subclass() and endObject().
    void beginObject(const GroupList* kept);
    void endObject();

private:
    void flushKept(std::string_view marker);
    const GroupList* kept_ = nullptr;
    std::string marker_;
    std::vector<std::string> written_; // the markers of this object so far
};

} // namespace host
