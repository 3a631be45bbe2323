// Placing and painting the tooltip.
#include "deform/cage/scale_tooltip.h"

namespace corvane::deform {

BEGIN_MESSAGE_MAP(ScaleTooltip, CWnd)
ON_WM_PAINT()
END_MESSAGE_MAP()

void ScaleTooltip::show(const CString& text, CPoint mouse) {
    constexpr int kAway = 25, kRoomX = 20, kRoomY = 10;
    if (!m_hWnd) {
        constexpr int kTenthsOfPoint = 90;
        font_.CreatePointFont(kTenthsOfPoint, L"Microsoft YaHei");
        const CRect somewhere(0, 0, 1, 1);
        CreateEx(WS_EX_TOPMOST | WS_EX_TOOLWINDOW, AfxRegisterWndClass(0), L"", WS_POPUP, somewhere, nullptr,
                 0);
    }
    SetWindowText(text);
    CClientDC dc(this);
    dc.SelectObject(&font_);
    const CSize size = dc.GetTextExtent(text);
    const int width = size.cx + kRoomX, height = size.cy + kRoomY;
    SetWindowPos(nullptr, mouse.x + kAway, mouse.y - height / 2, width, height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    ShowWindow(SW_SHOWNOACTIVATE);
    Invalidate();
}

void ScaleTooltip::hide() {
    if (m_hWnd && IsWindowVisible()) ShowWindow(SW_HIDE);
}

void ScaleTooltip::OnPaint() {
    constexpr COLORREF kGround = 0xdcffff, kBorder = 0x808080;
    CPaintDC dc(this);
    CRect area;
    GetClientRect(area);
    dc.FillSolidRect(area, kGround);
    CBrush border(kBorder);
    dc.FrameRect(area, &border);
    CString text;
    GetWindowText(text);
    dc.SelectObject(&font_);
    dc.SetBkMode(TRANSPARENT);
    dc.DrawText(text, area, DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOPREFIX);
}

} // namespace corvane::deform
