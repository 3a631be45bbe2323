// iconv behind the names drawings use. Most text is ASCII and never reaches it.
#include "host/os/codepage.h"

#include "host/os/text.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <iconv.h>
#include <optional>

namespace host {
namespace {

struct Alias {
    std::string_view drawing, library;
};

// Only names that differ by more than a prefix; CP<number> serves the rest.
constexpr Alias kAliases[] = {
    {"ANSI_932", "CP932"},      {"ANSI_936", "GB18030"}, {"ANSI_949", "CP949"}, {"ANSI_950", "CP950"},
    {"ANSI_1361", "JOHAB"},     {"GB2312", "GB18030"},   {"GBK", "GB18030"},    {"BIG5", "CP950"},
    {"KSC5601", "CP949"},       {"JOHAB", "JOHAB"},      {"ASCII", "CP1252"},   {"MACINTOSH", "MACINTOSH"},
    {"MAC-ROMAN", "MACINTOSH"}, {"UTF-8", "UTF-8"},      {"UTF8", "UTF-8"},     {"ANSI_65001", "UTF-8"},
    {"ANSI_1200", "UTF-8"},     {"SHIFT_JIS", "CP932"},
};

std::string upperAscii(std::string_view text) {
    std::string out(text);
    for (char& c : out)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
    return out;
}

std::string libraryName(std::string_view drawing) {
    const std::string name = upperAscii(trimmed(drawing));
    for (const Alias& alias : kAliases)
        if (name == alias.drawing) return std::string(alias.library);
    for (std::string_view prefix : {"ANSI_", "DOS", "CP", "WINDOWS-"})
        if (name.starts_with(prefix) && parseInteger(std::string_view(name).substr(prefix.size())))
            return "CP" + name.substr(prefix.size());
    if (name.starts_with("ISO8859-")) return "ISO-8859-" + name.substr(8);
    return {};
}

class Converter {
public:
    Converter(const std::string& to, const std::string& from)
        : handle_(iconv_open(to.c_str(), from.c_str())) {}
    ~Converter() {
        if (ready()) iconv_close(handle_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool ready() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

    // Appends what can be converted and gives the number of bytes read before the first fault.
    std::size_t run(std::string_view in, std::string& out) const {
        iconv(handle_, nullptr, nullptr, nullptr, nullptr);
        char* from = const_cast<char*>(in.data()); // iconv does not write there
        std::size_t left = in.size();
        char buffer[512];
        while (left > 0) {
            char* to = buffer;
            std::size_t room = sizeof buffer;
            const std::size_t result = iconv(handle_, &from, &left, &to, &room);
            out.append(buffer, sizeof buffer - room);
            if (result == static_cast<std::size_t>(-1) && errno != E2BIG) break;
        }
        return in.size() - left;
    }

private:
    iconv_t handle_;
};

std::size_t leadLength(char c) {
    const auto lead = static_cast<unsigned char>(c);
    return lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

void appendEscape(std::string& out, std::string_view character) {
    forEachUtf16(wide(character), [&](char16_t unit) {
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\U+%04X", static_cast<unsigned>(unit));
        out += escape;
    });
}

} // namespace

struct CodePage::Converters {
    explicit Converters(const std::string& name) : decoder("UTF-8", name), encoder(name, "UTF-8") {}
    Converter decoder, encoder;
    bool utf8 = false, known = true;
};

CodePage::CodePage(std::string_view name) {
    const std::string library = libraryName(name);
    converters_ = std::make_unique<Converters>(library.empty() ? "CP1252" : library);
    converters_->utf8 = library == "UTF-8";
    converters_->known = !library.empty() && converters_->decoder.ready() && converters_->encoder.ready();
    if (!library.empty() && !converters_->known) {
        converters_ = std::make_unique<Converters>("CP1252");
        converters_->known = false;
    }
}

CodePage::~CodePage() = default;
CodePage::CodePage(CodePage&&) noexcept = default;
CodePage& CodePage::operator=(CodePage&&) noexcept = default;

bool CodePage::isUtf8() const { return converters_->utf8; }
bool CodePage::wasKnown() const { return converters_->known; }

void CodePage::decode(std::string_view bytes, std::string& out) const {
    if (isAscii(bytes)) {
        out += bytes;
        return;
    }
    if (isUtf8()) {
        out += utf8(wide(bytes));
        return;
    }
    while (!bytes.empty()) {
        bytes.remove_prefix(converters_->decoder.run(bytes, out));
        if (bytes.empty()) break;
        out += "\xEF\xBF\xBD";
        bytes.remove_prefix(1);
    }
}

std::string CodePage::decode(std::string_view bytes) const {
    std::string out;
    out.reserve(bytes.size() * 2);
    decode(bytes, out);
    return out;
}

CodePage::Encoded CodePage::encode(std::string_view text) const {
    Encoded result;
    if (isUtf8() || isAscii(text)) {
        result.bytes = text;
        return result;
    }
    while (!text.empty()) {
        text.remove_prefix(converters_->encoder.run(text, result.bytes));
        if (text.empty()) break;
        const std::size_t length = std::min(leadLength(text.front()), text.size());
        appendEscape(result.bytes, text.substr(0, length));
        text.remove_prefix(length);
        ++result.lost;
    }
    return result;
}

namespace {

std::optional<unsigned> hexAt(std::string_view text, std::size_t at) {
    unsigned value = 0;
    if (at + 4 > text.size()) return std::nullopt;
    const auto [end, error] = std::from_chars(text.data() + at, text.data() + at + 4, value, 16);
    if (error != std::errc() || end != text.data() + at + 4) return std::nullopt;
    return value;
}

bool multiByte(std::string_view text, std::size_t at, std::string& out) {
    thread_local const CodePage pages[] = {CodePage("ANSI_932"), CodePage("ANSI_950"), CodePage("ANSI_949"),
                                           CodePage("ANSI_1361"), CodePage("ANSI_936")};
    if (at >= text.size() || text[at] < '1' || text[at] > '5') return false;
    const auto code = hexAt(text, at + 1);
    if (!code) return false;
    const char bytes[] = {static_cast<char>(*code >> 8), static_cast<char>(*code & 0xFF)};
    const bool single = *code < 0x100;
    pages[text[at] - '1'].decode({bytes + single, single ? 1u : 2u}, out);
    return true;
}

// Length of the escape at `at` after adding what it means, 0 when there is none.
std::size_t escapeAt(std::string_view text, std::size_t at, std::string& out) {
    const std::string_view head = text.substr(at, 3);
    if (head == "\\U+" || head == "\\u+") {
        const auto first = hexAt(text, at + 3);
        if (!first) return 0;
        std::wstring character(1, static_cast<wchar_t>(*first));
        const bool high = *first >= 0xD800 && *first < 0xDC00;
        if (high && (text.substr(at + 7, 3) == "\\U+" || text.substr(at + 7, 3) == "\\u+")) {
            if (const auto second = hexAt(text, at + 10); second && *second >= 0xDC00 && *second < 0xE000) {
                out += utf8(character + static_cast<wchar_t>(*second));
                return 14;
            }
        }
        out += utf8(character);
        return 7;
    }
    if (head == "\\M+" || head == "\\m+") return multiByte(text, at + 3, out) ? 8 : 0;
    return 0;
}

} // namespace

std::string decodeEscapes(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t next = std::min(text.find('\\', i), text.size());
        out.append(text, i, next - i);
        i = next;
        if (i == text.size()) break;
        const std::size_t length = escapeAt(text, i, out);
        if (length == 0) out += text[i];
        i += length == 0 ? 1 : length;
    }
    return out;
}

namespace {

std::wstring fromUtf16Bytes(std::string_view bytes, bool bigEndian) {
    std::u16string units(bytes.size() / 2, u'\0');
    for (size_t i = 0; i < units.size(); ++i) {
        const auto low = static_cast<unsigned char>(bytes[2 * i + bigEndian]);
        const auto high = static_cast<unsigned char>(bytes[2 * i + !bigEndian]);
        units[i] = static_cast<char16_t>(low | high << 8);
    }
    return fromUtf16(units);
}

// Zeros at even and at odd places. Texts with numbers and line ends in them have many on one side in UTF-16,
// and none in any other encoding.
struct Zeros {
    size_t even = 0, odd = 0;
};
Zeros countZeros(std::string_view bytes) {
    Zeros zeros;
    for (size_t i = 0; i < bytes.size(); ++i)
        if (bytes[i] == 0) ++(i % 2 == 0 ? zeros.even : zeros.odd);
    return zeros;
}

} // namespace

std::wstring textFileContents(std::string_view bytes) {
    using namespace std::string_view_literals;
    if (bytes.starts_with("\xEF\xBB\xBF"sv)) return wide(bytes.substr(3));
    if (bytes.starts_with("\xFF\xFE"sv)) return fromUtf16Bytes(bytes.substr(2), false);
    if (bytes.starts_with("\xFE\xFF"sv)) return fromUtf16Bytes(bytes.substr(2), true);
    const CodePage chinese("GBK");
    if (bytes.starts_with("\x84\x31\x95\x33"sv)) return wide(chinese.decode(bytes.substr(4)));
    const Zeros zeros = countZeros(bytes.substr(0, 65536));
    if (zeros.even + zeros.odd > std::min<size_t>(bytes.size(), 65536) / 8)
        return fromUtf16Bytes(bytes, zeros.even > zeros.odd);
    return isUtf8(bytes) ? wide(bytes) : wide(chinese.decode(bytes));
}

} // namespace host
