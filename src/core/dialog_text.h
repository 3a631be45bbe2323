// Texts of several lines as the dialog base sets them: where lines break and how far they stand apart.
// Measuring and drawing are the dialog's.
#pragma once
#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "core/host/dialogs.h"

namespace corvane {

// Where the lines of a text stand, in pixels.
struct TextArea {
    int left, top, bottom, width, pitch;
};
// For a control's rectangle: lines one and a half times their height apart.
inline TextArea TextAreaOf(const RECT& control, int lineHeight) {
    constexpr int kAside = 6, kAbove = 4;
    return {control.left + kAside, control.top + kAbove, control.bottom - kAbove,
            std::max(1, control.right - control.left - 2 * kAside),
            std::max(1, int(std::max(1, lineHeight) * 1.5 + 0.5))};
}

// The lines of the text, none wider than the width but for a single character that is. Breaks at line feeds
// and between any two characters, as Chinese is set; carriage returns count for nothing. `measure` gives the
// width of a piece of text.
template <class Measure>
std::vector<std::wstring> BreakLines(std::wstring_view text, int width, Measure measure) {
    std::vector<std::wstring> lines(1);
    for (const wchar_t c : text) {
        if (c == L'\r') continue;
        if (c == L'\n') {
            lines.emplace_back();
            continue;
        }
        std::wstring& line = lines.back();
        line += c;
        if (line.size() > 1 && measure(std::wstring_view(line)) > width) {
            line.pop_back();
            lines.emplace_back(1, c);
        }
    }
    return lines;
}

} // namespace corvane
