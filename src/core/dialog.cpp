// The dialog base: scaling, and the controls that it draws itself.
#include "core/dialog.h"

#include <algorithm>

#include "core/dialog_language.h"
#include "core/dialog_resources.h"
#include "core/dialog_text.h"
#include "core/host/system.h"

namespace corvane {
namespace {

constexpr double kReferenceWidth = 1920, kReferenceHeight = 1080, kReferenceDpi = 96;
constexpr UINT kKeepPlace = SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE;

bool isStatic(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    return host::equalNoCase(name, L"Static");
}
DWORD staticType(HWND window) { return DWORD(GetWindowLongW(window, GWL_STYLE)) & SS_TYPEMASK; }
void setStyle(HWND window, DWORD style) {
    SetWindowLongW(window, GWL_STYLE, LONG(style));
    SetWindowPos(window, nullptr, 0, 0, 0, 0, kKeepPlace | SWP_NOSIZE | SWP_FRAMECHANGED);
    InvalidateRect(window, nullptr, TRUE);
}
HFONT fontOfWindow(HWND window) { return reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)); }
HFONT makeScaledFont(HFONT original, double scale) {
    LOGFONTW font;
    if (!original || GetObjectW(original, sizeof font, &font) == 0) return nullptr;
    font.lfHeight = int(font.lfHeight * scale);
    return CreateFontIndirectW(&font);
}
template <class Visit> void forEachChild(HWND parent, Visit visit) {
    for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) visit(child);
}

} // namespace

int ScaledLength(int length, double scale) { return int(length * scale + 0.5); }

double DialogScaleFor(int screenWidth, int screenHeight, double dpiFactor) {
    const auto aboveNothing = [](double value) { return value > 0 ? value : 1.0; };
    const double across = screenWidth < 1 ? 1.0 : screenWidth / kReferenceWidth;
    const double down = screenHeight < 1 ? 1.0 : screenHeight / kReferenceHeight;
    return aboveNothing(aboveNothing(std::min(across, down)) / aboveNothing(dpiFactor));
}

CMyAcUiDialog::CMyAcUiDialog(UINT templateId, CWnd* parent) : CAcUiDialog(templateId, parent) {}
CMyAcUiDialog::~CMyAcUiDialog() = default;

BEGIN_MESSAGE_MAP(CMyAcUiDialog, CAcUiDialog)
ON_WM_DRAWITEM()
ON_MESSAGE(kPostInitTranslate, &CMyAcUiDialog::OnPostInitTranslate)
END_MESSAGE_MAP()

BOOL CMyAcUiDialog::OnInitDialog() {
    CAcUiDialog::OnInitDialog();
    ApplyDialogScale();
    TakeOverPictureStatics();
    PostMessageW(m_hWnd, kPostInitTranslate, 0, 0);
    return TRUE;
}

LRESULT CMyAcUiDialog::OnPostInitTranslate(WPARAM, LPARAM) {
    TranslateDialog(this);
    return 0;
}

double CMyAcUiDialog::ComputeDialogScale() const {
    int width = GetSystemMetrics(0), height = GetSystemMetrics(1);
    MONITORINFO monitor;
    if (GetMonitorInfoW(MonitorFromWindow(m_hWnd, 2), &monitor)) {
        const CRect area(monitor.rcMonitor);
        if (area.Width() > 0 && area.Height() > 0) width = area.Width(), height = area.Height();
    }
    return DialogScaleFor(width, height, host_door::windowDpi(m_hWnd) / kReferenceDpi);
}

void CMyAcUiDialog::ApplyDialogScale() {
    if (scaled) return;
    scaled = true;
    CRect client;
    ::GetClientRect(m_hWnd, client);
    baseClientWidth = client.Width();
    baseClientHeight = client.Height();
    if (baseClientWidth < 1 || baseClientHeight < 1) return;
    scale = ComputeDialogScale();
    scaleWindow();
    scaleChildren();
    scaleFonts();
    TakeOverTextStatics();
    CenterWindow();
}

void CMyAcUiDialog::scaleWindow() {
    CRect frame(0, 0, ScaledLength(baseClientWidth, scale), ScaledLength(baseClientHeight, scale));
    if (frame.IsRectEmpty()) return;
    AdjustWindowRectEx(frame, DWORD(GetWindowLongW(m_hWnd, GWL_STYLE)), FALSE,
                       DWORD(GetWindowLongW(m_hWnd, GWL_EXSTYLE)));
    ::SetWindowPos(m_hWnd, nullptr, 0, 0, frame.Width(), frame.Height(), kKeepPlace);
}

void CMyAcUiDialog::scaleChildren() {
    forEachChild(m_hWnd, [this](HWND child) {
        CRect r;
        ::GetWindowRect(child, r);
        MapWindowPoints(nullptr, m_hWnd, r);
        const int left = ScaledLength(r.left, scale), top = ScaledLength(r.top, scale);
        ::SetWindowPos(child, nullptr, left, top, std::max(1, ScaledLength(r.right, scale) - left),
                       std::max(1, ScaledLength(r.bottom, scale) - top), SWP_NOZORDER | SWP_NOACTIVATE);
    });
}

void CMyAcUiDialog::scaleFonts() {
    const HFONT original = fontOfWindow(m_hWnd);
    if (!dialogFontMade)
        if (const HFONT font = makeScaledFont(original, scale)) {
            dialogFontMade = dialogFont.Attach(font) != FALSE;
            SendMessageW(m_hWnd, WM_SETFONT, WPARAM(font), TRUE);
        }
    forEachChild(m_hWnd, [&](HWND child) {
        const HFONT own = fontOfWindow(child);
        if (const HFONT font = scaledFont(own ? own : original))
            SendMessageW(child, WM_SETFONT, WPARAM(font), TRUE);
    });
}

HFONT CMyAcUiDialog::scaledFont(HFONT original) {
    if (const auto known = scaledFonts.find(original); known != scaledFonts.end()) return *known->second;
    const HFONT font = makeScaledFont(original, scale);
    if (!font) return nullptr;
    auto owned = std::make_unique<CFont>();
    owned->Attach(font);
    scaledFonts.emplace(original, std::move(owned));
    return font;
}

void CMyAcUiDialog::TakeOverPictureStatics() {
    constexpr DWORD kPictureBits = 18;
    forEachChild(m_hWnd, [this](HWND child) {
        if (!isStatic(child) || staticType(child) != SS_BITMAP || pictureStatics.contains(child)) return;
        const auto bitmap = reinterpret_cast<HBITMAP>(SendMessageW(child, STM_GETIMAGE, IMAGE_BITMAP, 0));
        if (!bitmap) return;
        pictureStatics.emplace(child, bitmap);
        setStyle(child, (DWORD(GetWindowLongW(child, GWL_STYLE)) & ~kPictureBits) | SS_OWNERDRAW);
    });
}

void CMyAcUiDialog::TakeOverTextStatics() {
    forEachChild(m_hWnd, [this](HWND child) {
        if (!isStatic(child)) return;
        const DWORD type = staticType(child);
        if (type == SS_BITMAP || type == SS_ICON || type == SS_OWNERDRAW) return;
        if (WindowText(child).find_first_of(L"\r\n") == std::wstring::npos) return;
        setStyle(child,
                 (DWORD(GetWindowLongW(child, GWL_STYLE)) & ~SS_TYPEMASK) | SS_OWNERDRAW | SS_NOPREFIX);
        textStatics.push_back(child);
    });
}

void CMyAcUiDialog::OnDrawItem(int id, LPDRAWITEMSTRUCT draw) {
    if (std::find(textStatics.begin(), textStatics.end(), draw->hwndItem) != textStatics.end())
        return drawTextStatic(*draw);
    if (const auto picture = pictureStatics.find(draw->hwndItem); picture != pictureStatics.end())
        return drawPictureStatic(*draw, picture->second);
    CAcUiDialog::OnDrawItem(id, draw);
}

void CMyAcUiDialog::drawPictureStatic(const DRAWITEMSTRUCT& draw, HBITMAP bitmap) {
    const CRect target(draw.rcItem);
    BITMAP size;
    if (target.IsRectEmpty() || GetObjectW(bitmap, sizeof size, &size) == 0 || size.bmWidth < 1 ||
        size.bmHeight < 1)
        return;
    CDC* dc = CDC::FromHandle(draw.hDC);
    CDC memory;
    if (!memory.CreateCompatibleDC(dc)) return;
    const int saved = dc->SaveDC();
    dc->IntersectClipRect(target);
    ::FillRect(draw.hDC, target, GetSysColorBrush(COLOR_BTNFACE));
    dc->SetStretchBltMode(HALFTONE);
    dc->SetBrushOrg(0, 0);
    const HGDIOBJ before = memory.SelectObject(HGDIOBJ(bitmap));
    dc->StretchBlt(target.left, target.top, target.Width(), target.Height(), &memory, 0, 0, size.bmWidth,
                   size.bmHeight, SRCCOPY);
    memory.SelectObject(before);
    dc->RestoreDC(saved);
}

void CMyAcUiDialog::drawTextStatic(const DRAWITEMSTRUCT& draw) {
    CDC* dc = CDC::FromHandle(draw.hDC);
    ::FillRect(draw.hDC, &draw.rcItem, GetSysColorBrush(COLOR_BTNFACE));
    const int saved = dc->SaveDC();
    const HFONT own = fontOfWindow(draw.hwndItem);
    dc->SelectObject(HGDIOBJ(own ? own : fontOfWindow(m_hWnd)));
    dc->SetBkMode(TRANSPARENT);
    dc->SetTextColor(GetSysColor(COLOR_WINDOWTEXT));
    TEXTMETRICW metrics;
    dc->GetTextMetrics(&metrics);
    const TextArea area = TextAreaOf(draw.rcItem, metrics.tmHeight + metrics.tmExternalLeading);
    const auto lines = BreakLines(WindowText(draw.hwndItem), area.width, [&](std::wstring_view line) {
        return int(dc->GetTextExtent(line.data(), int(line.size())).cx);
    });
    int y = area.top;
    for (const std::wstring& line : lines) {
        if (y + area.pitch > area.bottom) break;
        dc->TextOut(area.left, y, line.c_str(), int(line.size()));
        y += area.pitch;
    }
    dc->RestoreDC(saved);
}

void CMyAcUiDialog::ShowReal(int id, double value) {
    CString text;
    text.Format(realForm, value);
    SetDlgItemText(id, text);
}

double CMyAcUiDialog::RealIn(int id, double present) const {
    CString text, shown;
    GetDlgItemText(id, text);
    shown.Format(realForm, present);
    return text == shown ? present : host::parseReal(std::wstring_view(text.str())).value_or(present);
}

INT_PTR RunModal(CDialog& dialog) {
    const CAcModuleResourceOverride ours(host_door::moduleResources());
    return dialog.DoModal();
}

} // namespace corvane
