// Keywords, numbers and points from typed text.
#include "host/ed/answers.h"

#include <cmath>
#include <cwctype>
#include <numbers>
#include <sstream>

#include "host/os/numbers.h"
#include "host/os/text.h"

namespace host {
namespace {

constexpr double kRadiansPerDegree = std::numbers::pi / 180;

std::optional<double> finiteReal(std::wstring_view text) {
    const auto value = parseReal(text);
    return value && std::isfinite(*value) ? value : std::nullopt;
}

std::vector<std::wstring> splitAt(const std::wstring& text, wchar_t separator) {
    std::vector<std::wstring> parts(1);
    for (wchar_t c : text) {
        if (c == separator)
            parts.emplace_back();
        else
            parts.back() += c;
    }
    return parts;
}

// A run of capitals (or of characters without case, such as Chinese ones, which stand for themselves).
struct Capitals {
    size_t first = 0, length = 0;
};
Capitals capitalsOf(const std::wstring& word) {
    Capitals run;
    while (run.first < word.size() && !std::iswupper(wint_t(word[run.first]))) ++run.first;
    if (run.first == word.size()) return {0, word.size()};
    while (run.first + run.length < word.size() && !std::iswlower(wint_t(word[run.first + run.length])))
        ++run.length;
    return run;
}

bool stands(const std::wstring& word, const std::wstring& text) {
    const std::wstring folded = lower(word);
    const Capitals run = capitalsOf(word);
    if (text == folded.substr(run.first, run.length)) return true;
    return text.size() >= run.first + run.length && folded.starts_with(text);
}

std::optional<double> parseFraction(const std::wstring& text) {
    const auto parts = splitAt(text, L'/');
    if (parts.size() == 1) return finiteReal(text);
    if (parts.size() != 2) return std::nullopt;
    const auto over = finiteReal(parts[0]), under = finiteReal(parts[1]);
    if (!over || !under || *under == 0) return std::nullopt;
    return *over / *under;
}

// "1-1/2": whole and fraction parted by a dash.
std::optional<double> parseMixed(const std::wstring& text) {
    const size_t dash = text.find(L'-', 1);
    if (dash == text.npos || text.find(L'/') == text.npos) return parseFraction(text);
    const auto whole = finiteReal(text.substr(0, dash)), part = parseFraction(text.substr(dash + 1));
    if (!whole || !part) return std::nullopt;
    return *whole < 0 ? *whole - *part : *whole + *part;
}

} // namespace

std::vector<Keyword> parseKeywords(const std::wstring& list) {
    std::vector<std::wstring> local, global;
    std::wistringstream words(list);
    bool behind = false;
    for (std::wstring word; words >> word;) {
        if (word.starts_with(L'_')) {
            behind = true;
            word.erase(0, 1);
        }
        if (!word.empty()) (behind ? global : local).push_back(word.substr(0, word.find(L',')));
    }
    std::vector<Keyword> keywords;
    for (size_t i = 0; i < local.size(); ++i)
        keywords.push_back({local[i], i < global.size() ? global[i] : local[i]});
    return keywords;
}

const Keyword* matchKeyword(const std::vector<Keyword>& keywords, const std::wstring& text) {
    const bool global = text.starts_with(L'_');
    const std::wstring typed = lower(global ? text.substr(1) : text);
    if (typed.empty()) return nullptr;
    for (const Keyword& keyword : keywords)
        if (typed == lower(global ? keyword.global : keyword.shown)) return &keyword;
    for (const Keyword& keyword : keywords)
        if (stands(global ? keyword.global : keyword.shown, typed)) return &keyword;
    return nullptr;
}

std::optional<double> parseDistance(const std::wstring& text) {
    const size_t foot = text.find(L'\'');
    std::wstring inches = foot == text.npos ? text : text.substr(foot + 1);
    if (inches.ends_with(L'"')) inches.pop_back();
    if (foot == text.npos) return parseMixed(inches);
    const auto feet = finiteReal(text.substr(0, foot));
    if (inches.starts_with(L'-')) inches.erase(0, 1);
    const auto rest = inches.empty() ? std::optional<double>(0) : parseMixed(inches);
    if (!feet || !rest) return std::nullopt;
    return *feet < 0 ? *feet * 12 - *rest : *feet * 12 + *rest;
}

std::optional<double> parseAngle(const std::wstring& text) {
    if (text.empty()) return std::nullopt;
    const std::wstring body = text.substr(0, text.size() - 1);
    const wchar_t unit = wchar_t(std::towlower(wint_t(text.back())));
    if (unit == L'r' || unit == L'g') {
        const auto value = finiteReal(body);
        if (!value) return std::nullopt;
        return unit == L'r' ? *value : *value * std::numbers::pi / 200;
    }
    const size_t d = text.find_first_of(L"dD");
    if (d == text.npos) {
        const auto degrees = finiteReal(text);
        return degrees ? std::optional<double>(*degrees * kRadiansPerDegree) : std::nullopt;
    }
    const auto degrees = finiteReal(text.substr(0, d));
    if (!degrees) return std::nullopt;
    double minutes = 0, seconds = 0;
    std::wstring rest = text.substr(d + 1);
    if (const size_t mark = rest.find(L'\''); mark != rest.npos) {
        const auto value = finiteReal(rest.substr(0, mark));
        if (!value) return std::nullopt;
        minutes = *value;
        rest = rest.substr(mark + 1);
    }
    if (rest.ends_with(L'"')) rest.pop_back();
    if (!rest.empty()) {
        const auto value = finiteReal(rest);
        if (!value) return std::nullopt;
        seconds = *value;
    }
    const double parts = minutes / 60 + seconds / 3600;
    return (*degrees < 0 ? *degrees - parts : *degrees + parts) * kRadiansPerDegree;
}

std::optional<TypedPoint> parsePoint(const std::wstring& typed, const PointFrame& frame) {
    TypedPoint result;
    std::wstring text = typed;
    bool relative = false;
    for (; !text.empty() && (text[0] == L'@' || text[0] == L'*'); text.erase(0, 1))
        (text[0] == L'@' ? relative : result.world) = true;
    const AcGePoint3d from = relative ? frame.last : AcGePoint3d::kOrigin;
    if (relative && text.empty()) return result.point = from, result;
    if (const size_t polar = text.find(L'<'); polar != text.npos) {
        const auto distance = parseDistance(text.substr(0, polar));
        const auto angle = parseAngle(text.substr(polar + 1));
        if (!distance || !angle) return std::nullopt;
        const double turned = frame.angleBase + (frame.clockwise ? -*angle : *angle);
        result.point.set(from.x + *distance * std::cos(turned), from.y + *distance * std::sin(turned),
                         relative ? from.z : frame.elevation);
        return result;
    }
    const auto parts = splitAt(text, L',');
    if (parts.size() < 2 || parts.size() > 3) return std::nullopt;
    double v[3] = {0, 0, relative ? 0 : frame.elevation};
    for (size_t i = 0; i < parts.size(); ++i) {
        const auto value = parseDistance(parts[i]);
        if (!value) return std::nullopt;
        v[i] = *value;
    }
    result.point.set(from.x + v[0], from.y + v[1], from.z + v[2]);
    return result;
}

int objectSnapBit(const std::wstring& text) {
    static constexpr std::pair<std::wstring_view, int> kNames[] = {
        {L"endpoint", 1},  {L"midpoint", 2},      {L"center", 4},     {L"node", 8},
        {L"quadrant", 16}, {L"intersection", 32}, {L"insertion", 64}, {L"perpendicular", 128},
        {L"tangent", 256}, {L"nearest", 512}};
    const std::wstring typed = lower(text.starts_with(L'_') ? text.substr(1) : text);
    if (typed.size() < 3) return 0;
    for (const auto& [name, bit] : kNames)
        if (name.starts_with(typed)) return bit;
    return 0;
}

std::optional<EntityAnswer> parseEntityAnswer(const std::wstring& text) {
    EntityAnswer answer;
    if (text.size() > 1 && text[0] == L'!') return answer.symbol = upper(text.substr(1)), answer;
    if (!text.starts_with(L'(') || !text.ends_with(L')')) return std::nullopt;
    std::wistringstream words(text.substr(1, text.size() - 2));
    std::wstring word;
    if (!(words >> word) || lower(word) != L"handent" || !(words >> word)) return std::nullopt;
    if (word.size() < 3 || word.front() != L'"' || word.back() != L'"') return std::nullopt;
    answer.handle = word.substr(1, word.size() - 2);
    if (words >> word) {
        const auto point = parsePoint(word, {});
        if (!point) return std::nullopt;
        answer.point = point->point;
    }
    return answer;
}

} // namespace host
