// The versions of drawing files by their several names.
#include "host/dxf/dxf.h"
#include "host/os/text.h"

namespace host {
namespace {

struct VersionRow {
    AcDb::AcDbDwgVersion version;
    const char *name, *mark;
};
constexpr VersionRow kVersions[] = {
    {AcDb::kDHL_AC1003, "R2.6", "AC1003"}, {AcDb::kDHL_AC1006, "R10", "AC1006"},
    {AcDb::kDHL_1009, "R12", "AC1009"},    {AcDb::kDHL_1012, "R13", "AC1012"},
    {AcDb::kDHL_1014, "R14", "AC1014"},    {AcDb::kDHL_1015, "R2000", "AC1015"},
    {AcDb::kDHL_1018, "R2004", "AC1018"},  {AcDb::kDHL_1021, "R2007", "AC1021"},
    {AcDb::kDHL_1024, "R2010", "AC1024"},  {AcDb::kDHL_1027, "R2013", "AC1027"},
    {AcDb::kDHL_1032, "R2018", "AC1032"},
};

const VersionRow* rowOf(AcDb::AcDbDwgVersion version) {
    for (const VersionRow& row : kVersions)
        if (row.version == version) return &row;
    return nullptr;
}

} // namespace

std::string versionName(AcDb::AcDbDwgVersion version) {
    const VersionRow* row = rowOf(version);
    return row ? row->name : "";
}

std::string versionMark(AcDb::AcDbDwgVersion version) {
    const VersionRow* row = rowOf(version);
    return row ? row->mark : "";
}

AcDb::AcDbDwgVersion versionByName(std::string_view name) {
    const std::wstring wanted = upper(wide(trimmed(name)));
    for (const VersionRow& row : kVersions)
        if (wanted == wide(row.name) || wanted == wide(row.mark) || wanted == wide(row.name + 1))
            return row.version;
    return AcDb::kDHL_Unknown;
}

} // namespace host
