// Groups written as text.
#include "host/db/rows.h"

#include "host/os/numbers.h"

namespace host {

namespace {

std::string_view nextField(std::string_view& rest) {
    const size_t bar = rest.find('|');
    const std::string_view field = rest.substr(0, bar);
    rest = bar == std::string_view::npos ? std::string_view() : rest.substr(bar + 1);
    return field;
}

Group groupOf(int code, std::string_view value) {
    switch (groupType(code)) {
    case GroupType::text: return Group::ofText(code, value);
    case GroupType::bytes: return Group::ofBytes(code, value);
    case GroupType::real: return Group::ofReal(code, parseReal(value).value_or(0));
    case GroupType::handle: return Group::ofHandle(code, std::uint64_t(parseInteger(value, 16).value_or(0)));
    default: return Group::ofInteger(code, parseInteger(value).value_or(0));
    }
}

} // namespace

GroupList groupsOf(std::string_view row) {
    GroupList groups;
    while (!row.empty()) {
        const auto code = parseInteger(nextField(row));
        const std::string_view value = nextField(row);
        if (code) groups.append(groupOf(int(*code), value));
    }
    return groups;
}

} // namespace host
