// Groups: their types by code, packed lists of them, and the weaving of kept groups into what an
// object writes.
#include "host/db/groups.h"

#include <algorithm>
#include <cstring>

#include "host/db/database.h"
#include "host/db/symboltable.h"
#include "host/os/text.h"

namespace host {

namespace {

struct CodeRange {
    int first, last;
    GroupType type;
};
// Ascending; text between and outside.
constexpr CodeRange kRanges[] = {
    {5, 5, GroupType::handle},       {10, 59, GroupType::real},      {60, 79, GroupType::int16},
    {90, 99, GroupType::int32},      {105, 105, GroupType::handle},  {110, 149, GroupType::real},
    {160, 169, GroupType::int64},    {170, 179, GroupType::int16},   {210, 239, GroupType::real},
    {270, 289, GroupType::int16},    {290, 299, GroupType::boolean}, {310, 319, GroupType::bytes},
    {320, 369, GroupType::handle},   {370, 389, GroupType::int16},   {390, 399, GroupType::handle},
    {400, 409, GroupType::int16},    {420, 429, GroupType::int32},   {440, 459, GroupType::int32},
    {460, 469, GroupType::real},     {480, 481, GroupType::handle},  {1004, 1004, GroupType::bytes},
    {1005, 1005, GroupType::handle}, {1010, 1059, GroupType::real},  {1060, 1070, GroupType::int16},
    {1071, 1071, GroupType::int32},
};

GroupType searchType(int code) {
    for (const auto& range : kRanges)
        if (code <= range.last) return code >= range.first ? range.type : GroupType::text;
    return GroupType::text;
}

constexpr int kTabled = 1072;
struct TypeTable {
    GroupType types[kTabled];
    TypeTable() {
        for (int code = 0; code < kTabled; ++code) types[code] = searchType(code);
    }
};

bool hasText(GroupType type) { return type == GroupType::text || type == GroupType::bytes; }

// In a packed list a group is its code, its type, and the value: eight bytes, or a length and text.
constexpr size_t kHead = sizeof(std::int32_t) + 1;

} // namespace

GroupType groupType(int code) {
    static const TypeTable table;
    return code >= 0 && code < kTabled ? table.types[code] : GroupType::text;
}

Group Group::ofText(int code, std::string_view value) {
    Group g;
    g.code = code, g.text = value;
    return g;
}
Group Group::ofReal(int code, double value) {
    Group g;
    g.code = code, g.type = GroupType::real, g.real = value;
    return g;
}
Group Group::ofInteger(int code, std::int64_t value) {
    Group g;
    g.code = code, g.type = groupType(code), g.integer = value;
    if (hasText(g.type) || g.type == GroupType::real) g.type = GroupType::int32;
    return g;
}
Group Group::ofHandle(int code, std::uint64_t value) {
    Group g;
    g.code = code, g.type = GroupType::handle, g.integer = static_cast<std::int64_t>(value);
    return g;
}
Group Group::ofBytes(int code, std::string_view value) {
    Group g;
    g.code = code, g.type = GroupType::bytes, g.text = value;
    return g;
}

std::wstring Group::wide() const { return host::wide(text); }

bool operator==(const Group& a, const Group& b) {
    if (a.code != b.code || a.type != b.type) return false;
    return hasText(a.type) ? a.text == b.text : a.integer == b.integer;
}

void GroupList::append(const Group& group) {
    const bool text = hasText(group.type);
    const auto length = static_cast<std::uint32_t>(text ? group.text.size() : 0);
    char head[kHead + sizeof(std::int64_t)];
    const std::int32_t code = group.code;
    std::memcpy(head, &code, sizeof code);
    head[sizeof code] = static_cast<char>(group.type);
    if (text)
        std::memcpy(head + kHead, &length, sizeof length);
    else
        std::memcpy(head + kHead, &group.integer, sizeof group.integer);
    data_.append(head, kHead + (text ? sizeof length : sizeof group.integer));
    if (text) data_.append(group.text);
}

Group GroupList::Iterator::operator*() const {
    Group g;
    std::int32_t code;
    std::memcpy(&code, at_, sizeof code);
    g.code = code;
    g.type = static_cast<GroupType>(at_[sizeof code]);
    if (hasText(g.type)) {
        std::uint32_t length;
        std::memcpy(&length, at_ + kHead, sizeof length);
        g.text = {at_ + kHead + sizeof length, length};
    } else {
        std::memcpy(&g.integer, at_ + kHead, sizeof g.integer);
    }
    return g;
}

GroupList::Iterator& GroupList::Iterator::operator++() {
    if (hasText(static_cast<GroupType>(at_[sizeof(std::int32_t)]))) {
        std::uint32_t length;
        std::memcpy(&length, at_ + kHead, sizeof length);
        at_ += kHead + sizeof length + length;
    } else {
        at_ += kHead + sizeof(std::int64_t);
    }
    return *this;
}

bool GroupList::find(int code, Group& out) const {
    for (const Group g : *this)
        if (g.code == code) return out = g, true;
    return false;
}

bool GroupWriter::isOriginal() const { return database && database->originalFileVersion() == version; }
void GroupWriter::text(int code, const std::wstring& wide) { write(Group::ofText(code, utf8(wide))); }

void GroupWriter::recordName(int code, AcDbObjectId record) {
    const AcDbObject* object = record.isNull() ? nullptr : record.cell()->object;
    if (const auto* named = dynamic_cast<const AcDbSymbolTableRecord*>(object)) text(code, named->name());
}

void GroupWriter::normal(int code, const AcGeVector3d& n) {
    if (n.x != 0 || n.y != 0 || n.z != 1) vector(code, n);
}

void GroupWriter::beginObject(const GroupList* kept) {
    kept_ = kept && !kept->empty() ? kept : nullptr;
    marker_.clear();
    written_.clear();
}

void GroupWriter::subclass(const char* marker) {
    flushKept(marker_);
    if (kept_) written_.push_back(marker_);
    marker_ = marker;
    if (version >= AcDb::kDHL_1012) text(100, std::string_view(marker_));
}

// Groups that were kept behind markers nobody wrote come last, with their markers.
void GroupWriter::endObject() {
    flushKept(marker_);
    if (kept_ && version >= AcDb::kDHL_1012) {
        written_.push_back(marker_);
        bool skipping = std::find(written_.begin(), written_.end(), "") != written_.end();
        for (const Group g : *kept_) {
            if (g.code == 100)
                skipping = std::find(written_.begin(), written_.end(), g.text) != written_.end();
            if (!skipping) write(g);
        }
    }
    kept_ = nullptr;
    marker_.clear();
}

void GroupWriter::flushKept(std::string_view marker) {
    if (!kept_ || std::find(written_.begin(), written_.end(), marker) != written_.end()) return;
    bool behind = marker.empty();
    for (const Group g : *kept_)
        if (g.code == 100)
            behind = g.text == marker;
        else if (behind)
            write(g);
}

} // namespace host
