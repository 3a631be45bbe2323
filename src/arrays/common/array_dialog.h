// The base of the dialogs of arrays by count or spacing: their edits, radio buttons and variations, the
// preview that follows every change, and picks during which the dialog steps aside. Derived dialogs say what
// the copies are, and add controls of their own.
#pragma once
#include "arrays/common/editable_array.h"
#include "arrays/common/spacing.h"
#include "arrays/variation/variation_dialog.h"

namespace corvane {

class CArrayDialog : public CVariationDialog {
public:
    CArrayDialog(UINT templateId, CWnd* parent, const GraphTraits& traits, ArraySettings& settings);

protected:
    // Derived dialogs fill their own controls, then call StartPreview.
    BOOL OnInitDialog() override;
    void OnOK() override;     // reads the controls; the preview goes
    void OnCancel() override; // the preview goes
    void OnVariationChanged() override { Changed(); }

    // What the settings give at present; nothing when they can't give any.
    virtual std::optional<ArrayContents> Build() = 0;
    // Brings the settings up to date with the controls. Numbers that can't be read leave what was.
    virtual void ReadControls();

    void StartPreview();
    // After a change by the user: reads the controls and shows the copies anew.
    afx_msg void Changed();
    // Hides the dialog, lets `pick` ask in the drawing, comes back; then shows the copies anew.
    template <class Pick> void StepAside(Pick pick);
    void ClearPreview() { preview_.Clear(); } // picks of objects must not find it

    DECLARE_MESSAGE_MAP()

private:
    // Keeps changes quiet: the dialog fills its controls, or a pick runs.
    class Quiet {
    public:
        explicit Quiet(CArrayDialog& dialog) : dialog_(dialog) { ++dialog_.quiet_; }
        ~Quiet() { --dialog_.quiet_; }
        Quiet(const Quiet&) = delete;
        Quiet& operator=(const Quiet&) = delete;

    private:
        CArrayDialog& dialog_;
    };
    void showCopies();

    ArraySettings& settings_;
    ArrayPreview preview_;
    int quiet_ = 1; // until the preview starts
};

template <class Pick> void CArrayDialog::StepAside(Pick pick) {
    {
        const Quiet quiet(*this);
        BeginEditorCommand();
        pick();
        CompleteEditorCommand();
    }
    Changed();
}

} // namespace corvane
