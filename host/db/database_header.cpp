// AcDbDatabase: header variables, by name and by the host's accessor names.
#include "host/db/access.h"
#include "host/db/database.h"
#include "host/os/text.h"

const host::GroupList* AcDbDatabase::headerValue(const std::string& name) const {
    const auto found = headerIndex_.find(name);
    return found == headerIndex_.end() ? nullptr : &header_[found->second].value;
}

void AcDbDatabase::setHeaderValue(const std::string& name, const host::GroupList& value) {
    const host::GroupList* present = headerValue(name);
    if (present && *present == value) return;
    const std::wstring plain = host::wide(std::string_view(name).substr(name.starts_with('$')));
    host::ObjectAccess::tellDatabase(this, [&](auto& r) { r.headerSysVarWillChange(this, plain.c_str()); });
    undo_->willChangeHeader(name);
    const auto [entry, isNew] = headerIndex_.try_emplace(name, header_.size());
    if (isNew) header_.push_back({name, {}});
    header_[entry->second].value = value;
    host::ObjectAccess::tellDatabase(this,
                                     [&](auto& r) { r.headerSysVarChanged(this, plain.c_str(), true); });
}

void AcDbDatabase::removeHeaderValue(const std::string& name) {
    const auto found = headerIndex_.find(name);
    if (found == headerIndex_.end()) return;
    header_.erase(header_.begin() + std::ptrdiff_t(found->second));
    headerIndex_.clear();
    for (size_t i = 0; i < header_.size(); ++i) headerIndex_.try_emplace(header_[i].name, i);
}

namespace {

// The first group of a variable when it holds a number, as both kinds of number.
struct Number {
    bool known = false;
    double real = 0;
    std::int64_t integer = 0;
};

Number numberOf(const host::GroupList* value) {
    if (!value || value->empty()) return {};
    const host::Group g = *value->begin();
    if (g.type == host::GroupType::text || g.type == host::GroupType::bytes) return {};
    if (g.type == host::GroupType::real) return {true, g.real, std::int64_t(g.real)};
    return {true, double(g.integer), g.integer};
}

host::GroupList single(const host::Group& group) {
    host::GroupList list;
    list.append(group);
    return list;
}

} // namespace

double AcDbDatabase::headerReal(const std::string& name, double fallback) const {
    const Number number = numberOf(headerValue(name));
    return number.known ? number.real : fallback;
}

std::int64_t AcDbDatabase::headerInteger(const std::string& name, std::int64_t fallback) const {
    const Number number = numberOf(headerValue(name));
    return number.known ? number.integer : fallback;
}

std::wstring AcDbDatabase::headerText(const std::string& name, const std::wstring& fallback) const {
    const host::GroupList* value = headerValue(name);
    if (!value || value->empty()) return fallback;
    const host::Group g = *value->begin();
    return g.type == host::GroupType::text ? g.wide() : fallback;
}

AcGePoint3d AcDbDatabase::headerPoint(const std::string& name, const AcGePoint3d& fallback) const {
    const host::GroupList* value = headerValue(name);
    if (!value || value->empty()) return fallback;
    AcGePoint3d point;
    unsigned axis = 0;
    for (const host::Group g : *value)
        if (axis < 3 && g.type == host::GroupType::real) point[axis++] = g.real;
    return point;
}

void AcDbDatabase::setHeaderReal(const std::string& name, int code, double value) {
    setHeaderValue(name, single(host::Group::ofReal(code, value)));
}
void AcDbDatabase::setHeaderInteger(const std::string& name, int code, std::int64_t value) {
    setHeaderValue(name, single(host::Group::ofInteger(code, value)));
}
void AcDbDatabase::setHeaderText(const std::string& name, int code, const std::wstring& value) {
    setHeaderValue(name, single(host::Group::ofText(code, host::utf8(value))));
}
void AcDbDatabase::setHeaderPoint(const std::string& name, const AcGePoint3d& value) {
    host::GroupList list;
    for (int axis = 0; axis < 3; ++axis)
        list.append(host::Group::ofReal(10 + 10 * axis, value[unsigned(axis)]));
    setHeaderValue(name, list);
}

// -- the host's accessors -----------------------------------------------------------------------------

namespace {
AcDbObjectId or_(AcDbObjectId id, AcDbObjectId other) { return id.isNull() ? other : id; }

template <class Record>
Acad::ErrorStatus setByName(AcDbDatabase& database, const char* variable, int code, AcDbObjectId id) {
    const auto* record = host::peek<Record>(id);
    if (!record || record->isErased()) return Acad::eInvalidInput;
    if (id.database() != &database) return Acad::eWrongDatabase;
    database.setHeaderText(variable, code, record->name());
    return Acad::eOk;
}
} // namespace

AcDbObjectId AcDbDatabase::clayer() const {
    return or_(find(AcDbLayerTable::desc(), headerText("$CLAYER", L"0")), layerZero());
}
Acad::ErrorStatus AcDbDatabase::setClayer(AcDbObjectId layer) {
    return setByName<AcDbLayerTableRecord>(*this, "$CLAYER", 8, layer);
}
AcDbObjectId AcDbDatabase::celtype() const {
    return or_(find(AcDbLinetypeTable::desc(), headerText("$CELTYPE", L"ByLayer")), byLayerLinetype());
}
Acad::ErrorStatus AcDbDatabase::setCeltype(AcDbObjectId linetype) {
    return setByName<AcDbLinetypeTableRecord>(*this, "$CELTYPE", 6, linetype);
}
AcDbObjectId AcDbDatabase::textstyle() const {
    const AcDbObjectId standard = find(AcDbTextStyleTable::desc(), L"Standard");
    return or_(find(AcDbTextStyleTable::desc(), headerText("$TEXTSTYLE", L"Standard")), standard);
}
Acad::ErrorStatus AcDbDatabase::setTextstyle(AcDbObjectId style) {
    return setByName<AcDbTextStyleTableRecord>(*this, "$TEXTSTYLE", 7, style);
}

AcCmColor AcDbDatabase::cecolor() const {
    AcCmColor color;
    const auto index = headerInteger("$CECOLOR", 256);
    if (index >= 0 && index <= 256) color.setColorIndex(Adesk::UInt16(index));
    return color;
}
Acad::ErrorStatus AcDbDatabase::setCecolor(const AcCmColor& color) {
    if (color.isNone()) return Acad::eInvalidInput;
    setHeaderInteger("$CECOLOR", 62, color.colorIndex());
    return Acad::eOk;
}

namespace {
double aboveZero(double value) { return value > 0 ? value : 1; }
} // namespace

double AcDbDatabase::celtscale() const { return aboveZero(headerReal("$CELTSCALE", 1)); }
AcDb::LineWeight AcDbDatabase::celweight() const {
    return AcDb::LineWeight(headerInteger("$CELWEIGHT", AcDb::kLnWtByLayer));
}
double AcDbDatabase::ltscale() const { return aboveZero(headerReal("$LTSCALE", 1)); }
double AcDbDatabase::textsize() const { return headerReal("$TEXTSIZE", 2.5); }
bool AcDbDatabase::tilemode() const { return headerInteger("$TILEMODE", 1) != 0; }
Adesk::Int16 AcDbDatabase::surftab1() const { return Adesk::Int16(headerInteger("$SURFTAB1", 6)); }
Adesk::Int16 AcDbDatabase::splinesegs() const { return Adesk::Int16(headerInteger("$SPLINESEGS", 8)); }
Adesk::Int16 AcDbDatabase::insunits() const { return Adesk::Int16(headerInteger("$INSUNITS", 0)); }

namespace {
AcDbExtents extentsOf(AcDbObjectId space) {
    AcDbExtents all;
    const auto* record = host::peek<AcDbBlockTableRecord>(space);
    if (!record) return all;
    for (auto id : record->entities()) {
        const auto* entity = host::peek<AcDbEntity>(id);
        AcDbExtents one;
        if (entity && !entity->isErased() && entity->getGeomExtents(one) == Acad::eOk) all.addExt(one);
    }
    return all;
}
} // namespace

AcGePoint3d AcDbDatabase::extmin() const { return extentsOf(modelSpaceId()).minPoint(); }
AcGePoint3d AcDbDatabase::extmax() const { return extentsOf(modelSpaceId()).maxPoint(); }
