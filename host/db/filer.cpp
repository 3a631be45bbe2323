// The filers behind AcDbDwgFiler and AcDbDxfFiler: one in memory, one over an object's groups, one
// onto a file being written.
#include "host/db/filer.h"

#include <cmath>

#include "host/db/chain.h"
#include "host/os/text.h"

namespace host {

namespace {
bool finite(double v) { return std::isfinite(v); }
template <class P> bool finite3(const P& p) { return finite(p.x) && finite(p.y) && finite(p.z); }
} // namespace

Acad::ErrorStatus MemoryFiler::writeItem(const ACHAR* text) {
    return items_.emplace_back(std::wstring(text ? text : L"")), Acad::eOk;
}
Acad::ErrorStatus MemoryFiler::writeItem(double value) { return items_.emplace_back(value), Acad::eOk; }
Acad::ErrorStatus MemoryFiler::writeItem(Adesk::Int16 value) {
    return items_.emplace_back(std::int64_t(value)), Acad::eOk;
}
Acad::ErrorStatus MemoryFiler::writeItem(Adesk::Int32 value) {
    return items_.emplace_back(std::int64_t(value)), Acad::eOk;
}
Acad::ErrorStatus MemoryFiler::writeItem(Adesk::Int64 value) { return items_.emplace_back(value), Acad::eOk; }
Acad::ErrorStatus MemoryFiler::writeItem(bool value) { return items_.emplace_back(value), Acad::eOk; }
Acad::ErrorStatus MemoryFiler::writeItem(const AcDbObjectId& id) {
    return items_.emplace_back(id), Acad::eOk;
}
Acad::ErrorStatus MemoryFiler::writeItem(const AcGePoint3d& point) {
    return items_.emplace_back(point), Acad::eOk;
}
Acad::ErrorStatus MemoryFiler::writeItem(const AcGeVector3d& vector) {
    return items_.emplace_back(vector), Acad::eOk;
}

// The next item, which must be of the type asked for; else the filer stays at fault until reset.
template <class T> Acad::ErrorStatus MemoryFiler::take(T& out) {
    if (status_ != Acad::eOk) return status_;
    if (next_ >= items_.size()) return status_ = Acad::eEndOfFile;
    const T* value = std::get_if<T>(&items_[next_]);
    if (!value) return status_ = Acad::eFilerError;
    out = *value;
    ++next_;
    return Acad::eOk;
}

Acad::ErrorStatus MemoryFiler::readItem(std::wstring& text) { return take(text); }
Acad::ErrorStatus MemoryFiler::readItem(ACHAR** text) {
    std::wstring value;
    const auto es = take(value);
    if (es == Acad::eOk) acutNewString(value.c_str(), *text);
    return es;
}
Acad::ErrorStatus MemoryFiler::readItem(double* value) { return take(*value); }
Acad::ErrorStatus MemoryFiler::readItem(Adesk::Int16* value) {
    std::int64_t wide = *value;
    const auto es = take(wide);
    *value = static_cast<Adesk::Int16>(wide);
    return es;
}
Acad::ErrorStatus MemoryFiler::readItem(Adesk::Int32* value) {
    std::int64_t wide = *value;
    const auto es = take(wide);
    *value = static_cast<Adesk::Int32>(wide);
    return es;
}
Acad::ErrorStatus MemoryFiler::readItem(Adesk::Int64* value) {
    std::int64_t wide = *value;
    const auto es = take(wide);
    *value = wide;
    return es;
}
Acad::ErrorStatus MemoryFiler::readItem(bool* value) { return take(*value); }
Acad::ErrorStatus MemoryFiler::readItem(AcDbObjectId* id) { return take(*id); }
Acad::ErrorStatus MemoryFiler::readItem(AcGePoint3d* point) { return take(*point); }
Acad::ErrorStatus MemoryFiler::readItem(AcGeVector3d* vector) { return take(*vector); }

GroupListFiler::GroupListFiler(const GroupList& groups, ReadContext& context) : context_(context) {
    for (const Group g : groups) groups_.push_back(g);
}

Acad::ErrorStatus GroupListFiler::readResBuf(resbuf* buffer) {
    if (!buffer) return status_ = Acad::eNullPtr;
    if (atEOF()) return status_ = Acad::eEndOfFile;
    previous_ = next_;
    const Group& group = groups_[next_++];
    buffer->restype = static_cast<short>(group.code);
    auto& value = buffer->resval;
    switch (resultKind(group.code)) {
    case ResultKind::point:
        value.rpoint[0] = group.real, value.rpoint[1] = value.rpoint[2] = 0;
        for (int axis = 1; axis < 3 && !atEOF() && groups_[next_].code == group.code + 10 * axis; ++axis)
            value.rpoint[axis] = groups_[next_++].real;
        break;
    case ResultKind::real: value.rreal = group.real; break;
    case ResultKind::shortInt: value.rint = static_cast<short>(group.integer); break;
    case ResultKind::longInt: value.rlong = static_cast<Adesk::Int32>(group.integer); break;
    case ResultKind::int64: value.mnInt64 = group.integer; break;
    case ResultKind::text: value.rstring = texts_.emplace_back(group.wide()).data(); break;
    case ResultKind::handle:
        value.rstring = texts_.emplace_back(AcDbHandle(group.handle()).ascii()).data();
        break;
    case ResultKind::name: {
        const AcDbObjectId id = context_.id(group.handle());
        value.rlname[0] = id.asOldId(), value.rlname[1] = std::int64_t(id.handle().value());
        break;
    }
    case ResultKind::binary:
        value.rbinary = {static_cast<short>(std::min<size_t>(group.text.size(), 32767)),
                         const_cast<char*>(group.text.data())};
        break;
    case ResultKind::none: return status_ = Acad::eInvalidDxfCode;
    }
    return Acad::eOk;
}

Acad::ErrorStatus GroupListFiler::pushBackItem() {
    next_ = previous_;
    return Acad::eOk;
}

bool GroupListFiler::atEOF() { return next_ >= groups_.size(); }

bool GroupListFiler::atSubclassData(const ACHAR* marker) {
    if (atEOF() || !marker || !groups_[next_].is(100, utf8(marker))) return false;
    previous_ = next_++;
    return true;
}

Acad::ErrorStatus GroupWriterFiler::writeItem(int code, const ACHAR* text) {
    const std::string value = utf8(text ? text : L"");
    if (code == 100)
        writer_.subclass(value.c_str());
    else if (groupType(code) == GroupType::handle)
        writer_.handle(code, AcDbHandle(text).value());
    else
        writer_.text(code, std::string_view(value));
    return Acad::eOk;
}
Acad::ErrorStatus GroupWriterFiler::writeItem(int code, double value) {
    if (!finite(value)) return Acad::eInvalidInput;
    return writer_.real(code, value), Acad::eOk;
}
Acad::ErrorStatus GroupWriterFiler::writeItem(int code, Adesk::Int16 value) {
    return writer_.integer(code, value), Acad::eOk;
}
Acad::ErrorStatus GroupWriterFiler::writeItem(int code, Adesk::Int32 value) {
    return writer_.integer(code, value), Acad::eOk;
}
Acad::ErrorStatus GroupWriterFiler::writeItem(int code, bool value) {
    return writer_.integer(code, value), Acad::eOk;
}
Acad::ErrorStatus GroupWriterFiler::writeItem(int code, const AcDbObjectId& id) {
    return writer_.handle(code, id), Acad::eOk;
}
Acad::ErrorStatus GroupWriterFiler::writeItem(int code, const AcGePoint3d& point) {
    if (!finite3(point)) return Acad::eInvalidInput;
    return writer_.point(code, point), Acad::eOk;
}
Acad::ErrorStatus GroupWriterFiler::writeItem(int code, const AcGeVector3d& vector) {
    if (!finite3(vector)) return Acad::eInvalidInput;
    return writer_.vector(code, vector), Acad::eOk;
}
Acad::ErrorStatus GroupWriterFiler::writeItem(const resbuf& group) {
    GroupList groups;
    if (!appendGroups(group, groups)) return Acad::eInvalidDxfCode;
    for (const Group g : groups) {
        if (g.code == 100)
            writer_.subclass(std::string(g.text).c_str());
        else
            writer_.write(g);
    }
    return Acad::eOk;
}

} // namespace host
