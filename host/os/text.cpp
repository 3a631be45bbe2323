// UTF-8, UTF-16 and case folding; the tables of the fold are the C library's own.
#include "host/os/text.h"

#include <clocale>
#include <cwctype>
#include <locale.h>

namespace host {
namespace {

constexpr wchar_t kReplacement = 0xFFFD;

bool isHigh(std::uint32_t c) { return c >= 0xD800 && c < 0xDC00; }
bool isLow(std::uint32_t c) { return c >= 0xDC00 && c < 0xE000; }
std::uint32_t joined(std::uint32_t high, std::uint32_t low) {
    return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

struct Decoded {
    std::uint32_t code;
    int length; // 0 when no valid sequence begins here; surrogates are let through
};

Decoded decodeOne(std::string_view s, std::size_t at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(s[i]); };
    const unsigned char lead = byte(at);
    if (lead < 0x80) return {lead, 1};
    const int length = lead >= 0xC2 && lead < 0xE0   ? 2
                       : lead >= 0xE0 && lead < 0xF0 ? 3
                       : lead < 0xF5                 ? 4
                                                     : 0;
    if (lead < 0xC2 || length == 0 || at + static_cast<std::size_t>(length) > s.size()) return {0, 0};
    std::uint32_t code = lead & (0x7F >> length);
    for (int i = 1; i < length; ++i) {
        const unsigned char next = byte(at + static_cast<std::size_t>(i));
        if ((next & 0xC0) != 0x80) return {0, 0};
        code = code << 6 | (next & 0x3F);
    }
    const bool overlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
    if (overlong || code > 0x10FFFF) return {0, 0};
    return {code, length};
}

void appendUtf8(std::string& out, std::uint32_t code) {
    if (code < 0x80) {
        out += static_cast<char>(code);
        return;
    }
    if (code < 0x800) {
        out += static_cast<char>(0xC0 | code >> 6);
    } else if (code < 0x10000) {
        out += static_cast<char>(0xE0 | code >> 12);
        out += static_cast<char>(0x80 | (code >> 6 & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | code >> 18);
        out += static_cast<char>(0x80 | (code >> 12 & 0x3F));
        out += static_cast<char>(0x80 | (code >> 6 & 0x3F));
    }
    out += static_cast<char>(0x80 | (code & 0x3F));
}

// The C locale folds ASCII alone; this one knows all of Unicode and is part of the C library.
locale_t unicodeLocale() {
    static const locale_t kept = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return kept;
}

} // namespace

std::wstring wide(std::string_view bytes) {
    std::wstring out;
    out.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size();) {
        const Decoded one = decodeOne(bytes, i);
        if (one.length == 0) {
            out += kReplacement;
            ++i;
            continue;
        }
        i += static_cast<std::size_t>(one.length);
        if (isHigh(one.code) && i < bytes.size()) {
            if (const Decoded next = decodeOne(bytes, i); next.length == 3 && isLow(next.code)) {
                out += static_cast<wchar_t>(joined(one.code, next.code));
                i += 3;
                continue;
            }
        }
        out += isHigh(one.code) || isLow(one.code) ? kReplacement : static_cast<wchar_t>(one.code);
    }
    return out;
}

std::string utf8(std::wstring_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto code = static_cast<std::uint32_t>(text[i]);
        if (isHigh(code) && i + 1 < text.size() && isLow(static_cast<std::uint32_t>(text[i + 1]))) {
            code = joined(code, static_cast<std::uint32_t>(text[++i]));
        } else if (isHigh(code) || isLow(code) || code > 0x10FFFF) {
            code = kReplacement;
        }
        appendUtf8(out, code);
    }
    return out;
}

bool isUtf8(std::string_view bytes) {
    for (std::size_t i = 0; i < bytes.size();) {
        const Decoded one = decodeOne(bytes, i);
        if (one.length == 0 || isHigh(one.code) || isLow(one.code)) return false;
        i += static_cast<std::size_t>(one.length);
    }
    return true;
}

bool isAscii(std::string_view bytes) {
    unsigned char all = 0;
    for (char c : bytes) all |= static_cast<unsigned char>(c);
    return all < 0x80;
}

std::u16string toUtf16(std::wstring_view text) {
    std::u16string out;
    out.reserve(text.size());
    forEachUtf16(text, [&](char16_t unit) { out += unit; });
    return out;
}

std::wstring fromUtf16(std::u16string_view units) {
    std::wstring out;
    out.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        const std::uint32_t unit = units[i];
        if (isHigh(unit) && i + 1 < units.size() && isLow(units[i + 1])) {
            out += static_cast<wchar_t>(joined(unit, units[++i]));
        } else {
            out += isHigh(unit) || isLow(unit) ? kReplacement : static_cast<wchar_t>(unit);
        }
    }
    return out;
}

std::size_t utf16Length(std::wstring_view text) {
    std::size_t length = text.size();
    for (wchar_t c : text) length += static_cast<std::uint32_t>(c) >= 0x10000u;
    return length;
}

std::uint64_t hashUtf16(std::wstring_view text, std::uint64_t start) {
    constexpr std::uint64_t prime = 0x100000001B3u;
    std::uint64_t hash = start;
    forEachUtf16(text, [&](char16_t unit) {
        hash = (hash ^ (unit & 0xFFu)) * prime;
        hash = (hash ^ (unit >> 8)) * prime;
    });
    return hash;
}

wchar_t lower(wchar_t c) {
    if (c >= 0 && c < 0x80) return c >= L'A' && c <= L'Z' ? c + 32 : c;
    return static_cast<wchar_t>(towlower_l(static_cast<wint_t>(c), unicodeLocale()));
}

wchar_t upper(wchar_t c) {
    if (c >= 0 && c < 0x80) return c >= L'a' && c <= L'z' ? c - 32 : c;
    return static_cast<wchar_t>(towupper_l(static_cast<wint_t>(c), unicodeLocale()));
}

std::wstring lower(std::wstring_view text) {
    std::wstring out(text);
    for (wchar_t& c : out) c = lower(c);
    return out;
}

std::wstring upper(std::wstring_view text) {
    std::wstring out(text);
    for (wchar_t& c : out) c = upper(c);
    return out;
}

int compareNoCase(std::wstring_view a, std::wstring_view b) {
    const std::size_t shared = a.size() < b.size() ? a.size() : b.size();
    for (std::size_t i = 0; i < shared; ++i) {
        if (a[i] == b[i]) continue;
        const wchar_t x = lower(a[i]), y = lower(b[i]);
        if (x != y) return x < y ? -1 : 1;
    }
    return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
}

std::wstring_view trimmed(std::wstring_view text) {
    const auto blank = [](wchar_t c) { return c == L' ' || (c >= 9 && c <= 13) || c == 0x3000; };
    while (!text.empty() && blank(text.front())) text.remove_prefix(1);
    while (!text.empty() && blank(text.back())) text.remove_suffix(1);
    return text;
}

std::string_view trimmed(std::string_view text) {
    const auto blank = [](char c) { return c == ' ' || (c >= 9 && c <= 13); };
    while (!text.empty() && blank(text.front())) text.remove_prefix(1);
    while (!text.empty() && blank(text.back())) text.remove_suffix(1);
    return text;
}

} // namespace host
