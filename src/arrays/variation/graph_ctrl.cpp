// The graph's window: mouse, gain and painting.
#include "arrays/variation/graph_ctrl.h"

#include <algorithm>
#include <array>

#include "core/dialog.h"
#include "core/graph_ink.h"

namespace corvane {
namespace {

constexpr COLORREF kWhite = RGB(255, 255, 255), kCurveInk = RGB(40, 70, 120), kHandleInk = RGB(60, 60, 60);
constexpr double kGridShade = 0.92;

COLORREF shaded(COLORREF color, double share) {
    return RGB(int(GetRValue(color) * share), int(GetGValue(color) * share), int(GetBValue(color) * share));
}

} // namespace

BEGIN_MESSAGE_MAP(CVariationGraph, CWnd)
ON_WM_ERASEBKGND()
ON_WM_PAINT()
ON_WM_SIZE()
ON_WM_LBUTTONDOWN()
ON_WM_MOUSEMOVE()
ON_WM_LBUTTONUP()
ON_CONTROL_RANGE(EN_CHANGE, kOneCurveGraph.gainId, kMoreCurvesGraph.gainId, &CVariationGraph::OnGainChanged)
ON_CONTROL_RANGE(EN_KILLFOCUS, kOneCurveGraph.gainId, kMoreCurvesGraph.gainId, &CVariationGraph::OnGainLeft)
END_MESSAGE_MAP()

bool CVariationGraph::CreateIn(CWnd* dialog, const CRect& rect, double scale) {
    const wchar_t* className = AfxRegisterWndClass(0);
    if (rect.IsRectEmpty() || !Create(className, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPCHILDREN,
                                      rect, dialog, traits_.id))
        return false;
    constexpr int kCorner = 2, kWidth = 26, kHeight = 16;
    gainEdit_.Create(
        WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER | ES_NUMBER,
        CRect(CPoint(kCorner, kCorner), CSize(ScaledLength(kWidth, scale), ScaledLength(kHeight, scale))),
        this, traits_.gainId);
    gainEdit_.SetFont(dialog->GetFont());
    showGain();
    host_door::setDragUnits(m_hWnd, [this](double t, double percent) {
        const GraphPixel at = plot().toPixel({t, percent});
        return CPoint(at.x, at.y);
    });
    return true;
}

void CVariationGraph::SetCurve(const VariationCurve& curve, int gain, COLORREF background) {
    curve_ = curve;
    gain_ = std::max(1, gain);
    background_ = background;
    showGain();
    tellHandles();
    Invalidate(traits_.erasing);
}

bool CVariationGraph::Dragging() const {
    return traits_.draggingIsCapture ? m_hWnd && ::GetCapture() == m_hWnd : dragging_;
}

GraphPlot CVariationGraph::plot() const {
    CRect client;
    GetClientRect(client);
    return {client.Width(), client.Height()};
}

void CVariationGraph::changed() {
    tellHandles();
    Invalidate(traits_.erasing);
    const HWND parent = ::GetParent(m_hWnd);
    if (traits_.posted)
        PostMessageW(parent, traits_.message, 0, 0);
    else
        SendMessageW(parent, traits_.message, traits_.id, 0);
}

void CVariationGraph::showGain() {
    if (!gainEdit_.m_hWnd) return;
    CString text, shown;
    text.Format(L"%d", gain_);
    gainEdit_.GetWindowText(shown);
    if (shown != text) gainEdit_.SetWindowText(text);
}

void CVariationGraph::tellHandles() {
    if (!m_hWnd) return;
    std::vector<GraphHandle> handles = GraphHandles(curve_);
    std::stable_sort(handles.begin(), handles.end(),
                     [](const GraphHandle& a, const GraphHandle& b) { return a.at.t < b.at.t; });
    CString text, one;
    for (const GraphHandle& handle : handles) {
        one.Format(text.IsEmpty() ? L"%.3g,%.4g" : L" %.3g,%.4g", handle.at.t, handle.at.percent);
        text += one;
    }
    SetWindowText(text);
}

void CVariationGraph::OnGainChanged(UINT) {
    const int gain = std::max(1, int(GetDlgItemInt(int(traits_.gainId), nullptr, FALSE)));
    if (gain == gain_) return;
    gain_ = gain;
    changed();
}
void CVariationGraph::OnGainLeft(UINT) { showGain(); }

void CVariationGraph::OnSize(UINT, int, int) { Invalidate(traits_.erasing); }

void CVariationGraph::OnLButtonDown(UINT, CPoint point) {
    SetFocus();
    held_ = HitHandle(curve_, plot(), {point.x, point.y});
    if (held_ == kNoHandle) return;
    dragging_ = true;
    SetCapture();
}

void CVariationGraph::OnMouseMove(UINT, CPoint point) {
    if (!Dragging() || held_ == kNoHandle) return;
    DragHandle(curve_, held_, plot().toValue({point.x, point.y}), traits_.order);
    changed();
}

void CVariationGraph::OnLButtonUp(UINT, CPoint) {
    if (::GetCapture() == m_hWnd) ReleaseCapture();
    dragging_ = false;
    held_ = kNoHandle;
}

BOOL CVariationGraph::OnEraseBkgnd(CDC*) { return TRUE; } // painting covers everything

void CVariationGraph::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(client);
    dc.FillSolidRect(client, background_);
    const GraphPlot area = plot();
    paintGrid(dc, area);
    paintCurve(dc, area);
    paintHandles(dc, area);
}

void CVariationGraph::paintGrid(CDC& dc, const GraphPlot& area) const {
    const auto line = [&](double t0, double p0, double t1, double p1) {
        Stroke(dc, area.toPixel({t0, p0}), area.toPixel({t1, p1}));
    };
    {
        const Inked thin(dc, 1, shaded(background_, kGridShade));
        for (int i = 0; i <= 10; ++i) {
            line(i / 10.0, 0, i / 10.0, kGraphTop);
            line(0, kGraphTop * i / 10, 1, kGraphTop * i / 10);
        }
    }
    const Inked unchanged(dc, 1, shaded(background_, kGridShade * kGridShade * kGridShade), PS_DASH);
    line(0, 100, 1, 100);
}

void CVariationGraph::paintCurve(CDC& dc, const GraphPlot& area) const {
    std::array<POINT, kCurvePoints> points;
    const std::vector<GraphPixel> pixels = CurvePixels(curve_, area);
    std::transform(pixels.begin(), pixels.end(), points.begin(), [](GraphPixel p) {
        return POINT{p.x, p.y};
    });
    const Inked thick(dc, 2, kCurveInk);
    dc.Polyline(points.data(), int(points.size()));
}

void CVariationGraph::paintHandles(CDC& dc, const GraphPlot& area) const {
    const Inked thin(dc, 1, kHandleInk);
    const std::vector<GraphHandle> handles = GraphHandles(curve_);
    const auto at = [&](size_t i) { return area.toPixel(handles[i].at); };
    if (curve_.kind == kBezier) {
        Stroke(dc, at(0), at(2));
        Stroke(dc, at(1), at(3));
    }
    if (curve_.kind == kSine) { // where the first wave ends
        const Inked mark(dc, 1, kHandleInk, PS_DOT);
        Stroke(dc, at(1), area.toPixel({handles[1].at.t, 0}));
    }
    CBrush white(kWhite);
    CBrush* before = dc.SelectObject(&white);
    for (size_t i = handles.size(); i-- > 0;) // the one that clicks try first lies on top
        DrawHandleDisc(dc, at(i));
    dc.SelectObject(before);
}

} // namespace corvane
