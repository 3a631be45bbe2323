// The dialog that asks how many control points a lattice has along each axis.
#pragma once
#include "core/dialog.h"
#include "deform/box/lattice.h"

namespace corvane::deform {

class CFFDCtrlPointDlg : public CMyAcUiDialog {
public:
    explicit CFFDCtrlPointDlg(const AxisCounts& counts, CWnd* parent = nullptr);
    // As entered once OK was pressed, each held to 1..16; what isn't a number counts as 0.
    const AxisCounts& counts() const { return counts_; }

protected:
    BOOL OnInitDialog() override;
    void OnOK() override;

private:
    AxisCounts counts_;
};

// False, and `counts` unchanged, on Cancel.
bool AskLatticeCounts(AxisCounts& counts);

} // namespace corvane::deform
