// Matching by greedy stars with one point of return, which needs no recursion.
#include "host/os/wildcard.h"

#include "host/os/text.h"

#include <algorithm>
#include <locale.h>
#include <utility>
#include <wctype.h>

namespace host {
namespace {

struct Step {
    bool hit;
    std::size_t length; // of the pattern element
};

bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

// Chinese and the like know no case, so the C library's table must say.
bool isUnicodeLetter(wchar_t c) {
    static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return iswalpha_l(static_cast<wint_t>(c), unicode) != 0;
}

bool isLetter(wchar_t c) { return lower(c) != upper(c) || (c > 0x7F && isUnicodeLetter(c)); }

// The bracket that closes the set opened at `at`, or npos. A bracket right after the opening one
// (or after its ~) is a member.
std::size_t closingBracket(std::wstring_view pattern, std::size_t at) {
    std::size_t i = at + 1;
    if (i < pattern.size() && pattern[i] == L'~') ++i;
    bool first = true;
    for (; i < pattern.size(); ++i, first = false) {
        if (pattern[i] == L'`')
            ++i;
        else if (pattern[i] == L']' && !first)
            return i;
    }
    return std::wstring_view::npos;
}

bool inSet(std::wstring_view members, wchar_t c) {
    std::wstring plain; // escapes taken out, ranges told apart by a zero
    for (std::size_t i = 0; i < members.size(); ++i) {
        if (members[i] == L'`' && i + 1 < members.size())
            plain += members[++i];
        else if (members[i] == L'-' && i > 0 && i + 1 < members.size())
            plain += L'\0';
        else
            plain += members[i];
    }
    for (std::size_t i = 0; i < plain.size(); ++i) {
        if (i + 2 < plain.size() && plain[i + 1] == L'\0') {
            const auto [from, to] = std::minmax(plain[i], plain[i + 2]);
            if (from <= c && c <= to) return true;
            i += 2;
        } else if (plain[i] == c) {
            return true;
        }
    }
    return false;
}

Step matchOne(wchar_t c, std::wstring_view pattern, std::size_t at) {
    switch (pattern[at]) {
    case L'#': return {isDigit(c), 1};
    case L'@': return {isLetter(c), 1};
    case L'.': return {!isDigit(c) && !isLetter(c), 1};
    case L'?': return {true, 1};
    case L'`':
        if (at + 1 < pattern.size()) return {c == pattern[at + 1], 2};
        return {c == L'`', 1};
    case L'[': {
        const std::size_t close = closingBracket(pattern, at);
        if (close == std::wstring_view::npos) return {c == L'[', 1};
        const bool inverted = pattern[at + 1] == L'~';
        const std::size_t from = at + 1 + inverted;
        return {inSet(pattern.substr(from, close - from), c) != inverted, close - at + 1};
    }
    default: return {c == pattern[at], 1};
    }
}

bool matchPart(std::wstring_view text, std::wstring_view pattern) {
    if (!pattern.empty() && pattern.front() == L'~') return !matchPart(text, pattern.substr(1));
    constexpr std::size_t none = std::wstring_view::npos;
    std::size_t t = 0, p = 0, starPattern = none, starText = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == L'*') {
            starPattern = ++p;
            starText = t;
            continue;
        }
        if (p < pattern.size()) {
            if (const Step step = matchOne(text[t], pattern, p); step.hit) {
                ++t;
                p += step.length;
                continue;
            }
        }
        if (starPattern == none) return false;
        p = starPattern;
        t = ++starText;
    }
    while (p < pattern.size() && pattern[p] == L'*') ++p;
    return p == pattern.size();
}

std::size_t partEnd(std::wstring_view pattern, std::size_t from) {
    for (std::size_t i = from; i < pattern.size(); ++i) {
        if (pattern[i] == L'`') {
            ++i;
        } else if (pattern[i] == L'[') {
            if (const std::size_t close = closingBracket(pattern, i); close != std::wstring_view::npos)
                i = close;
        } else if (pattern[i] == L',') {
            return i;
        }
    }
    return pattern.size();
}

} // namespace

bool wildcardMatch(std::wstring_view text, std::wstring_view pattern, bool foldCase) {
    const std::wstring folded = foldCase ? lower(text) : std::wstring(text);
    const std::wstring rules = foldCase ? lower(pattern) : std::wstring(pattern);
    const std::wstring_view all(rules);
    for (std::size_t from = 0; from <= all.size();) {
        const std::size_t end = partEnd(all, from);
        if (matchPart(folded, all.substr(from, end - from))) return true;
        from = end + 1;
    }
    return false;
}

} // namespace host
