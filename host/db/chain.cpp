// Result buffers from groups and back: points are one buffer and two or three groups.
#include "host/db/chain.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "host/db/database.h"
#include "host/os/text.h"

namespace host {

namespace {

void takePoint(resbuf& buffer, const Group& first, GroupList::Iterator& at, GroupList::Iterator end) {
    buffer.resval.rpoint[0] = first.real;
    for (int axis = 1; axis < 3; ++axis) buffer.resval.rpoint[axis] = 0;
    for (int axis = 1; axis < 3 && !(at == end); ++axis, ++at) {
        const Group next = *at;
        if (next.code != first.code + 10 * axis) return;
        buffer.resval.rpoint[axis] = next.real;
    }
}

void takeBinary(resbuf& buffer, std::string_view bytes) {
    const size_t length = std::min<size_t>(bytes.size(), std::numeric_limits<short>::max());
    auto& chunk = buffer.resval.rbinary;
    chunk.clen = static_cast<short>(length);
    chunk.buf = new char[length + 1];
    std::memcpy(chunk.buf, bytes.data(), length);
}

bool isFinite(const resbuf& buffer, int count) {
    return std::all_of(buffer.resval.rpoint, buffer.resval.rpoint + count,
                       [](double v) { return std::isfinite(v); });
}

} // namespace

resbuf* takeBuffer(GroupList::Iterator& at, GroupList::Iterator end, const ResolveHandle& resolve) {
    const Group group = *at;
    ++at;
    resbuf* buffer = acutNewRb(group.code);
    auto& value = buffer->resval;
    switch (resultKind(group.code)) {
    case ResultKind::point: takePoint(*buffer, group, at, end); break;
    case ResultKind::real: value.rreal = group.real; break;
    case ResultKind::shortInt: value.rint = static_cast<short>(group.integer); break;
    case ResultKind::longInt: value.rlong = static_cast<Adesk::Int32>(group.integer); break;
    case ResultKind::int64: value.mnInt64 = group.integer; break;
    case ResultKind::text: acutNewString(group.wide().c_str(), value.rstring); break;
    case ResultKind::handle: acutNewString(AcDbHandle(group.handle()).ascii().c_str(), value.rstring); break;
    case ResultKind::name: acdbGetAdsName(value.rlname, resolve(group.handle())); break;
    case ResultKind::binary: takeBinary(*buffer, group.text); break;
    case ResultKind::none: break;
    }
    return buffer;
}

bool appendGroups(const resbuf& buffer, GroupList& groups) {
    const int code = buffer.restype;
    const auto& value = buffer.resval;
    if (code < 1 || code > 1071) return false;
    switch (resultKind(code)) {
    case ResultKind::point:
        if (!isFinite(buffer, 3)) return false;
        for (int axis = 0; axis < 3; ++axis)
            groups.append(Group::ofReal(code + 10 * axis, value.rpoint[axis]));
        return true;
    case ResultKind::real:
        if (!std::isfinite(value.rreal)) return false;
        groups.append(Group::ofReal(code, value.rreal));
        return true;
    case ResultKind::shortInt: groups.append(Group::ofInteger(code, value.rint)); return true;
    case ResultKind::longInt: groups.append(Group::ofInteger(code, value.rlong)); return true;
    case ResultKind::int64: groups.append(Group::ofInteger(code, value.mnInt64)); return true;
    case ResultKind::text:
        groups.append(Group::ofText(code, utf8(value.rstring ? value.rstring : L"")));
        return true;
    case ResultKind::handle: groups.append(Group::ofHandle(code, AcDbHandle(value.rstring))); return true;
    case ResultKind::name: {
        AcDbObjectId id;
        const bool known = acdbGetObjectId(id, value.rlname) == Acad::eOk;
        groups.append(Group::ofHandle(code, known ? Adesk::UInt64(id.handle()) : 0));
        return true;
    }
    case ResultKind::binary:
        if (value.rbinary.clen < 0 || (value.rbinary.clen > 0 && !value.rbinary.buf)) return false;
        groups.append(Group::ofBytes(code, {value.rbinary.buf, size_t(value.rbinary.clen)}));
        return true;
    case ResultKind::none: break;
    }
    return false;
}

resbuf* chainFromGroups(const GroupList& groups, AcDbDatabase* database) {
    const ResolveHandle resolve = [database](std::uint64_t handle) {
        return AcDbObjectId(database ? database->cellOf(handle, false) : nullptr);
    };
    resbuf* first = nullptr;
    resbuf** link = &first;
    for (auto at = groups.begin(), end = groups.end(); !(at == end); link = &(*link)->rbnext)
        *link = takeBuffer(at, end, resolve);
    return first;
}

bool groupsFromChain(const resbuf* chain, GroupList& groups) {
    GroupList made;
    for (; chain; chain = chain->rbnext)
        if (!appendGroups(*chain, made)) return false;
    groups.append(made);
    return true;
}

} // namespace host
