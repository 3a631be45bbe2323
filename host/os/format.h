// Text formatting by the host's rules, which differ from the C library's in the kinds of text and
// the sizes of integers. Used by CString::Format and by everything that prints.
#pragma once

#include <cstdarg>
#include <string>

namespace host {

// Formats by `format`:
//   %s %ls wide text, %S %hs narrow text (UTF-8), %c wide and %C narrow character;
//   %d %i %u %x %X %o 32 bits, with h 16, with l 32, with ll, I64 or j 64, with I, z or t the size of a
//   pointer; %f %F %e %E %g %G %a %A double, always with a decimal point; %p pointer; %% a percent sign.
// Flags (- + blank # 0), width and precision as usual, also *; both are held to 4096. A null text
// prints as "(null)"; an unknown conversion is copied as it stands and takes no argument.
std::wstring formatText(const wchar_t* format, va_list arguments);

// The same with the arguments themselves.
std::wstring formatArguments(const wchar_t* format, ...);

} // namespace host
