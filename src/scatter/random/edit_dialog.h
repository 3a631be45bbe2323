// The dialogs that edit scatters: every change rebuilds the scatter at once, if the values serve. CANCEL
// rebuilds it with the parameters that the dialog was opened with.
#pragma once
#include "core/dialog.h"
#include "scatter/random/params.h"

namespace corvane {

// Control ids that both dialogs have, each its own.
struct ScatterControls {
    int circle, square, select; // radio buttons
    int baseSize, sizeRandom, scaleMax;
    int count, countSlider;
};

class CScatterEditDlg : public CMyAcUiDialog {
protected:
    CScatterEditDlg(UINT templateId, const ScatterControls& controls, scatter::ScatterParams& params,
                    CWnd* parent);

    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    afx_msg void OnHScroll(UINT code, UINT position, CScrollBar* bar);
    DECLARE_MESSAGE_MAP()

    // Derived dialogs add their own controls to these.
    virtual void FillControls();
    virtual void ReadControls(); // numbers that can't be read leave what was
    virtual void UpdateEnabled();
    // With the parameters; with those that the dialog was opened with, which become the parameters.
    virtual void Rebuild() = 0;
    virtual void Revert() = 0;

    bool IsChecked(int id) const { return IsDlgButtonChecked(id) == BST_CHECKED; }
    void Enable(int id, bool on) { GetDlgItem(id)->EnableWindow(on); }

private:
    void changed();
    void showSlider();
    CSliderCtrl& slider() { return *static_cast<CSliderCtrl*>(GetDlgItem(controls_.countSlider)); }

    const ScatterControls controls_;
    scatter::ScatterParams& shared_;
    bool filling_ = true; // the dialog fills its controls: nothing is rebuilt
};

// rndScatter1: along curves.
class CRndScatterEditDlg : public CScatterEditDlg {
public:
    explicit CRndScatterEditDlg(AcDbObjectId scatter, CWnd* parent = nullptr);

protected:
    void FillControls() override;
    void ReadControls() override;
    void UpdateEnabled() override;
    void Rebuild() override;
    void Revert() override;

private:
    AcDbObjectId scatter_;
    scatter::ScatterOnCurveParams params_, kept_;
};

// rndScatter2: inside boundaries.
class CRndScatter2EditDlg : public CScatterEditDlg {
public:
    explicit CRndScatter2EditDlg(AcDbObjectId scatter, CWnd* parent = nullptr);

protected:
    void Rebuild() override;
    void Revert() override;

private:
    AcDbObjectId scatter_;
    scatter::ScatterInRegionParams params_, kept_;
};

} // namespace corvane
