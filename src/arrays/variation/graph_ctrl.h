// The control that shows a variation curve and lets its handles be dragged, and the group boxes that choose
// which of a dialog's two curves it shows. One implementation; the controls of the array dialogs differ in
// the traits below. What a drag does stands in graph_model.h, the dialogs' part in variation_dialog.h.
#pragma once
#include "arrays/variation/graph_model.h"
#include "core/host/dialogs.h"

namespace corvane {

struct GraphTraits {
    UINT id;
    UINT gainId; // of the small edit for the gain
    ControlOrder order;
    bool draggingIsCapture; // dragging is told by the mouse capture, not by a flag of its own
    UINT message;           // to the parent after each change
    bool posted;            // without arguments; else sent with the id
    bool erasing;           // repaints with the background
};
inline constexpr GraphTraits kOneCurveGraph{53001, 53002, ControlOrder::apart, false, WM_APP + 400,
                                            false, false};
inline constexpr GraphTraits kMoreCurvesGraph{53101, 53102, ControlOrder::free, true, WM_APP + 420,
                                              true,  true};

enum VariationGroup { kSizeGroup, kSpacingGroup };
struct GroupColors {
    COLORREF background, caption;
};
inline constexpr GroupColors kGroupColors[2] = {{RGB(214, 240, 214), RGB(0, 100, 0)},
                                                {RGB(230, 214, 240), RGB(75, 0, 130)}};

// Scripts drag in it by position and percent; its window text tells where the handles are, such as
// "0,40 0.25,260 0.667,100 1,100" from left to right.
class CVariationGraph : public CWnd {
public:
    explicit CVariationGraph(const GraphTraits& traits) : traits_(traits) {}
    // Over that rectangle of the dialog's client area, with the edit for the gain, scaled as the dialog's
    // text is, in its corner.
    bool CreateIn(CWnd* dialog, const CRect& rect, double scale = 1);

    void SetCurve(const VariationCurve& curve, int gain, COLORREF background);
    const VariationCurve& Curve() const { return curve_; }
    int Gain() const { return gain_; } // at least 1
    bool Dragging() const;

protected:
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnPaint();
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnLButtonDown(UINT keys, CPoint point);
    afx_msg void OnMouseMove(UINT keys, CPoint point);
    afx_msg void OnLButtonUp(UINT keys, CPoint point);
    afx_msg void OnGainChanged(UINT id);
    afx_msg void OnGainLeft(UINT id);
    DECLARE_MESSAGE_MAP()

private:
    GraphPlot plot() const;
    void changed();
    void showGain();
    void tellHandles();
    void paintGrid(CDC& dc, const GraphPlot& area) const;
    void paintCurve(CDC& dc, const GraphPlot& area) const;
    void paintHandles(CDC& dc, const GraphPlot& area) const;

    const GraphTraits traits_;
    VariationCurve curve_;
    int gain_ = 1;
    COLORREF background_ = kGroupColors[kSizeGroup].background;
    int held_ = kNoHandle;
    bool dragging_ = false;
    CEdit gainEdit_;
};

// A group box that tells its dialog by WM_APP + 401, with its group, when it is clicked. The active one wears
// its group's colours.
inline constexpr UINT kGroupChosen = WM_APP + 401;
class CVariationGroupBox : public CWnd {
public:
    // Takes over the dialog's group box.
    bool TakeOver(HWND box, VariationGroup group);
    void SetActive(bool active);

protected:
    afx_msg LRESULT OnNcHitTest(CPoint point);
    afx_msg void OnLButtonDown(UINT keys, CPoint point);
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnPaint();
    DECLARE_MESSAGE_MAP()

private:
    VariationGroup group_ = kSizeGroup;
    bool active_ = false;
};

class CAACGraphCtrl : public CVariationGraph {
public:
    CAACGraphCtrl() : CVariationGraph(kOneCurveGraph) {}
};
class CAADCGraphCtrl : public CVariationGraph {
public:
    CAADCGraphCtrl() : CVariationGraph(kMoreCurvesGraph) {}
};
using AATC_CAADCGraphCtrl = CAADCGraphCtrl;
using CAACGroupBoxCtrl = CVariationGroupBox;
using CAADCGroupBoxCtrl = CVariationGroupBox;
using AATC_CAADCGroupBoxCtrl = CVariationGroupBox;

// Draws an item of a group's owner-drawn combo box: the group's colour while it is active, else the button
// face.
void DrawVariationItem(const DRAWITEMSTRUCT& item, VariationGroup group, bool active);

} // namespace corvane
