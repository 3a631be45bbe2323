// Controls of the dialogs that edit scatters.
#include "scatter/random/edit_dialog.h"

#include <algorithm>

#include "scatter/random/scatter_block.h"

namespace corvane {
namespace {

using namespace scatter;

constexpr UINT kOnCurvesTemplate = 61252, kInRegionsTemplate = 61244;
constexpr ScatterControls kOnCurves{1260, 1262, 1261, 1256, 1254, 1258, 1257, 1263};
constexpr ScatterControls kInRegions{1248, 1250, 1249, 1245, 1244, 1247, 1246, 1251};
constexpr int kOnLine = 1253, kWidth = 1259, kSpacingRandom = 1255, kDeleteOverlap = 1252;

} // namespace

BEGIN_MESSAGE_MAP(CScatterEditDlg, CMyAcUiDialog)
ON_WM_HSCROLL()
END_MESSAGE_MAP()

CScatterEditDlg::CScatterEditDlg(UINT templateId, const ScatterControls& controls, ScatterParams& params,
                                 CWnd* parent)
    : CMyAcUiDialog(templateId, parent), controls_(controls), shared_(params) {
    realForm = L"%.6f";
}

BOOL CScatterEditDlg::OnInitDialog() {
    CMyAcUiDialog::OnInitDialog();
    FillControls();
    UpdateEnabled();
    filling_ = false;
    return TRUE;
}

void CScatterEditDlg::FillControls() {
    CheckDlgButton(controls_.circle, shared_.pattern == PatternType::circle);
    CheckDlgButton(controls_.square, shared_.pattern == PatternType::square);
    CheckDlgButton(controls_.select, shared_.pattern == PatternType::templates);
    ShowReal(controls_.baseSize, shared_.baseSize);
    CheckDlgButton(controls_.sizeRandom, shared_.sizeRandom);
    ShowReal(controls_.scaleMax, shared_.scaleMax);
    SetDlgItemInt(controls_.count, UINT(shared_.count));
    showSlider();
}

void CScatterEditDlg::ReadControls() {
    shared_.pattern = IsChecked(controls_.select)   ? PatternType::templates
                      : IsChecked(controls_.square) ? PatternType::square
                                                    : PatternType::circle;
    shared_.baseSize = RealIn(controls_.baseSize, shared_.baseSize);
    shared_.sizeRandom = IsChecked(controls_.sizeRandom);
    shared_.scaleMax = RealIn(controls_.scaleMax, shared_.scaleMax);
    const double count = RealIn(controls_.count, shared_.count);
    if (count >= 1) shared_.count = int(std::min<double>(count, kMostPatterns));
}

void CScatterEditDlg::UpdateEnabled() {
    Enable(controls_.baseSize, shared_.pattern != PatternType::templates);
    Enable(controls_.scaleMax, shared_.sizeRandom);
}

void CScatterEditDlg::showSlider() {
    const int least = std::max(1, shared_.count / 10);
    slider().SetRange(least, std::max(least + 1, std::min(shared_.count, kMostPatterns / 10) * 10), TRUE);
    slider().SetPos(shared_.count);
}

void CScatterEditDlg::changed() {
    if (filling_) return;
    ReadControls();
    UpdateEnabled();
    showSlider();
    Rebuild();
}

// Every control tells of its changes in the same way.
BOOL CScatterEditDlg::OnCommand(WPARAM wParam, LPARAM lParam) {
    const BOOL handled = CMyAcUiDialog::OnCommand(wParam, lParam);
    const UINT id = LOWORD(wParam), code = HIWORD(wParam);
    if (lParam && id != IDOK && id != IDCANCEL && (code == EN_CHANGE || code == BN_CLICKED)) changed();
    return handled;
}

void CScatterEditDlg::OnHScroll(UINT code, UINT position, CScrollBar* bar) {
    CMyAcUiDialog::OnHScroll(code, position, bar);
    if (!bar || bar->GetDlgCtrlID() != controls_.countSlider || filling_) return;
    SetDlgItemInt(controls_.count, UINT(slider().GetPos())); // the edit tells of the change
}

void CScatterEditDlg::OnOK() {
    if (!filling_) ReadControls(), Rebuild();
    CMyAcUiDialog::OnOK();
}

void CScatterEditDlg::OnCancel() {
    Revert();
    CMyAcUiDialog::OnCancel();
}

// -- along curves -------------------------------------------------------------------------------------

CRndScatterEditDlg::CRndScatterEditDlg(AcDbObjectId scatter, CWnd* parent)
    : CScatterEditDlg(kOnCurvesTemplate, kOnCurves, params_, parent), scatter_(scatter),
      params_(ReadParams<ScatterOnCurveParams>(scatter).value_or(ScatterOnCurveParams())), kept_(params_) {}

void CRndScatterEditDlg::FillControls() {
    CScatterEditDlg::FillControls();
    CheckDlgButton(kOnLine, params_.onCurve);
    ShowReal(kWidth, params_.width);
    CheckDlgButton(kSpacingRandom, params_.spacingRandom);
    CheckDlgButton(kDeleteOverlap, params_.deleteOverlap);
}

void CRndScatterEditDlg::ReadControls() {
    CScatterEditDlg::ReadControls();
    params_.onCurve = IsChecked(kOnLine);
    params_.width = RealIn(kWidth, params_.width);
    params_.spacingRandom = IsChecked(kSpacingRandom);
    params_.deleteOverlap = IsChecked(kDeleteOverlap);
}

void CRndScatterEditDlg::UpdateEnabled() {
    CScatterEditDlg::UpdateEnabled();
    Enable(kWidth, !params_.onCurve);
    Enable(kSpacingRandom, params_.onCurve);
}

void CRndScatterEditDlg::Rebuild() { RebuildScatter(scatter_, params_, ShownProgress()); }
void CRndScatterEditDlg::Revert() {
    params_ = kept_;
    Rebuild();
}

// -- inside boundaries --------------------------------------------------------------------------------

CRndScatter2EditDlg::CRndScatter2EditDlg(AcDbObjectId scatter, CWnd* parent)
    : CScatterEditDlg(kInRegionsTemplate, kInRegions, params_, parent), scatter_(scatter),
      params_(ReadParams<ScatterInRegionParams>(scatter).value_or(ScatterInRegionParams())), kept_(params_) {}

void CRndScatter2EditDlg::Rebuild() { RebuildScatter(scatter_, params_, ShownProgress()); }
void CRndScatter2EditDlg::Revert() {
    params_ = kept_;
    Rebuild();
}

} // namespace corvane
