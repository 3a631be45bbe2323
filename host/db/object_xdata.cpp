// AcDbObject: extended data. Kept as the groups that files hold, application by application.
#include "host/db/access.h"
#include "host/db/chain.h"
#include "host/os/text.h"

namespace {

constexpr int kXdataLimit = 16383; // bytes in all, as the host counts them

using host::Group;
using host::GroupList;
using host::GroupType;

// What one group counts: points with their first coordinate.
int countedSize(const Group& g) {
    if (g.code >= 1010 && g.code <= 1013) return 25;
    if (g.code >= 1020 && g.code <= 1033) return 0;
    switch (g.type) {
    case GroupType::real: return 9;
    case GroupType::int16: return 3;
    case GroupType::int32: return 5;
    case GroupType::handle: return 9;
    case GroupType::text: return int(host::utf16Length(g.wide())) + 3;
    default: return int(g.text.size()) + 3;
    }
}

int countedSize(const GroupList& xdata) {
    int size = 0;
    for (const Group g : xdata) size += countedSize(g);
    return size;
}

bool sameApplication(const Group& g, std::wstring_view name) {
    return g.code == 1001 && host::equalNoCase(g.wide(), name);
}

// One application's new data.
struct Section {
    std::wstring name;
    GroupList groups;
    int count = 0; // behind the name
    bool placed = false;
};

Acad::ErrorStatus splitChain(const resbuf* chain, std::vector<Section>& sections) {
    for (; chain; chain = chain->rbnext) {
        if (chain->restype == -3) continue;
        if (chain->restype < 1000 || chain->restype > 1071) return Acad::eInvalidInput;
        if (chain->restype == 1001) {
            if (!chain->resval.rstring || !*chain->resval.rstring) return Acad::eInvalidInput;
            sections.push_back({chain->resval.rstring, {}, 0, false});
        } else if (sections.empty()) {
            return Acad::eInvalidInput;
        } else {
            ++sections.back().count;
        }
        if (!host::appendGroups(*chain, sections.back().groups)) return Acad::eInvalidInput;
    }
    return sections.empty() ? Acad::eInvalidInput : Acad::eOk;
}

void place(Section& section, GroupList& into) {
    if (section.count && !section.placed) into.append(section.groups);
    section.placed = true;
}

// The present data with those of the named applications replaced where they stand, new ones at the end.
GroupList merged(const GroupList& present, std::vector<Section>& sections) {
    GroupList result;
    bool copying = true;
    for (const Group g : present) {
        if (g.code == 1001) {
            copying = true;
            for (auto& section : sections)
                if (sameApplication(g, section.name)) place(section, result), copying = false;
        }
        if (copying) result.append(g);
    }
    for (auto& section : sections) place(section, result);
    return result;
}

} // namespace

resbuf* AcDbObject::xData(const ACHAR* application) const {
    if (!tail_) return nullptr;
    GroupList wanted;
    bool inside = !application;
    for (const Group g : tail_->xdata) {
        if (application && g.code == 1001) inside = sameApplication(g, application);
        if (inside) wanted.append(g);
    }
    return host::chainFromGroups(wanted, database());
}

Acad::ErrorStatus AcDbObject::setXData(const resbuf* xdata) {
    std::vector<Section> sections;
    if (auto es = splitChain(xdata, sections); es != Acad::eOk) return es;
    const AcDbDatabase* drawing = database() ? database() : acdbHostApplicationServices()->workingDatabase();
    for (const auto& section : sections)
        if (drawing && drawing->find(AcDbRegAppTable::desc(), section.name).isNull())
            return Acad::eRegappIdNotFound;
    GroupList result = merged(tail_ ? tail_->xdata : GroupList(), sections);
    if (countedSize(result) > kXdataLimit) return Acad::eXdataSizeExceeded;
    if (auto es = willModify(); es != Acad::eOk) return es;
    xdataTouched_ = cell_ != nullptr;
    result.shrink();
    tailForWrite().xdata = std::move(result);
    return Acad::eOk;
}

int AcDbObject::xDataSizeLeft() const {
    return std::max(0, kXdataLimit - (tail_ ? countedSize(tail_->xdata) : 0));
}
