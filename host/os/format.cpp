// One pass over the format; numbers go through the C library under the C locale, one at a time.
#include "host/os/format.h"

#include "host/os/text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <locale.h>

namespace host {
namespace {

constexpr int kWidest = 4096;

enum class Size { normal, half, quarter, wide, pointer, eight };

struct Field {
    std::string flags;
    int width = -1, precision = -1;
    Size size = Size::normal;
    wchar_t conversion = 0;
};

// The C library's numbers follow the thread's locale; decimal points must not.
class PlainNumbers {
public:
    PlainNumbers() : before_(uselocale(plain())) {}
    ~PlainNumbers() { uselocale(before_); }
    PlainNumbers(const PlainNumbers&) = delete;
    PlainNumbers& operator=(const PlainNumbers&) = delete;

private:
    static locale_t plain() {
        static const locale_t kept = newlocale(LC_ALL_MASK, "C", nullptr);
        return kept;
    }
    locale_t before_;
};

// va_list as a parameter may be an array type; a struct makes it passable by reference.
struct Arguments {
    va_list list;
};

int numberAt(const wchar_t*& p, Arguments& arguments) {
    if (*p == L'*') {
        ++p;
        return std::clamp(va_arg(arguments.list, int), -kWidest, kWidest);
    }
    int value = 0;
    for (; *p >= L'0' && *p <= L'9'; ++p) value = std::min(value * 10 + static_cast<int>(*p - L'0'), kWidest);
    return value;
}

void readSize(const wchar_t*& p, Field& field) {
    if (p[0] == L'I' && p[1] == L'6' && p[2] == L'4') {
        field.size = Size::eight;
        p += 3;
    } else if (p[0] == L'I' && p[1] == L'3' && p[2] == L'2') {
        p += 3;
    } else if (*p == L'I' || *p == L'z' || *p == L't') {
        field.size = Size::pointer;
        ++p;
    } else if (*p == L'j') {
        field.size = Size::eight;
        ++p;
    } else if (*p == L'h') {
        field.size = p[1] == L'h' ? Size::quarter : Size::half;
        p += p[1] == L'h' ? 2 : 1;
    } else if (*p == L'l' || *p == L'L' || *p == L'w') {
        field.size = p[0] == L'l' && p[1] == L'l' ? Size::eight : Size::wide;
        p += field.size == Size::eight ? 2 : 1;
    }
}

// Reads the field after its percent sign and stands behind its conversion character.
Field readField(const wchar_t*& p, Arguments& arguments) {
    Field field;
    for (; *p == L'-' || *p == L'+' || *p == L' ' || *p == L'#' || *p == L'0'; ++p)
        if (field.flags.find(static_cast<char>(*p)) == std::string::npos)
            field.flags += static_cast<char>(*p);
    if (*p == L'*' || (*p >= L'0' && *p <= L'9')) field.width = numberAt(p, arguments);
    if (field.width < -1) {
        field.flags += '-';
        field.width = -field.width;
    }
    if (*p == L'.') {
        ++p;
        field.precision = std::max(numberAt(p, arguments), -1);
    }
    readSize(p, field);
    field.conversion = *p;
    if (*p) ++p;
    return field;
}

void appendPadded(std::wstring& out, std::wstring_view text, const Field& field) {
    const std::size_t width = field.width > 0 ? static_cast<std::size_t>(field.width) : 0;
    const std::size_t pad = width > text.size() ? width - text.size() : 0;
    const bool left = field.flags.find('-') != std::string::npos;
    if (!left) out.append(pad, field.flags.find('0') != std::string::npos ? L'0' : L' ');
    out += text;
    if (left) out.append(pad, L' ');
}

template <class Number>
void appendNumber(std::wstring& out, const Field& field, const char* size, Number value) {
    std::string rule = "%" + field.flags;
    if (field.width >= 0) rule += std::to_string(field.width);
    if (field.precision >= 0) rule += '.' + std::to_string(field.precision);
    rule += size;
    rule += static_cast<char>(field.conversion);
    const PlainNumbers guard;
    char quick[64];
    const int length = std::snprintf(quick, sizeof quick, rule.c_str(), value);
    if (length < static_cast<int>(sizeof quick)) {
        out.append(quick, quick + std::max(length, 0));
        return;
    }
    std::string buffer(static_cast<std::size_t>(length), '\0');
    std::snprintf(buffer.data(), buffer.size() + 1, rule.c_str(), value);
    out.append(buffer.begin(), buffer.end());
}

void appendInteger(std::wstring& out, const Field& field, Arguments& arguments, bool isSigned) {
    const bool eight =
        field.size == Size::eight || (field.size == Size::pointer && sizeof(void*) == sizeof(std::int64_t));
    const std::int64_t raw = eight ? va_arg(arguments.list, long long) : va_arg(arguments.list, int);
    std::int64_t value = raw;
    if (field.size == Size::half)
        value = isSigned ? std::int64_t(std::int16_t(raw)) : std::int64_t(std::uint16_t(raw));
    else if (field.size == Size::quarter)
        value = isSigned ? std::int64_t(std::int8_t(raw)) : std::int64_t(std::uint8_t(raw));
    else if (!eight)
        value = isSigned ? std::int64_t(std::int32_t(raw)) : std::int64_t(std::uint32_t(raw));
    appendNumber(out, field, "ll", static_cast<long long>(value));
}

void appendWideText(std::wstring& out, const Field& field, const wchar_t* text) {
    if (!text) text = L"(null)";
    std::size_t length = 0;
    const std::size_t most =
        field.precision >= 0 ? static_cast<std::size_t>(field.precision) : std::wstring::npos;
    while (length < most && text[length]) ++length;
    appendPadded(out, {text, length}, field);
}

void appendText(std::wstring& out, const Field& field, Arguments& arguments) {
    const bool isWide = field.size == Size::wide || (field.size != Size::half && field.conversion == L's');
    if (isWide) {
        appendWideText(out, field, va_arg(arguments.list, const wchar_t*));
        return;
    }
    const char* narrow = va_arg(arguments.list, const char*);
    appendWideText(out, field, narrow ? wide(narrow).c_str() : nullptr);
}

void appendField(std::wstring& out, const Field& field, Arguments& arguments) {
    switch (field.conversion) {
    case L'd':
    case L'i': appendInteger(out, field, arguments, true); break;
    case L'u':
    case L'x':
    case L'X':
    case L'o': appendInteger(out, field, arguments, false); break;
    case L'f':
    case L'F':
    case L'e':
    case L'E':
    case L'g':
    case L'G':
    case L'a':
    case L'A': appendNumber(out, field, "", va_arg(arguments.list, double)); break;
    case L's':
    case L'S': appendText(out, field, arguments); break;
    case L'c':
    case L'C': {
        const wchar_t c = static_cast<wchar_t>(va_arg(arguments.list, int));
        appendPadded(out, {&c, 1}, field);
        break;
    }
    case L'p': appendNumber(out, field, "", va_arg(arguments.list, void*)); break;
    default: break;
    }
}

bool isConversion(wchar_t c) {
    return c && std::wstring_view(L"diuxXofFeEgGaAsScCp").find(c) != std::wstring_view::npos;
}

} // namespace

std::wstring formatText(const wchar_t* format, va_list list) {
    std::wstring out;
    if (!format) return out;
    Arguments arguments;
    va_copy(arguments.list, list);
    for (const wchar_t* p = format; *p;) {
        if (*p != L'%') {
            out += *p++;
            continue;
        }
        const wchar_t* start = p++;
        if (*p == L'%') {
            out += *p++;
            continue;
        }
        const Field field = readField(p, arguments);
        if (isConversion(field.conversion))
            appendField(out, field, arguments);
        else
            out.append(start, p);
    }
    va_end(arguments.list);
    return out;
}

std::wstring formatArguments(const wchar_t* format, ...) {
    va_list list;
    va_start(list, format);
    std::wstring out = formatText(format, list);
    va_end(list);
    return out;
}

} // namespace host
