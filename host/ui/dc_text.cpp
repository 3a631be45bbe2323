// Text in device contexts: measured and placed through host/gi's metrics.
#include <cmath>

#include "host/ui/dc.h"

using namespace host;

namespace {

FontLook lookOf(const DeviceContext& device) {
    const LOGFONTW* font = fontOf(device.state.font);
    return fontLook(font ? *font : LOGFONTW());
}
std::wstring_view lengthOf(LPCTSTR text, int length) {
    if (!text) return {};
    return length < 0 ? std::wstring_view(text) : std::wstring_view(text, std::size_t(length));
}
int widthOf(const FontLook& look, std::wstring_view text) {
    return int(std::ceil(textWidth(look, text) - 1e-6));
}

struct Shown {
    std::wstring text;
    std::size_t underlined = std::wstring::npos;
};
// "&" marks the letter behind it, "&&" is one "&".
Shown withoutPrefix(std::wstring_view text) {
    Shown shown;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'&' && i + 1 < text.size()) {
            ++i;
            if (text[i] != L'&') shown.underlined = shown.text.size();
        } else if (text[i] == L'&') {
            continue;
        }
        shown.text += text[i];
    }
    return shown;
}

bool isEastern(wchar_t c) { return c >= 0x2E80; }

// Lines of a text for DrawText: at line ends, and at blanks or between ideographs where they get too wide.
std::vector<std::wstring> brokenLines(const std::wstring& text, const FontLook& look, int width,
                                      UINT format) {
    std::vector<std::wstring> lines(1);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'\r') continue;
        if (text[i] == L'\n' && !(format & DT_SINGLELINE)) {
            lines.emplace_back();
            continue;
        }
        lines.back() += text[i];
        if (!(format & DT_WORDBREAK) || text[i] == L' ' || widthOf(look, lines.back()) <= width) continue;
        std::wstring& line = lines.back();
        std::size_t cut = isEastern(text[i]) ? line.size() - 1 : line.rfind(L' ', line.size() - 2);
        if (cut == std::wstring::npos || cut == 0) continue; // one word alone
        std::wstring rest = line.substr(cut);
        line.resize(cut);
        if (!rest.empty() && rest.front() == L' ') rest.erase(0, 1);
        lines.push_back(std::move(rest));
    }
    return lines;
}

std::wstring shortened(std::wstring line, const FontLook& look, int width) {
    if (widthOf(look, line) <= width) return line;
    while (!line.empty() && widthOf(look, line + L"...") > width) line.pop_back();
    return line + L"...";
}

void addText(DeviceContext& device, const FontLook& look, double x, double baseline, std::wstring_view text,
             std::size_t underlined = std::wstring::npos) {
    Primitive line;
    line.kind = Primitive::Kind::text;
    line.text = text;
    line.face = look.face;
    line.height = look.capital;
    line.underlined = look.underlined;
    line.fill = device.state.textColor;
    line.points = {{x + device.state.origin.x, baseline + device.state.origin.y}};
    device.add(line);
    if (underlined >= text.size()) return;
    const double from = x + textWidth(look, text.substr(0, underlined));
    const double to = x + textWidth(look, text.substr(0, underlined + 1));
    Primitive stroke;
    stroke.pen = StrokePen{device.state.textColor, 1, PS_SOLID};
    const double y = std::floor(baseline) + 1.5 + device.state.origin.y;
    stroke.points = {{from + device.state.origin.x, y}, {to + device.state.origin.x, y}};
    device.add(stroke);
}

} // namespace

BOOL CDC::TextOut(int x, int y, LPCTSTR text, int length) {
    if (!device()) return FALSE;
    const std::wstring_view line = lengthOf(text, length);
    const FontLook look = lookOf(*device());
    const int width = widthOf(look, line);
    const UINT align = device()->state.textAlign;
    if ((align & TA_CENTER) == TA_CENTER)
        x -= width / 2;
    else if (align & TA_RIGHT)
        x -= width;
    double baseline = y + look.ascent;
    if ((align & TA_BASELINE) == TA_BASELINE)
        baseline = y;
    else if (align & TA_BOTTOM)
        baseline = y - look.descent;
    if (device()->state.backMode == OPAQUE) {
        const COLORREF back = GetBkColor();
        FillSolidRect(x, int(baseline) - look.ascent, width, look.ascent + look.descent, back);
    }
    addText(*device(), look, x, baseline, line);
    return TRUE;
}

int CDC::DrawText(LPCTSTR text, int length, LPRECT rect, UINT format) {
    if (!device()) return 0;
    const FontLook look = lookOf(*device());
    Shown shown{std::wstring(lengthOf(text, length))};
    if (!(format & DT_NOPREFIX)) shown = withoutPrefix(shown.text);
    const CRect box(*rect);
    std::vector<std::wstring> lines = brokenLines(shown.text, look, box.Width(), format);
    const int pitch = look.ascent + look.descent, height = pitch * int(lines.size());
    if (format & DT_CALCRECT) {
        int widest = 0;
        for (const std::wstring& line : lines) widest = std::max(widest, widthOf(look, line));
        rect->right = rect->left + widest, rect->bottom = rect->top + height;
        return height;
    }
    int y = box.top;
    if (format & DT_SINGLELINE) {
        if (format & DT_VCENTER) y = box.top + (box.Height() - height) / 2;
        if (format & DT_BOTTOM) y = box.bottom - height;
    }
    const int saved = SaveDC();
    if (!(format & DT_NOCLIP)) IntersectClipRect(box);
    for (std::wstring& line : lines) {
        if (format & DT_END_ELLIPSIS) line = shortened(line, look, box.Width());
        const int spare = box.Width() - widthOf(look, line);
        const int x = box.left + ((format & DT_CENTER) ? spare / 2 : (format & DT_RIGHT) ? spare : 0);
        if (device()->state.backMode == OPAQUE)
            FillSolidRect(x, y, widthOf(look, line), pitch, COLORREF(GetBkColor()));
        addText(*device(), look, x, y + look.ascent, line,
                lines.size() == 1 ? shown.underlined : line.size());
        y += pitch;
    }
    RestoreDC(saved);
    return height;
}

CSize CDC::GetTextExtent(LPCTSTR text, int length) const {
    if (!device()) return {};
    const FontLook look = lookOf(*device());
    return {widthOf(look, lengthOf(text, length)), look.ascent + look.descent};
}
BOOL CDC::GetTextMetrics(TEXTMETRICW* metrics) const {
    if (!device()) return FALSE;
    const FontLook look = lookOf(*device());
    const LOGFONTW* font = fontOf(device()->state.font);
    *metrics = {};
    metrics->tmAscent = look.ascent, metrics->tmDescent = look.descent;
    metrics->tmHeight = look.ascent + look.descent;
    if (font && font->lfHeight < 0)
        metrics->tmInternalLeading = std::max(0, metrics->tmHeight + font->lfHeight);
    metrics->tmWeight = font ? font->lfWeight : 400;
    metrics->tmAveCharWidth = LONG(std::lround(textWidth(look, L"x")));
    metrics->tmMaxCharWidth = LONG(std::lround(textWidth(look, L"W")));
    return TRUE;
}

BOOL TextOutW(HDC dc, int x, int y, LPCWSTR text, int length) {
    CDC* wrapper = CDC::FromHandle(dc);
    return wrapper && wrapper->TextOut(x, y, text, length);
}
BOOL GetTextExtentPoint32W(HDC dc, LPCWSTR text, int length, SIZE* size) {
    const CDC* wrapper = CDC::FromHandle(dc);
    if (!wrapper) return FALSE;
    *size = wrapper->GetTextExtent(text, length);
    return TRUE;
}
BOOL GetTextMetricsW(HDC dc, TEXTMETRICW* metrics) {
    const CDC* wrapper = CDC::FromHandle(dc);
    return wrapper && wrapper->GetTextMetrics(metrics);
}
int DrawTextW(HDC dc, LPCWSTR text, int length, RECT* rect, UINT format) {
    CDC* wrapper = CDC::FromHandle(dc);
    return wrapper ? wrapper->DrawText(text, length, rect, format) : 0;
}
