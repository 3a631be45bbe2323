// Numbers as text and back, the same in every locale.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace host {

// The shortest text that reads back as the same double, always with a decimal point or an exponent:
// 0 gives "0.0", 12.5 "12.5", 1e20 "1e+20". Not-a-number and infinities give "0.0", which is what a
// drawing file may hold.
std::string formatReal(double value);

// The same, appended; allocates only when `out` must grow.
void appendReal(std::string& out, double value);

// Fixed notation with `decimals` digits (0 to 17) after the point, no trailing zeros when `trim`;
// "-0" is written as "0".
std::string formatFixed(double value, int decimals, bool trim = false);

// Whole text to a number: blanks around it and a leading "+" are let pass, anything else left over
// gives nothing, as do numbers out of range. "nan" and "inf" are no numbers here.
std::optional<double> parseReal(std::string_view text);
std::optional<double> parseReal(std::wstring_view text);
std::optional<std::int64_t> parseInteger(std::string_view text, int base = 10);
std::optional<std::int64_t> parseInteger(std::wstring_view text, int base = 10);

// The number that the text begins with, as the C library's wcstod reads it: `value` 0 and `length` 0
// when there is none. Blanks before it count to the length.
struct LeadingReal {
    double value;
    std::size_t length;
};
LeadingReal leadingReal(std::wstring_view text);

} // namespace host
