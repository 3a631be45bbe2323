// Selection filters: trees of tests over an entity's groups.
#include <cmath>
#include <functional>

#include "host/db/database.h"
#include "host/ed/selection.h"
#include "host/os/text.h"
#include "host/os/wildcard.h"

namespace host {
namespace {

// Gathers the groups of one entity as files would hold them, so that every group can be tested.
class Gatherer final : public GroupWriter {
public:
    void write(const Group& group) override { groups.append(group); }
    GroupList groups;
};

class Matcher {
public:
    explicit Matcher(const AcDbEntity& entity) : entity_(entity) {}

    // Reads tests up to the end of the chain or `closing`, combining them; moves `at` behind it.
    bool tests(const resbuf*& at, const std::wstring& closing, const std::wstring& how);

private:
    bool test(const resbuf*& at);
    bool one(const resbuf& test, const std::wstring& comparison);
    bool text(int code, const std::wstring& pattern);
    bool number(int code, double wanted, const std::wstring& comparison);
    bool point(int code, const double* wanted, const std::wstring& comparison);
    bool hasXdata(const resbuf& test);
    const GroupList& groups();
    std::wstring recordName(AcDbObjectId id, const wchar_t* otherwise) const;

    const AcDbEntity& entity_;
    GroupList groups_;
    bool gathered_ = false;
};

std::wstring operatorOf(const resbuf& group) {
    return group.restype == -4 && group.resval.rstring ? lower(group.resval.rstring) : std::wstring();
}

bool Matcher::tests(const resbuf*& at, const std::wstring& closing, const std::wstring& how) {
    bool all = true, any = false;
    int hits = 0;
    while (at) {
        if (const std::wstring op = operatorOf(*at); !op.empty() && op == closing) {
            at = at->rbnext;
            break;
        }
        const bool hit = test(at);
        all &= hit, any |= hit, hits += hit;
    }
    if (how == L"or") return any;
    if (how == L"xor") return hits == 1;
    return how == L"not" ? !all : all;
}

bool Matcher::test(const resbuf*& at) {
    const std::wstring op = operatorOf(*at);
    if (op.starts_with(L"<") && op.size() > 2 && std::iswalpha(wint_t(op[1]))) {
        const std::wstring how = op.substr(1);
        at = at->rbnext;
        return tests(at, how + L">", how);
    }
    std::wstring comparison;
    if (!op.empty()) {
        comparison = op;
        at = at->rbnext;
        if (!at) return false;
    }
    const resbuf& subject = *at;
    at = at->rbnext;
    // The names of an xdata test follow its -3.
    if (subject.restype == -3)
        while (at && at->restype == 1001) {
            if (!hasXdata(*at)) return false;
            at = at->rbnext;
        }
    return one(subject, comparison);
}

bool Matcher::one(const resbuf& wanted, const std::wstring& comparison) {
    const int code = wanted.restype == RTDXF0 ? 0 : wanted.restype; // 0 can't stand in acutBuildList
    if (code == -3) return true;
    if (code == 1001) return hasXdata(wanted);
    switch (resultKind(code)) {
    case ResultKind::text:
    case ResultKind::handle: {
        const bool hit = text(code, wanted.resval.rstring ? wanted.resval.rstring : L"");
        return comparison == L"!=" || comparison == L"/=" || comparison == L"<>" ? !hit : hit;
    }
    case ResultKind::real: return number(code, wanted.resval.rreal, comparison);
    case ResultKind::shortInt: return number(code, wanted.resval.rint, comparison);
    case ResultKind::longInt: return number(code, wanted.resval.rlong, comparison);
    case ResultKind::point: return point(code, wanted.resval.rpoint, comparison);
    default: return false;
    }
}

std::wstring Matcher::recordName(AcDbObjectId id, const wchar_t* otherwise) const {
    const auto* record = id.isValid() ? AcDbSymbolTableRecord::cast(id.cell()->object) : nullptr;
    return record ? record->name() : otherwise;
}

bool Matcher::text(int code, const std::wstring& pattern) {
    const auto matches = [&](const std::wstring& value) { return wildcardMatch(value, pattern); };
    switch (code) {
    case 0: return matches(wide(entity_.dxfName()));
    case 6: return matches(recordName(entity_.linetypeId(), L"ByLayer"));
    case 8: return matches(entity_.layerName());
    case 5: return matches(entity_.objectId().handle().ascii());
    case 410: {
        const auto* space = AcDbBlockTableRecord::cast(
            entity_.blockId().isValid() ? entity_.blockId().cell()->object : nullptr);
        if (!space || !space->isLayout()) return false;
        const auto* layout =
            AcDbLayout::cast(space->getLayoutId().isValid() ? space->getLayoutId().cell()->object : nullptr);
        return layout && matches(layout->layoutName());
    }
    default: break;
    }
    for (const Group& group : groups())
        if (group.code == code && group.type == GroupType::text && matches(group.wide())) return true;
    return false;
}

bool compares(double value, double wanted, const std::wstring& op) {
    constexpr double kSame = 1e-10; // relative to the numbers' size
    const bool same = std::abs(value - wanted) <= kSame * std::max({1.0, std::abs(value), std::abs(wanted)});
    const auto bits = [](double x) { return static_cast<long long>(x); };
    if (op.empty() || op == L"=") return same;
    if (op == L"*") return true;
    if (op == L"!=" || op == L"/=" || op == L"<>") return !same;
    if (op == L"<") return value < wanted && !same;
    if (op == L"<=") return value < wanted || same;
    if (op == L">") return value > wanted && !same;
    if (op == L">=") return value > wanted || same;
    if (op == L"&") return (bits(value) & bits(wanted)) != 0;
    if (op == L"&=") return (bits(value) & bits(wanted)) == bits(wanted);
    return false;
}

bool Matcher::number(int code, double wanted, const std::wstring& comparison) {
    switch (code) {
    case 62: return compares(entity_.colorIndex(), wanted, comparison);
    case 60: return compares(entity_.visibility(), wanted, comparison);
    case 48: return compares(entity_.linetypeScale(), wanted, comparison);
    case 370: return compares(entity_.lineWeight(), wanted, comparison);
    case 67: {
        const auto* space = AcDbBlockTableRecord::cast(
            entity_.blockId().isValid() ? entity_.blockId().cell()->object : nullptr);
        return compares(space && space->isPaperSpace() ? 1 : 0, wanted, comparison);
    }
    default: break;
    }
    for (const Group& group : groups())
        if (group.code == code && group.type != GroupType::text && group.type != GroupType::bytes)
            return compares(group.type == GroupType::real ? group.real : double(group.integer), wanted,
                            comparison);
    // Groups that files leave out stand for 0, as far as 39 (thickness) and 70 (flags) go.
    return (code == 39 || code == 70) && compares(0, wanted, comparison);
}

bool Matcher::point(int code, const double* wanted, const std::wstring& comparison) {
    double value[3] = {0, 0, 0};
    bool found = false;
    for (const Group& group : groups()) {
        if (group.type != GroupType::real) continue;
        if (group.code == code && found) break;
        if (group.code == code)
            value[0] = group.real, found = true;
        else if (found && group.code == code + 10)
            value[1] = group.real;
        else if (found && group.code == code + 20)
            value[2] = group.real;
    }
    if (!found) return false;
    // One comparison a coordinate, parted by commas; "*" leaves it free.
    size_t from = 0;
    for (double v : value) {
        const size_t comma = std::min(comparison.find(L',', from), comparison.size());
        std::wstring op =
            comparison.substr(std::min(from, comparison.size()), comma - std::min(from, comparison.size()));
        if (op.empty() && !comparison.empty()) op = L"*";
        if (!compares(v, wanted[&v - value], op)) return false;
        from = comma + 1;
    }
    return true;
}

bool Matcher::hasXdata(const resbuf& wanted) {
    if (!entity_.tail() || !wanted.resval.rstring) return false;
    for (const Group& group : entity_.tail()->xdata)
        if (group.code == 1001 && wildcardMatch(group.wide(), wanted.resval.rstring)) return true;
    return false;
}

const GroupList& Matcher::groups() {
    if (!gathered_) {
        Gatherer gatherer;
        gatherer.database = entity_.database();
        entity_.outGroups(gatherer);
        groups_ = std::move(gatherer.groups);
        gathered_ = true;
    }
    return groups_;
}

} // namespace

bool matchesFilter(const AcDbEntity& entity, const resbuf* filter) {
    Matcher matcher(entity);
    return matcher.tests(filter, L"", L"and");
}

} // namespace host
