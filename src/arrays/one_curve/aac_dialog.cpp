// The controls of CAACDlg beyond those of every array, and its picks.
#include "arrays/one_curve/aac_dialog.h"

namespace corvane {
namespace {

constexpr UINT kTemplate = 1083;
constexpr int kTangentCheck = 1087, kAcrossCheck = 1086, kStartTwist = 1092, kEndTwist = 1091,
              kPickStart = 1085, kPickPrototype = 1084;

constexpr GuidePrompts kStartPrompts{L"\n封闭曲线：请从中心点拉出放射线以确定起点方向>>",
                                     L"\n阵列方向 [CW/CCW] <CCW>: ",
                                     L"\n请选择起点端(靠近端点处点一下，回车=起点)>>", L"CW CCW", L"CW"};

} // namespace

bool AskStart(ArrayJob& job) { return AskGuideStart(job.source.path, kStartPrompts, job.params.start); }

bool AskPrototype(ArrayJob& job) {
    const AcDbObjectId picked = PickEntity(L"\n请选择阵列物体(单一物体)>>");
    if (picked.isNull()) return false;
    job.source.prototype = picked;
    job.source.base = MiddleOf(picked);
    return true;
}

BEGIN_MESSAGE_MAP(CAACDlg, CArrayDialog)
ON_BN_CLICKED(kTangentCheck, &CAACDlg::Changed)
ON_BN_CLICKED(kAcrossCheck, &CAACDlg::Changed)
ON_EN_CHANGE(kStartTwist, &CAACDlg::Changed)
ON_EN_CHANGE(kEndTwist, &CAACDlg::Changed)
ON_BN_CLICKED(kPickStart, &CAACDlg::OnPickStart)
ON_BN_CLICKED(kPickPrototype, &CAACDlg::OnPickPrototype)
END_MESSAGE_MAP()

CAACDlg::CAACDlg(ArrayJob& job, CWnd* parent)
    : CArrayDialog(kTemplate, parent, kOneCurveGraph, job.params.settings), job_(job) {}

BOOL CAACDlg::OnInitDialog() {
    CArrayDialog::OnInitDialog();
    CheckDlgButton(kTangentCheck, job_.params.alongTangent);
    CheckDlgButton(kAcrossCheck, job_.params.acrossPath);
    ShowReal(kStartTwist, job_.params.startTwist);
    ShowReal(kEndTwist, job_.params.endTwist);
    updateAcross();
    StartPreview();
    return TRUE;
}

void CAACDlg::updateAcross() {
    const bool able = HasOwnPlane(job_.source.prototype);
    for (const int id : {kAcrossCheck, kStartTwist, kEndTwist}) GetDlgItem(id)->EnableWindow(able);
    if (able) return;
    job_.params.acrossPath = false;
    CheckDlgButton(kAcrossCheck, BST_UNCHECKED);
}

void CAACDlg::ReadControls() {
    CArrayDialog::ReadControls();
    job_.params.alongTangent = IsDlgButtonChecked(kTangentCheck) == BST_CHECKED;
    job_.params.acrossPath = IsDlgButtonChecked(kAcrossCheck) == BST_CHECKED;
    job_.params.startTwist = RealIn(kStartTwist, job_.params.startTwist);
    job_.params.endTwist = RealIn(kEndTwist, job_.params.endTwist);
}

void CAACDlg::OnPickStart() {
    StepAside([this] { AskStart(job_); });
}

void CAACDlg::OnPickPrototype() {
    StepAside([this] {
        ClearPreview();
        AskPrototype(job_);
        updateAcross();
    });
}

} // namespace corvane
