// Replacing names, and where names stand.
#include "host/dxf/old_names.h"

#include <algorithm>
#include <cwchar>
#include <set>

#include "host/os/text.h"

namespace host::dxf {
namespace {

constexpr size_t kLongest = 31;

bool isTaken(wchar_t c, bool first) {
    return (c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9') || c == L'$' || c == L'-' || c == L'_' ||
           c == L'|' || (first && c == L'*');
}

std::wstring spelt(wchar_t c) {
    wchar_t text[12];
    std::swprintf(text, std::size(text), L"U%04X", unsigned(c));
    return text;
}

// The spaces' names are the host's own.
bool isSpace(const std::wstring& name) {
    const std::wstring folded = lower(name);
    return folded.starts_with(lower(ACDB_MODEL_SPACE)) || folded.starts_with(lower(ACDB_PAPER_SPACE));
}

struct Place {
    std::string_view kind; // of the object, or a header variable
    int code;
    std::string_view table;
};
constexpr Place kPlaces[] = {
    {"LAYER", 2, "LAYER"},
    {"LTYPE", 2, "LTYPE"},
    {"STYLE", 2, "STYLE"},
    {"VIEW", 2, "VIEW"},
    {"UCS", 2, "UCS"},
    {"APPID", 2, "APPID"},
    {"DIMSTYLE", 2, "DIMSTYLE"},
    {"BLOCK_RECORD", 2, "BLOCK_RECORD"},
    {"BLOCK", 2, "BLOCK_RECORD"},
    {"BLOCK", 3, "BLOCK_RECORD"},
    {"INSERT", 2, "BLOCK_RECORD"},
    {"DIMENSION", 2, "BLOCK_RECORD"},
    {"DIMENSION", 3, "DIMSTYLE"},
    {"LEADER", 3, "DIMSTYLE"},
    {"TOLERANCE", 3, "DIMSTYLE"},
    {"DIMSTYLE", 5, "BLOCK_RECORD"},
    {"DIMSTYLE", 6, "BLOCK_RECORD"},
    {"DIMSTYLE", 7, "BLOCK_RECORD"},
    {"$DIMSTYLE", 2, "DIMSTYLE"},
    {"$UCSNAME", 2, "UCS"},
    {"$PUCSNAME", 2, "UCS"},
    {"$DIMBLK", 1, "BLOCK_RECORD"},
    {"$DIMBLK1", 1, "BLOCK_RECORD"},
    {"$DIMBLK2", 1, "BLOCK_RECORD"},
};

} // namespace

// R12 calls the spaces $MODEL_SPACE and $PAPER_SPACE; no other block may go by these names there.
std::wstring OldNames::shortened(const std::wstring& name) const {
    std::wstring out;
    for (wchar_t c : upper(name)) {
        if (c <= 127)
            out += isTaken(c, out.empty()) ? c : L'_';
        else
            out += page_.encode(utf8(std::wstring(1, c))).lost ? spelt(c) : std::wstring(1, c);
    }
    out.resize(std::min(out.size(), kLongest));
    if (out.starts_with(L"$MODEL_SPACE") || out.starts_with(L"$PAPER_SPACE")) out[0] = L'_';
    return out;
}

OldNames::OldNames(AcDbDatabase& database, const std::string& codePage) : page_(codePage) {
    for (const TableKind& kind : tableKinds())
        if (const auto* table = behind<AcDbSymbolTable>(database.tableId(kind.table()));
            table && kind.name != "VPORT")
            tables_[std::string(kind.name)] = renamed(*table);
}

// Names that need capitals alone come first, so that they keep theirs.
OldNames::Renamed OldNames::renamed(const AcDbSymbolTable& table) {
    Renamed names;
    std::set<std::wstring> given;
    for (const bool fitting : {true, false}) {
        for (AcDbObjectId id : table.records()) {
            const auto* record = behind<AcDbSymbolTableRecord>(id);
            if (!record || record->isErased() || record->name().empty() || isSpace(record->name())) continue;
            std::wstring name = shortened(record->name());
            if ((name == upper(record->name())) != fitting) continue;
            const std::wstring stem = name;
            for (int number = 2; !given.insert(name).second; ++number) {
                const std::wstring suffix = L"_" + std::to_wstring(number);
                name = stem.substr(0, kLongest - suffix.size()) + suffix;
            }
            names.emplace(lower(record->name()), utf8(name));
            changed_ += !fitting;
        }
    }
    return names;
}

std::string_view OldNames::of(std::string_view table, std::string_view name) const {
    const auto names = tables_.find(table);
    if (names == tables_.end()) return name;
    const auto found = names->second.find(lower(wide(name)));
    return found == names->second.end() ? name : std::string_view(found->second);
}

void NameFilter::write(const Group& group) {
    if (group.code == 0) {
        kind_ = group.text;
        if (kind_ == "SECTION" || kind_ == "ENDSEC") named_ = true;
    } else if (group.code == 2 && kind_ == "SECTION") {
        named_ = group.text == "HEADER" || group.text == "TABLES" || group.text == "BLOCKS" ||
                 group.text == "ENTITIES";
    } else if (group.code == 9) {
        kind_ = group.text;
    } else if (named_ && group.type == GroupType::text) {
        if (const std::string_view table = tableFor(group); !table.empty())
            return to_.write(Group::ofText(group.code, names_.of(table, group.text)));
    }
    to_.write(group);
}

std::string_view NameFilter::tableFor(const Group& group) const {
    for (const Place& place : kPlaces)
        if (place.code == group.code && place.kind == kind_) return place.table;
    switch (group.code) {
    case 6: return "LTYPE";
    case 7: return "STYLE";
    case 8:
    case 1003: return "LAYER";
    case 1001: return "APPID";
    default: return {};
    }
}

} // namespace host::dxf
