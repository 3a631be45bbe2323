// Three numbers.
#include "deform/box/ffd_dialog.h"

#include <algorithm>

namespace corvane::deform {
namespace {

constexpr UINT kTemplate = 1440;
constexpr int kEdits[] = {1441, 1442, 1443};

} // namespace

CFFDCtrlPointDlg::CFFDCtrlPointDlg(const AxisCounts& counts, CWnd* parent)
    : CMyAcUiDialog(kTemplate, parent), counts_(counts) {}

BOOL CFFDCtrlPointDlg::OnInitDialog() {
    CMyAcUiDialog::OnInitDialog();
    for (size_t axis = 0; axis < 3; ++axis) SetDlgItemInt(kEdits[axis], UINT(counts_[axis]));
    return TRUE;
}

void CFFDCtrlPointDlg::OnOK() {
    for (size_t axis = 0; axis < 3; ++axis)
        counts_[axis] = std::clamp(int(GetDlgItemInt(kEdits[axis])), 1, kMostControlPoints);
    CMyAcUiDialog::OnOK();
}

bool AskLatticeCounts(AxisCounts& counts) {
    CFFDCtrlPointDlg dialog(counts);
    if (RunModal(dialog) != IDOK) return false;
    counts = dialog.counts();
    return true;
}

} // namespace corvane::deform
