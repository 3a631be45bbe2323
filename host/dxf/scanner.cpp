// The common part of the scanner and its text form; the binary form stands in scanner_binary.cpp.
#include "host/dxf/scanner.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

#include "host/dxf/sentinel.h"

namespace host::dxf {
namespace {

constexpr int kTyped = 1100;

std::array<GroupType, kTyped> makeTypes() {
    std::array<GroupType, kTyped> types{};
    for (int code = 0; code < kTyped; ++code) types[size_t(code)] = groupType(code);
    return types;
}

bool isPadding(char c) { return static_cast<unsigned char>(c) <= ' '; }

// What C libraries print for numbers that are none: nan, inf, 1.#IND, -1.#QNAN ...
bool isNoNumber(std::string_view text) {
    if (text.find('#') != std::string_view::npos) return true;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
    const std::string_view head = text.substr(0, 3);
    for (std::string_view word : {"nan", "NaN", "NAN", "inf", "Inf", "INF"})
        if (head == word) return true;
    return false;
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    const char small = static_cast<char>(c | 0x20);
    return small >= 'a' && small <= 'f' ? small - 'a' + 10 : -1;
}

// A piece of the file for a message: printable ASCII, not too much of it.
std::string shown(std::string_view found) {
    std::string out;
    for (char c : found.substr(0, 40)) out += c >= ' ' && c < 127 ? c : '?';
    return out;
}

// Exact for numbers of up to 15 digits: digits and power of ten are doubles without error, and so their
// quotient is rounded once (Clinger 1990). False for all others.
bool readPlainReal(std::string_view text, double& value) {
    static constexpr double kPowers[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                         1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const char* at = text.data();
    const char* const end = at + text.size();
    const bool negative = at != end && *at == '-';
    at += negative;
    std::int64_t digits = 0;
    int count = 0, decimals = -1;
    for (; at != end; ++at) {
        if (*at >= '0' && *at <= '9') {
            digits = digits * 10 + (*at - '0');
            if (++count > 15) return false;
            decimals += decimals >= 0;
        } else if (*at == '.' && decimals < 0) {
            decimals = 0;
        } else {
            return false;
        }
    }
    if (count == 0) return false;
    const double whole = static_cast<double>(digits) / kPowers[decimals < 0 ? 0 : decimals];
    value = negative ? -whole : whole;
    return true;
}

constexpr const char* kNotFinite = "a value that is no finite number was replaced by 0";

const std::array<GroupType, kTyped> kTypes = makeTypes();

} // namespace

GroupType typeOf(int code) { return code >= 0 && code < kTyped ? kTypes[size_t(code)] : GroupType::text; }

std::string_view bare(std::string_view text) {
    while (!text.empty() && isPadding(text.front())) text.remove_prefix(1);
    while (!text.empty() && isPadding(text.back())) text.remove_suffix(1);
    return text;
}

Scanner::Scanner(std::string_view bytes) : bytes_(bytes) {
    if (bytes_.starts_with(kBinarySentinel)) {
        binary_ = true;
        at_ = kBinarySentinel.size();
        // The first code is 0, or 999 for a comment: one byte in R12 and before, two since.
        const std::string_view head = bytes_.substr(at_, 2);
        shortCodes_ = head.starts_with('\xFF') || (head.size() == 2 && head[0] == '\0' && head[1] != '\0');
        return;
    }
    if (bytes_.starts_with("\xEF\xBB\xBF")) marked_ = true, at_ = 3;
    // Old Macintosh files end their lines with a carriage return alone.
    const std::string_view head = bytes_.substr(0, 4096);
    if (head.find('\n') == std::string_view::npos && head.find('\r') != std::string_view::npos)
        lineEnd_ = '\r';
}

Scanner::Step Scanner::next(Group& group) {
    do {
        repair_ = nullptr;
        const Step step = binary_ ? nextBinary(group) : nextText(group);
        if (step != Step::group) return step;
    } while (group.code == 999);
    return Step::group;
}

bool Scanner::takeLine(std::string_view& line) {
    if (at_ >= bytes_.size()) return false;
    const char* from = bytes_.data() + at_;
    const void* end = std::memchr(from, lineEnd_, bytes_.size() - at_);
    const size_t length = end ? size_t(static_cast<const char*>(end) - from) : bytes_.size() - at_;
    at_ += length + (end ? 1 : 0);
    ++lines_;
    line = {from, length};
    while (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    return true;
}

bool Scanner::onlyPaddingLeft() const {
    for (size_t i = at_; i < bytes_.size(); ++i)
        if (!isPadding(bytes_[i])) return false;
    return true;
}

Scanner::Step Scanner::failValue(const char* expected, int code, std::string_view found) {
    return fail("group " + std::to_string(code) + " needs " + expected + ", found \"" + shown(found) + "\"");
}

// The usual line of a code: blanks, a few digits, the line end.
bool Scanner::takePlainCode(int& code) {
    const char* at = bytes_.data() + at_;
    const char* const end = bytes_.data() + bytes_.size();
    while (at != end && *at == ' ') ++at;
    const char* const digits = at;
    for (code = 0; at != end && *at >= '0' && *at <= '9' && at - digits < 4; ++at)
        code = code * 10 + (*at - '0');
    if (at == digits) return false;
    if (at != end && *at == '\r' && lineEnd_ == '\n') ++at;
    if (at == end || *at != lineEnd_) return false;
    at_ = size_t(at - bytes_.data()) + 1;
    ++lines_;
    return true;
}

Scanner::Step Scanner::takeCode(int& code) {
    std::string_view line;
    if (!takeLine(line)) return Step::end;
    line = bare(line);
    if (line.empty() && onlyPaddingLeft()) return Step::end;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), code);
    if (error == std::errc() && end == line.data() + line.size() && code >= -32768 && code <= 32767)
        return Step::group;
    line_ = lines_;
    return fail("a group code was expected, found \"" + shown(line) + "\"");
}

Scanner::Step Scanner::nextText(Group& group) {
    int code = 0;
    if (!takePlainCode(code))
        if (const Step step = takeCode(code); step != Step::group) return step;
    line_ = lines_;
    std::string_view value;
    if (!takeLine(value))
        return fail("the file ends behind group code " + std::to_string(code) + ", before its value");
    group.code = code;
    group.type = typeOf(code);
    switch (group.type) {
    case GroupType::text: group.text = code == 0 ? bare(value) : value; return Step::group;
    case GroupType::real: return readReal(group, value) ? Step::group : failValue("a number", code, value);
    case GroupType::handle: readHandle(group, value); return Step::group;
    case GroupType::bytes: readHex(group, value); return Step::group;
    default: return readInteger(group, value) ? Step::group : failValue("a whole number", code, value);
    }
}

bool Scanner::readReal(Group& group, std::string_view text) {
    text = bare(text);
    constexpr size_t kPlainLength = 17; // a sign, a point and 15 digits
    if (text.size() <= kPlainLength && readPlainReal(text, group.real)) return group.text = {}, true;
    if (text.size() > 1 && text.front() == '+') text.remove_prefix(1);
    group.text = {};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), group.real);
    if (error == std::errc() && end == text.data() + text.size() && std::isfinite(group.real)) return true;
    group.real = 0;
    if (text.empty()) return repair_ = "an empty number was taken as 0", true;
    if (isNoNumber(text)) return repair_ = kNotFinite, true;
    if (error == std::errc::result_out_of_range && end == text.data() + text.size()) {
        // Too small is 0 to everyone; too large is no number.
        if (text.find("e-") == text.npos && text.find("E-") == text.npos) repair_ = kNotFinite;
        return true;
    }
    return false;
}

bool Scanner::readInteger(Group& group, std::string_view text) {
    text = bare(text);
    if (text.size() > 1 && text.front() == '+') text.remove_prefix(1);
    group.text = {};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), group.integer);
    if (error == std::errc() && end == text.data() + text.size()) return true;
    const std::int64_t begun = error == std::errc() ? group.integer : 0;
    group.integer = 0;
    if (text.empty()) return repair_ = "an empty number was taken as 0", true;
    if (isNoNumber(text)) return repair_ = kNotFinite, true;
    double real = 0;
    const auto [realEnd, realError] = std::from_chars(text.data(), text.data() + text.size(), real);
    if (realError == std::errc::result_out_of_range || std::abs(real) > 9e15)
        return repair_ = "a whole number out of range was taken as 0", true;
    if (realError == std::errc() && realEnd == text.data() + text.size()) {
        group.integer = static_cast<std::int64_t>(real);
        return repair_ = "a whole number that stood as a real was cut to its whole part", true;
    }
    group.integer = begun;
    repair_ = "what stood behind a whole number was cut off";
    return error == std::errc();
}

void Scanner::readHandle(Group& group, std::string_view text) {
    text = bare(text);
    group.text = text;
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    group.integer = whole ? static_cast<std::int64_t>(value) : 0;
    // Under code 5 old versions have names as well.
    if (whole || text.empty() || group.code == 5) return;
    group.type = GroupType::text;
    repair_ = "a handle that is no hexadecimal number was kept as text";
}

void Scanner::readHex(Group& group, std::string_view text) {
    text = bare(text);
    chunk_.clear();
    bool good = text.size() % 2 == 0;
    for (size_t i = 0; good && i < text.size(); i += 2) {
        const int high = hexDigit(text[i]), low = hexDigit(text[i + 1]);
        good = high >= 0 && low >= 0;
        chunk_ += static_cast<char>(high * 16 + low);
    }
    // Some programs put plain text there; it stays text.
    group.type = good ? GroupType::bytes : GroupType::text;
    group.text = good ? std::string_view(chunk_) : text;
}

} // namespace host::dxf
