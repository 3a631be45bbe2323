// The part that the array dialogs share: two variation curves, a combo box each for their kind, and one graph
// for the curve of the active group. Derived dialogs hear of every change by OnVariationChanged.
#pragma once
#include "arrays/variation/graph_ctrl.h"
#include "core/dialog.h"

namespace corvane {

// Control ids; the sliders are only there to say where the graph goes, and serve when it can't be made.
struct VariationControls {
    UINT kind[2] = {1089, 1088};                      // of the size and of the spacing
    UINT slider[2][2] = {{1098, 1099}, {1096, 1097}}; // start and end of each
};

class CVariationDialog : public CMyAcUiDialog {
public:
    CVariationDialog(UINT templateId, CWnd* parent, const GraphTraits& traits,
                     const VariationControls& controls = {});

    // Set before the dialog opens, read after it.
    VariationCurve curves[2];
    int gain = 1;

protected:
    BOOL OnInitDialog() override;
    // After a change of the user's: the curves and the gain are up to date.
    virtual void OnVariationChanged() {}
    virtual bool MakeGraph(const CRect& place); // false: the sliders serve
    // Brings the curves and the gain up to date with the controls.
    void ReadVariation();

    afx_msg void OnDrawItem(int id, LPDRAWITEMSTRUCT draw);
    afx_msg LRESULT OnGraphChanged(WPARAM, LPARAM);
    afx_msg LRESULT OnGroupChosen(WPARAM group, LPARAM);
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    DECLARE_MESSAGE_MAP()

private:
    CComboBox* kindBox(int group) const;
    CSliderCtrl* slider(int group, int end) const;
    void fillKinds();
    void placeGraph();
    void takeOverGroupBoxes();
    void showActiveGroup();
    void readSliders();

    const VariationControls controls_;
    CVariationGraph graph_;
    CVariationGroupBox boxes_[2];
    VariationGroup active_ = kSizeGroup;
    bool graphMade_ = false;
};

} // namespace corvane
