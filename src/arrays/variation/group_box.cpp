// The group boxes round the combo boxes of the two curves, and the combo boxes' items.
#include "arrays/variation/graph_ctrl.h"
#include "core/dialog_language.h"

namespace corvane {
namespace {

COLORREF backgroundOf(VariationGroup group, bool active) {
    return active ? kGroupColors[group].background : GetSysColor(COLOR_BTNFACE);
}

} // namespace

BEGIN_MESSAGE_MAP(CVariationGroupBox, CWnd)
ON_WM_NCHITTEST()
ON_WM_LBUTTONDOWN()
ON_WM_ERASEBKGND()
ON_WM_PAINT()
END_MESSAGE_MAP()

bool CVariationGroupBox::TakeOver(HWND box, VariationGroup group) {
    group_ = group;
    return SubclassWindow(box) != FALSE;
}

void CVariationGroupBox::SetActive(bool active) {
    active_ = active;
    if (m_hWnd) Invalidate();
}

// Group boxes let the mouse through; this one takes it.
LRESULT CVariationGroupBox::OnNcHitTest(CPoint) { return HTCLIENT; }

void CVariationGroupBox::OnLButtonDown(UINT, CPoint) {
    SendMessageW(::GetParent(m_hWnd), kGroupChosen, WPARAM(group_), 0);
}

BOOL CVariationGroupBox::OnEraseBkgnd(CDC*) { return TRUE; }

void CVariationGroupBox::OnPaint() {
    constexpr int kCaptionLeft = 9, kCaptionMargin = 4;
    CPaintDC dc(this);
    CRect client;
    GetClientRect(client);
    CFont* before = dc.SelectObject(GetFont());
    const CString caption(WindowText(m_hWnd).c_str());
    const CSize extent = dc.GetTextExtent(caption);
    dc.FillSolidRect(client, GetSysColor(COLOR_BTNFACE));
    CRect frame(client);
    frame.top += extent.cy / 2;
    dc.Draw3dRect(frame, GetSysColor(COLOR_BTNSHADOW), GetSysColor(COLOR_BTNSHADOW));
    const CRect label(CPoint(kCaptionLeft - kCaptionMargin, 0),
                      CSize(extent.cx + 2 * kCaptionMargin, extent.cy));
    dc.FillSolidRect(label, backgroundOf(group_, active_));
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(kGroupColors[group_].caption);
    dc.TextOut(kCaptionLeft, 0, caption);
    dc.SelectObject(before);
}

void DrawVariationItem(const DRAWITEMSTRUCT& item, VariationGroup group, bool active) {
    constexpr int kInset = 2;
    CDC* dc = CDC::FromHandle(item.hDC);
    const bool selected = (item.itemState & ODS_SELECTED) != 0;
    dc->FillSolidRect(&item.rcItem, selected ? GetSysColor(COLOR_HIGHLIGHT) : backgroundOf(group, active));
    if (int(item.itemID) < 0) return;
    CString text;
    CComboBox* combo = static_cast<CComboBox*>(CWnd::FromHandle(item.hwndItem));
    combo->GetLBText(int(item.itemID), text);
    dc->SetBkMode(TRANSPARENT);
    dc->SetTextColor(GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    CRect inner(item.rcItem);
    inner.DeflateRect(kInset, 0);
    dc->DrawText(text, inner, DT_SINGLELINE | DT_VCENTER | DT_LEFT | DT_NOPREFIX);
}

} // namespace corvane
