// The spacing graph's window: messages, mouse and painting.
#include "assoc/spacing_graph.h"

#include <algorithm>
#include <array>

#include "core/graph_ink.h"

namespace corvane {
namespace {

constexpr COLORREF kPaper = RGB(250, 250, 246), kGridInk = RGB(226, 226, 220),
                   kDiagonalInk = RGB(190, 190, 182), kCurveInk = RGB(40, 70, 120),
                   kHandleInk = RGB(60, 60, 60), kHandlePaper = RGB(255, 255, 255);

} // namespace

BEGIN_MESSAGE_MAP(CSpacingGraph, CWnd)
ON_MESSAGE(kSetAcceleration, &CSpacingGraph::OnSetAcceleration)
ON_MESSAGE(kGetAcceleration, &CSpacingGraph::OnGetAcceleration)
ON_MESSAGE(kSetSpacingKind, &CSpacingGraph::OnSetKind)
ON_MESSAGE(kGetSpacingKind, &CSpacingGraph::OnGetKind)
ON_MESSAGE(kSetSpacingValues, &CSpacingGraph::OnSetValues)
ON_MESSAGE(kGetSpacingValues, &CSpacingGraph::OnGetValues)
ON_WM_ERASEBKGND()
ON_WM_PAINT()
ON_WM_LBUTTONDOWN()
ON_WM_MOUSEMOVE()
ON_WM_LBUTTONUP()
END_MESSAGE_MAP()

bool CSpacingGraph::RegisterClass(const wchar_t* className) {
    WNDCLASSW made;
    made.lpfnWndProc = DefWindowProcW;
    made.lpszClassName = className;
    return AfxRegisterClass(&made);
}

bool CSpacingGraph::TakeOver(CWnd* dialog, UINT id) {
    if (!SubclassDlgItem(id, dialog)) return false;
    host_door::setDragUnits(m_hWnd, [this](double t, double value) {
        const PlotPixel at = plot().toPixel({t, value});
        return CPoint(at.x, at.y);
    });
    tellHandles();
    return true;
}

UnitPlot CSpacingGraph::plot() const {
    CRect client;
    GetClientRect(client);
    return {client.Width(), client.Height()};
}

void CSpacingGraph::refresh() {
    tellHandles();
    Invalidate(FALSE);
}

void CSpacingGraph::tellHandles() {
    std::vector<PlacedHandle> handles = SpacingHandles(spacing_);
    std::stable_sort(handles.begin(), handles.end(),
                     [](const PlacedHandle& a, const PlacedHandle& b) { return a.at.t < b.at.t; });
    CString text, one;
    for (const PlacedHandle& placed : handles) {
        one.Format(text.IsEmpty() ? L"%.3g,%.3g" : L" %.3g,%.3g", placed.at.t, placed.at.value);
        text += one;
    }
    SetWindowText(text);
}

LRESULT CSpacingGraph::OnSetAcceleration(WPARAM accel, LPARAM) {
    spacing_.accel = std::clamp(int(accel), -kMostAcceleration, kMostAcceleration);
    return refresh(), 0;
}
LRESULT CSpacingGraph::OnGetAcceleration(WPARAM, LPARAM) { return spacing_.accel; }
LRESULT CSpacingGraph::OnSetKind(WPARAM kind, LPARAM) {
    spacing_.kind = int(kind);
    held_ = SpacingHandle::none;
    return refresh(), 0;
}
LRESULT CSpacingGraph::OnGetKind(WPARAM, LPARAM) { return spacing_.kind; }
LRESULT CSpacingGraph::OnSetValues(WPARAM, LPARAM values) {
    if (!values) return 0;
    std::copy_n(reinterpret_cast<const double*>(values), spacing_.d.size(), spacing_.d.begin());
    return refresh(), 0;
}
LRESULT CSpacingGraph::OnGetValues(WPARAM, LPARAM values) {
    if (!values) return 0;
    std::copy(spacing_.d.begin(), spacing_.d.end(), reinterpret_cast<double*>(values));
    return 1;
}

void CSpacingGraph::OnLButtonDown(UINT, CPoint point) {
    SetFocus();
    held_ = HitSpacingHandle(spacing_, plot(), {point.x, point.y});
    if (held_ != SpacingHandle::none) SetCapture();
}

void CSpacingGraph::OnMouseMove(UINT, CPoint point) {
    if (held_ == SpacingHandle::none || ::GetCapture() != m_hWnd) return;
    const SpacingFunction before = spacing_;
    DragSpacingHandle(spacing_, held_, plot().toShare({point.x, point.y}));
    if (spacing_ == before) return;
    refresh();
    PostMessageW(::GetParent(m_hWnd), kSpacingChanged, 0, 0);
}

void CSpacingGraph::OnLButtonUp(UINT, CPoint) {
    if (::GetCapture() == m_hWnd) ReleaseCapture();
    held_ = SpacingHandle::none;
}

BOOL CSpacingGraph::OnEraseBkgnd(CDC*) { return TRUE; } // painting covers everything

void CSpacingGraph::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(client);
    dc.FillSolidRect(client, kPaper);
    const UnitPlot area = plot();
    paintGrid(dc, area);
    paintGuides(dc, area);
    paintCurve(dc, area);
    paintHandles(dc, area);
}

void CSpacingGraph::paintGrid(CDC& dc, const UnitPlot& area) const {
    {
        const Inked thin(dc, 1, kGridInk);
        for (int i = 0; i <= 10; ++i) {
            const double share = i / 10.0;
            Stroke(dc, area.toPixel({share, 0}), area.toPixel({share, 1}));
            Stroke(dc, area.toPixel({0, share}), area.toPixel({1, share}));
        }
    }
    const Inked even(dc, 1, kDiagonalInk, PS_DASH); // copies at equal distances
    Stroke(dc, area.toPixel({0, 0}), area.toPixel({1, 1}));
}

// Thin lines that say what the handles belong to.
void CSpacingGraph::paintGuides(CDC& dc, const UnitPlot& area) const {
    const auto& d = spacing_.d;
    const Inked thin(dc, 1, kHandleInk, PS_DOT);
    if (spacing_.kind == kBezierSpacing) {
        Stroke(dc, area.toPixel({0, d[0]}), area.toPixel({d[1], d[2]}));
        Stroke(dc, area.toPixel({1, d[5]}), area.toPixel({d[3], d[4]}));
    }
    if (spacing_.kind == kSineSpacing) { // where the first wave ends
        const double length = SineLength(spacing_);
        Stroke(dc, area.toPixel({length, 0}), area.toPixel({length, 1}));
    }
}

void CSpacingGraph::paintCurve(CDC& dc, const UnitPlot& area) const {
    std::array<POINT, kSpacingGraphPoints> points;
    const std::vector<PlotPixel> pixels = SpacingPixels(spacing_, area);
    std::transform(pixels.begin(), pixels.end(), points.begin(), [](PlotPixel p) { return POINT{p.x, p.y}; });
    const Inked thick(dc, 2, kCurveInk);
    dc.Polyline(points.data(), int(points.size()));
}

void CSpacingGraph::paintHandles(CDC& dc, const UnitPlot& area) const {
    const Inked thin(dc, 1, kHandleInk);
    CBrush white(kHandlePaper);
    CBrush* before = dc.SelectObject(&white);
    const std::vector<PlacedHandle> handles = SpacingHandles(spacing_);
    for (size_t i = handles.size(); i-- > 0;) // the one that clicks try first lies on top
        DrawHandleDisc(dc, area.toPixel(handles[i].at));
    dc.SelectObject(before);
}

} // namespace corvane
