// CAACDlg: the dialog of arrays along one curve.
#pragma once
#include "arrays/common/array_dialog.h"
#include "arrays/one_curve/copies.h"

namespace corvane {

// What the command works on: the array's objects and parameters.
struct ArrayJob {
    ArraySource source;
    ArrayParams params;
};
// The prompts that both command and dialog have.
bool AskStart(ArrayJob& job);     // false when cancelled; nothing changed then
bool AskPrototype(ArrayJob& job); // with the base point; false when nothing was picked

class CAACDlg : public CArrayDialog {
public:
    explicit CAACDlg(ArrayJob& job, CWnd* parent = nullptr);

protected:
    BOOL OnInitDialog() override;
    std::optional<ArrayContents> Build() override { return MakeCopies(job_.source, job_.params); }
    void ReadControls() override;
    afx_msg void OnPickStart();
    afx_msg void OnPickPrototype();
    DECLARE_MESSAGE_MAP()

private:
    // Objects without a plane of their own can't be set across the path.
    void updateAcross();
    ArrayJob& job_;
};

} // namespace corvane
