// Text in its three shapes: UTF-8 bytes at the edges, wide characters (one a code point) inside,
// UTF-16 code units where the host counts or hashes them. Case is folded without regard to the
// locale. Formatting stands in format.h, code pages in codepage.h.
#pragma once

#include "host/os/numbers.h"
#include "host/os/wildcard.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace host {

// UTF-8 to wide text. Each byte that begins no valid sequence becomes U+FFFD; a surrogate pair that
// was written as two three-byte sequences is joined, a lone surrogate becomes U+FFFD.
std::wstring wide(std::string_view utf8);

// Wide text to UTF-8. Two surrogates in a row are joined; what is no character becomes U+FFFD.
std::string utf8(std::wstring_view text);

// Whether the bytes are well-formed UTF-8 (no overlong form, no surrogate, nothing above U+10FFFF).
bool isUtf8(std::string_view bytes);
bool isAscii(std::string_view bytes);

std::u16string toUtf16(std::wstring_view text);
std::wstring fromUtf16(std::u16string_view units); // a lone surrogate becomes U+FFFD

// Number of UTF-16 code units of the text: two for each character above U+FFFF.
std::size_t utf16Length(std::wstring_view text);

// Calls `unit(char16_t)` for each UTF-16 code unit of the text, in order; for hashes that are
// defined over code units.
template <class Visit> void forEachUtf16(std::wstring_view text, Visit&& unit) {
    for (wchar_t c : text) {
        const auto code = static_cast<std::uint32_t>(c);
        if (code < 0x10000u) {
            unit(static_cast<char16_t>(code));
        } else {
            unit(static_cast<char16_t>(0xD800u + ((code - 0x10000u) >> 10)));
            unit(static_cast<char16_t>(0xDC00u + ((code - 0x10000u) & 0x3FFu)));
        }
    }
}

// FNV-1a over the UTF-16 code units, low byte first (Fowler, Noll, Vo 1991).
std::uint64_t hashUtf16(std::wstring_view text, std::uint64_t start = 0xCBF29CE484222325u);

wchar_t lower(wchar_t c);
wchar_t upper(wchar_t c);
std::wstring lower(std::wstring_view text);
std::wstring upper(std::wstring_view text);

// Order without regard to case, by code point: negative, 0 or positive.
int compareNoCase(std::wstring_view a, std::wstring_view b);
inline bool equalNoCase(std::wstring_view a, std::wstring_view b) {
    return a.size() == b.size() && compareNoCase(a, b) == 0;
}

// For ordered maps keyed by names, as symbol tables are.
struct LessNoCase {
    using is_transparent = void;
    bool operator()(std::wstring_view a, std::wstring_view b) const { return compareNoCase(a, b) < 0; }
};

std::wstring_view trimmed(std::wstring_view text);
std::string_view trimmed(std::string_view text);

} // namespace host
