// The control that shows a spacing function and lets its handles be dragged. What a drag does stands in
// spacing_graph_model.h; the dialog that holds it is spacing_dialog.h.
#pragma once
#include "assoc/spacing_graph_model.h"
#include "core/host/dialogs.h"

namespace corvane {

// What the control answers. The acceleration and the kind go in wParam; the six values by a pointer to
// six doubles in lParam.
inline constexpr UINT kSetAcceleration = 1225, kGetAcceleration = 1226, kSetSpacingKind = 1227,
                      kGetSpacingKind = 1228, kSetSpacingValues = 1229, kGetSpacingValues = 1230;
// Posted to the dialog after each change of the user's.
inline constexpr UINT kSpacingChanged = 33299;

// Takes over a control of the class that RegisterClass made. Scripts drag in it by position and share, both
// 0..1; its window text tells where the handles are, such as "0,0 0.333,0.25 0.667,1 1,1" from left to right.
class CSpacingGraph : public CWnd {
public:
    // Makes the name known, so that dialog templates may use it; more than once is fine.
    static bool RegisterClass(const wchar_t* className);
    bool TakeOver(CWnd* dialog, UINT id);

protected:
    afx_msg LRESULT OnSetAcceleration(WPARAM accel, LPARAM);
    afx_msg LRESULT OnGetAcceleration(WPARAM, LPARAM);
    afx_msg LRESULT OnSetKind(WPARAM kind, LPARAM);
    afx_msg LRESULT OnGetKind(WPARAM, LPARAM);
    afx_msg LRESULT OnSetValues(WPARAM, LPARAM values);
    afx_msg LRESULT OnGetValues(WPARAM, LPARAM values);
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnPaint();
    afx_msg void OnLButtonDown(UINT keys, CPoint point);
    afx_msg void OnMouseMove(UINT keys, CPoint point);
    afx_msg void OnLButtonUp(UINT keys, CPoint point);
    DECLARE_MESSAGE_MAP()

private:
    UnitPlot plot() const;
    void refresh();
    void tellHandles();
    void paintGrid(CDC& dc, const UnitPlot& plot) const;
    void paintGuides(CDC& dc, const UnitPlot& plot) const;
    void paintCurve(CDC& dc, const UnitPlot& plot) const;
    void paintHandles(CDC& dc, const UnitPlot& plot) const;

    SpacingFunction spacing_;
    SpacingHandle held_ = SpacingHandle::none;
};

} // namespace corvane
