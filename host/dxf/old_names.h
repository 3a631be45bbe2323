// Names of table records as versions before R2000 take them: 31 characters at most, capitals, digits and
// $ - _ and letters of the drawing's code page, no two alike.
#pragma once
#include <map>
#include <string>

#include "host/dxf/tables.h"
#include "host/os/codepage.h"

namespace host::dxf {

class OldNames {
public:
    // For all tables of a drawing; characters that the code page lacks are spelt U039B and so on.
    OldNames(AcDbDatabase& database, const std::string& codePage);
    // The name that a record of that table ("LAYER") goes by; names that no record has stay as they are.
    std::string_view of(std::string_view table, std::string_view name) const;
    // How many names are more than put in capitals.
    long changed() const { return changed_; }

private:
    using Renamed = std::map<std::wstring, std::string>; // by the name folded
    Renamed renamed(const AcDbSymbolTable& table);
    std::wstring shortened(const std::wstring& name) const;
    CodePage page_;
    std::map<std::string, Renamed, std::less<>> tables_;
    long changed_ = 0;
};

// Passes groups on with their names replaced; knows by the objects' kinds which groups are names.
class NameFilter final : public GroupWriter {
public:
    NameFilter(const OldNames& names, GroupWriter& to) : names_(names), to_(to) {}
    void write(const Group& group) override;

private:
    std::string_view tableFor(const Group& group) const;
    const OldNames& names_;
    GroupWriter& to_;
    std::string kind_;  // of the object, or the header variable
    bool named_ = true; // the section holds names
};

} // namespace host::dxf
