// Built on <charconv>, which knows no locale and writes the shortest round-trip text.
#include "host/os/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace host {
namespace {

bool isBlank(wchar_t c) { return c == L' ' || (c >= 9 && c <= 13); }

// Wide numbers are ASCII; anything else ends them, so a character that cannot be one will do.
std::string narrowed(std::wstring_view text) {
    std::string out(text.size(), ' ');
    std::transform(text.begin(), text.end(), out.begin(),
                   [](wchar_t c) { return c > 0 && c < 0x80 ? static_cast<char>(c) : '\x01'; });
    return out;
}

std::string_view bare(std::string_view text) {
    while (!text.empty() && isBlank(static_cast<unsigned char>(text.front()))) text.remove_prefix(1);
    while (!text.empty() && isBlank(static_cast<unsigned char>(text.back()))) text.remove_suffix(1);
    if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
    return text;
}

} // namespace

void appendReal(std::string& out, double value) {
    if (!std::isfinite(value)) {
        out += "0.0";
        return;
    }
    char buffer[32];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    out.append(buffer, end);
    const bool plain = std::none_of(buffer, end, [](char c) { return c == '.' || c == 'e'; });
    if (plain) out += ".0";
}

std::string formatReal(double value) {
    std::string out;
    appendReal(out, value);
    return out;
}

std::string formatFixed(double value, int decimals, bool trim) {
    if (!std::isfinite(value)) value = 0;
    char buffer[400]; // 309 digits before the point, 17 after it
    const int digits = std::clamp(decimals, 0, 17);
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, digits).ptr;
    std::string out(buffer, end);
    if (trim && out.find('.') != std::string::npos) {
        out.erase(out.find_last_not_of('0') + 1);
        if (out.back() == '.') out.pop_back();
    }
    if (out.front() == '-' && out.find_first_of("123456789") == std::string::npos) out.erase(0, 1);
    return out;
}

std::optional<double> parseReal(std::string_view text) {
    const std::string_view digits = bare(text);
    double value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    // Numbers too small to hold are zero to everyone; too large ones are not numbers.
    if (error == std::errc::result_out_of_range && end == digits.data() + digits.size()) {
        const std::size_t exponent = digits.find_first_of("eE");
        if (exponent != std::string_view::npos && exponent + 1 < digits.size() && digits[exponent + 1] == '-')
            return 0.0;
        return std::nullopt;
    }
    if (error != std::errc() || end != digits.data() + digits.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::optional<double> parseReal(std::wstring_view text) { return parseReal(narrowed(text)); }

std::optional<std::int64_t> parseInteger(std::string_view text, int base) {
    const std::string_view digits = bare(text);
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
    if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
    return value;
}

std::optional<std::int64_t> parseInteger(std::wstring_view text, int base) {
    return parseInteger(narrowed(text), base);
}

LeadingReal leadingReal(std::wstring_view text) {
    std::size_t from = 0;
    while (from < text.size() && isBlank(text[from])) ++from;
    const bool plus = from + 1 < text.size() && text[from] == L'+' && text[from + 1] != L'-';
    const std::string digits = narrowed(text.substr(from + plus, 400));
    double value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || !std::isfinite(value)) return {0, 0};
    return {value, from + plus + static_cast<std::size_t>(end - digits.data())};
}

} // namespace host
