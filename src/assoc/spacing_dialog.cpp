// The template in memory, and what its controls do.
#include "assoc/spacing_dialog.h"

#include "core/messages.h"

namespace corvane {
namespace {

constexpr unsigned kAllKinds = (1u << kSpacingKinds) - 1;

host::DialogTemplate templateOf(const SpacingDialogTexts& texts) {
    constexpr DWORD kShown = WS_CHILD | WS_VISIBLE, kReached = kShown | WS_TABSTOP;
    host::DialogTemplate dialog;
    dialog.caption = texts.caption;
    dialog.style = DS_SETFONT | DS_MODALFRAME | WS_POPUP | WS_CAPTION | WS_SYSMENU;
    dialog.rect = CRect(0, 0, 216, 196);
    dialog.controls = {
        {L"Static", texts.countLabel, 65535, kShown, 0, CRect(8, 9, 44, 18)},
        {L"Edit", L"", CSpacingDialog::kCountEdit, kReached | WS_BORDER | ES_NUMBER, 0, CRect(46, 7, 84, 20)},
        {L"Static", L"函数:", 65535, kShown, 0, CRect(92, 9, 124, 18)},
        {L"ComboBox", L"", CSpacingDialog::kKindBox, kReached | WS_VSCROLL | CBS_DROPDOWNLIST, 0,
         CRect(128, 7, 208, 100)},
        {texts.graphClass, L"", CSpacingDialog::kGraph, kReached | WS_BORDER, 0, CRect(8, 26, 208, 170)},
        {L"Button", L"确定", IDOK, kReached | BS_DEFPUSHBUTTON, 0, CRect(100, 176, 152, 190)},
        {L"Button", L"取消", IDCANCEL, kReached | BS_PUSHBUTTON, 0, CRect(156, 176, 208, 190)},
    };
    return dialog;
}

} // namespace

BEGIN_MESSAGE_MAP(CSpacingDialog, CMyAcUiDialog)
ON_CBN_SELCHANGE(kKindBox, &CSpacingDialog::OnKindChosen)
ON_MESSAGE(kSpacingChanged, &CSpacingDialog::OnGraphChanged)
END_MESSAGE_MAP()

CSpacingDialog::CSpacingDialog(const SpacingDialogTexts& texts, const CopyFamily& family, unsigned kinds,
                               std::function<void(const CopyFamily&)> changed)
    : CMyAcUiDialog(0), texts_(texts), family_(family),
      kinds_(kinds & kAllKinds ? kinds & kAllKinds : kAllKinds), changed_(std::move(changed)) {
    CSpacingGraph::RegisterClass(texts.graphClass);
    const host::DialogTemplate dialog = templateOf(texts);
    InitModalIndirect(&dialog);
}

BOOL CSpacingDialog::OnInitDialog() {
    CMyAcUiDialog::OnInitDialog();
    SetDlgItemInt(kCountEdit, UINT(family_.count));
    fillKinds();
    graph_.TakeOver(this, kGraph);
    showSpacing();
    return TRUE;
}

void CSpacingDialog::fillKinds() {
    auto* box = static_cast<CComboBox*>(GetDlgItem(kKindBox));
    const auto add = [&](int kind) {
        const int row = box->AddString(Translate(SpacingLabel(kind)));
        box->SetItemData(row, DWORD_PTR(kind));
        if (kind == family_.spacing.kind) box->SetCurSel(row);
    };
    for (int kind = 0; kind < kSpacingKinds; ++kind)
        if (kinds_ & 1u << kind) add(kind);
    if (box->GetCurSel() < 0) add(family_.spacing.kind); // one of a drawing's that isn't offered
}

void CSpacingDialog::showSpacing() {
    SpacingFunction& shown = family_.spacing;
    graph_.SendMessage(kSetSpacingKind, WPARAM(shown.kind));
    graph_.SendMessage(kSetAcceleration, WPARAM(shown.accel));
    graph_.SendMessage(kSetSpacingValues, 0, reinterpret_cast<LPARAM>(shown.d.data()));
}

void CSpacingDialog::tell() {
    touched_ = true;
    if (changed_) changed_(family_);
}

void CSpacingDialog::OnKindChosen() {
    auto* box = static_cast<CComboBox*>(GetDlgItem(kKindBox));
    if (box->GetCurSel() < 0) return;
    family_.spacing.kind = int(box->GetItemData(box->GetCurSel()));
    graph_.SendMessage(kSetSpacingKind, WPARAM(family_.spacing.kind));
    tell();
}

LRESULT CSpacingDialog::OnGraphChanged(WPARAM, LPARAM) {
    SpacingFunction now;
    now.kind = int(graph_.SendMessage(kGetSpacingKind));
    now.accel = int(graph_.SendMessage(kGetAcceleration));
    graph_.SendMessage(kGetSpacingValues, 0, reinterpret_cast<LPARAM>(now.d.data()));
    // A drag posts once a move; those that arrive together are one change.
    if (now == family_.spacing) return 0;
    family_.spacing = now;
    tell();
    return 0;
}

void CSpacingDialog::OnOK() {
    BOOL good = FALSE;
    const UINT count = GetDlgItemInt(kCountEdit, &good, FALSE);
    if (!good || count < UINT(kSmallestFamily) || count > UINT(kLargestFamily)) {
        MessageBox(Translate(texts_.countComplaint), Translate(L"提示"), MB_OK);
        GetDlgItem(kCountEdit)->SetFocus();
        return;
    }
    family_.count = int(count);
    // What the graph has posted and nobody has handled yet.
    OnGraphChanged(0, 0);
    CMyAcUiDialog::OnOK();
}

std::optional<bool> EditCopyFamily(const SpacingDialogTexts& texts, const CopyFamily& family,
                                   const std::function<bool(const CopyFamily&)>& rebuild) {
    CSpacingDialog dialog(texts, family, 0, [&](const CopyFamily& now) { rebuild(now); });
    if (RunModal(dialog) == IDOK) return rebuild(dialog.family());
    if (dialog.touched()) rebuild(family);
    return std::nullopt;
}

} // namespace corvane
