// Count, spacing and preview of the array dialogs.
#include "arrays/common/array_dialog.h"

#include <algorithm>

namespace corvane {
namespace {

constexpr int kCountRadio = 1094, kSpacingRadio = 1095, kCountEdit = 1090, kSpacingEdit = 1093;

} // namespace

BEGIN_MESSAGE_MAP(CArrayDialog, CVariationDialog)
ON_BN_CLICKED(kCountRadio, &CArrayDialog::Changed)
ON_BN_CLICKED(kSpacingRadio, &CArrayDialog::Changed)
ON_EN_CHANGE(kCountEdit, &CArrayDialog::Changed)
ON_EN_CHANGE(kSpacingEdit, &CArrayDialog::Changed)
END_MESSAGE_MAP()

CArrayDialog::CArrayDialog(UINT templateId, CWnd* parent, const GraphTraits& traits, ArraySettings& settings)
    : CVariationDialog(templateId, parent, traits), settings_(settings) {
    curves[kSizeGroup] = settings.sizes;
    curves[kSpacingGroup] = settings.gaps;
    gain = settings.gain;
}

BOOL CArrayDialog::OnInitDialog() {
    CVariationDialog::OnInitDialog();
    CheckRadioButton(kCountRadio, kSpacingRadio, settings_.mode == kBySpacing ? kSpacingRadio : kCountRadio);
    CString count;
    count.Format(L"%d", settings_.count);
    SetDlgItemText(kCountEdit, count);
    ShowReal(kSpacingEdit, settings_.spacing);
    return TRUE;
}

void CArrayDialog::StartPreview() {
    quiet_ = 0;
    showCopies();
}

void CArrayDialog::Changed() {
    if (quiet_) return;
    ReadControls();
    showCopies();
}

void CArrayDialog::showCopies() {
    auto contents = Build();
    preview_.Show(contents ? std::move(contents->entities) : std::vector<std::unique_ptr<AcDbEntity>>());
}

void CArrayDialog::ReadControls() {
    ReadVariation();
    settings_.sizes = curves[kSizeGroup];
    settings_.gaps = curves[kSpacingGroup];
    settings_.gain = gain;
    settings_.mode = IsDlgButtonChecked(kSpacingRadio) ? kBySpacing : kByCount;
    settings_.count = int(ClampNumber(RealIn(kCountEdit, settings_.count), 2, kMostCopies));
    settings_.spacing = std::max(kLeastSpacing, RealIn(kSpacingEdit, settings_.spacing));
}

void CArrayDialog::OnOK() {
    ReadControls();
    preview_.Clear();
    CVariationDialog::OnOK();
}

void CArrayDialog::OnCancel() {
    preview_.Clear();
    CVariationDialog::OnCancel();
}

} // namespace corvane
