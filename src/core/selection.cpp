// Selection by kind, and services on what is selected.
#include "core/selection.h"

#include <sstream>
#include <utility>

#include "core/messages.h"
#include "core/sysvar_stack.h"
#include "core/xdata.h"

namespace corvane {
namespace {

// The names of the kinds, parted by blanks.
std::wstring_view namesOf(CurveFilter kinds) {
    switch (kinds) {
    case CurveFilter::polylines: return L"POLYLINE LWPOLYLINE";
    case CurveFilter::allCurvesWithoutHelix: return L"POLYLINE LWPOLYLINE LINE ELLIPSE CIRCLE ARC SPLINE";
    case CurveFilter::conicsAndSplines: return L"ELLIPSE CIRCLE HELIX ARC SPLINE";
    case CurveFilter::text: return L"TEXT MTEXT";
    case CurveFilter::curvesAndBlocks:
        return L"POLYLINE LWPOLYLINE LINE ELLIPSE CIRCLE HELIX ARC SPLINE INSERT";
    case CurveFilter::allCurves: break;
    }
    return L"POLYLINE LWPOLYLINE LINE ELLIPSE CIRCLE HELIX ARC SPLINE";
}

resbuf* filterOf(std::wstring_view kinds) {
    resbuf* head = TextGroup(-4, L"<or");
    resbuf* tail = head;
    std::wstring name;
    for (std::wistringstream names{std::wstring(kinds)}; names >> name;)
        tail = tail->rbnext = TextGroup(0, name.c_str());
    tail->rbnext = TextGroup(-4, L"or>");
    return head;
}

void addExtents(AcDbExtents& extents, AcDbObjectId id) {
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    AcDbExtents own;
    if (entity && entity->getGeomExtents(own) == Acad::eOk) extents.addExt(own);
}

} // namespace

resbuf* BuildFilter(CurveFilter kinds) { return filterOf(namesOf(kinds)); }

CommandFrame::CommandFrame() {
    SetSysVarInt(L"CMDECHO", 0);
    SetSysVarInt(L"PICKSTYLE", GetSysVarInt(L"PICKSTYLE") | 1);
}
CommandFrame::~CommandFrame() { SetSysVarInt(L"CMDECHO", 1); }

SelectionSet::~SelectionSet() { free(); }
SelectionSet::SelectionSet(SelectionSet&& other) noexcept { *this = std::move(other); }
SelectionSet& SelectionSet::operator=(SelectionSet&& other) noexcept {
    if (this == &other) return *this;
    free();
    ads_name_set(other.name_, name_);
    length_ = std::exchange(other.length_, 0);
    other.name_[0] = other.name_[1] = 0;
    return *this;
}
void SelectionSet::free() {
    if (name_[0] || name_[1]) acedSSFree(name_);
}

SelectionSet SelectionSet::Ask(const wchar_t* prompt, CurveFilter kinds, const wchar_t* nothing,
                               Purpose purpose) {
    const host::ResbufChain filter(BuildFilter(kinds));
    return ask(prompt, filter.get(), nothing, purpose);
}
SelectionSet SelectionSet::AskKinds(const wchar_t* prompt, std::wstring_view kinds, const wchar_t* nothing,
                                    Purpose purpose) {
    const host::ResbufChain filter(filterOf(kinds));
    return ask(prompt, filter.get(), nothing, purpose);
}
SelectionSet SelectionSet::AskAny(const wchar_t* prompt, const wchar_t* nothing) {
    return ask(prompt, nullptr, nothing, Purpose::look);
}

SelectionSet SelectionSet::Of(const std::vector<AcDbObjectId>& ids) {
    SelectionSet set;
    if (acedSSAdd(nullptr, nullptr, set.name_) != RTNORM) return set;
    for (const AcDbObjectId id : ids) {
        ads_name entity;
        if (acdbGetAdsName(entity, id) == Acad::eOk) acedSSAdd(entity, set.name_, set.name_);
    }
    Adesk::Int32 length = 0;
    if (acedSSLength(set.name_, &length) == RTNORM) set.length_ = length;
    return set;
}

SelectionSet SelectionSet::ask(const wchar_t* prompt, const resbuf* filter, const wchar_t* nothing,
                               Purpose purpose) {
    PrintLine(prompt);
    SelectionSet set;
    Adesk::Int32 length = 0;
    if (acedSSGet(purpose == Purpose::change ? L"_:L" : nullptr, nullptr, nullptr, filter, set.name_) ==
            RTNORM &&
        acedSSLength(set.name_, &length) == RTNORM)
        set.length_ = length;
    if (set.empty()) PrintLine(nothing);
    return set;
}

AcDbObjectId SelectionSet::at(long index) const {
    ads_name entity;
    AcDbObjectId id;
    if (acedSSName(name_, Adesk::Int32(index), entity) != RTNORM || acdbGetObjectId(id, entity) != Acad::eOk)
        return {};
    return id;
}

Acad::ErrorStatus GetHandle(AcDbObjectId id, AcDbHandle& handle) {
    AcDbObjectPointer<AcDbObject> object(id, AcDb::kForRead);
    if (!object) return object.openStatus();
    object->getAcDbHandle(handle);
    return Acad::eOk;
}

int IdFromHandleText(AcDbDatabase* database, const wchar_t* handle, AcDbObjectId& id, bool complain) {
    constexpr int kNoSuchHandle = 3;
    const AcDbHandle number(handle);
    if (database && !number.isNull() && database->getAcDbObjectId(id, false, number) == Acad::eOk) return 0;
    if (complain) PrintText(TranslateFormat(L"\nERROR: Could not translate handle to objectId (%s)", handle));
    return kNoSuchHandle;
}

void SelectionExtents(AcDbExtents& extents, const ads_name set) {
    extents = AcDbExtents();
    Adesk::Int32 length = 0;
    acedSSLength(set, &length);
    for (Adesk::Int32 i = 0; i < length; ++i) {
        ads_name entity;
        AcDbObjectId id;
        if (acedSSName(set, i, entity) == RTNORM && acdbGetObjectId(id, entity) == Acad::eOk)
            addExtents(extents, id);
    }
}

void IdsExtents(AcDbExtents& extents, AcDbObjectIdArray& ids) {
    extents = AcDbExtents();
    for (AcDbObjectId id : ids) addExtents(extents, id);
    ids.setLogicalLength(0);
}

void UpdateEntities(AcDbObjectIdArray& ids) {
    for (AcDbObjectId id : ids) {
        ads_name entity;
        if (acdbGetAdsName(entity, id) == Acad::eOk) acdbEntUpd(entity);
    }
    ids.setLogicalLength(0);
}

} // namespace corvane
