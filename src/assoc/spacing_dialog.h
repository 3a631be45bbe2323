// The dialog that edits a family of copies between two curves while the drawing follows: their number, and
// the function that spreads them with its graph. Built in memory. What the family is, and how it is made
// anew, is its owner's.
#pragma once
#include <functional>
#include <optional>
#include <vector>

#include "assoc/spacing_graph.h"
#include "core/dialog.h"

namespace corvane {

inline constexpr int kSmallestFamily = 1, kLargestFamily = 100;

// What differs from family to family. Texts are source texts.
struct SpacingDialogTexts {
    const wchar_t* caption;
    const wchar_t* countLabel;
    const wchar_t* countComplaint;
    const wchar_t* graphClass;
};

struct CopyFamily {
    int count = 16;
    SpacingFunction spacing;
    bool operator==(const CopyFamily&) const = default;
};

class CSpacingDialog : public CMyAcUiDialog {
public:
    static constexpr int kCountEdit = 1001, kKindBox = 1003, kGraph = 1004;
    // `changed` hears of every change of the function; the number of copies counts with OK alone. Of `kinds`
    // the lowest five bits say which functions are offered; all when none is set.
    CSpacingDialog(const SpacingDialogTexts& texts, const CopyFamily& family, unsigned kinds,
                   std::function<void(const CopyFamily&)> changed);
    const CopyFamily& family() const { return family_; }
    // True once `changed` has been told anything.
    bool touched() const { return touched_; }

protected:
    BOOL OnInitDialog() override;
    void OnOK() override;
    afx_msg void OnKindChosen();
    afx_msg LRESULT OnGraphChanged(WPARAM, LPARAM);
    DECLARE_MESSAGE_MAP()

private:
    void fillKinds();
    void showSpacing();
    void tell();

    const SpacingDialogTexts texts_;
    CopyFamily family_;
    const unsigned kinds_;
    const std::function<void(const CopyFamily&)> changed_;
    CSpacingGraph graph_;
    bool touched_ = false;
};

// Runs the dialog on `family`. `rebuild` is called with every state that the drawing is to show: on changes,
// with the family as it was after Cancel if anything had changed, with the result after OK. Nothing after
// Cancel, else the last rebuild's result.
std::optional<bool> EditCopyFamily(const SpacingDialogTexts& texts, const CopyFamily& family,
                                   const std::function<bool(const CopyFamily&)>& rebuild);

} // namespace corvane
