// The About dialog: the product's name and version, its pages, and the choice of the language.
#pragma once
#include <span>
#include <vector>

#include "core/dialog.h"
#include "core/host/system.h"

namespace corvane {

struct LanguageRow {
    const wchar_t* code;
    const wchar_t* shownAs; // in that language itself
};
// The languages to choose from, in their order.
std::span<const LanguageRow> LanguageTable();
// The row of the language in use, by its first two letters; 0 when it is none of the table.
int ActiveLanguageRow();

class CAbout : public CMyAcUiDialog {
public:
    explicit CAbout(CWnd* parent = nullptr);

protected:
    BOOL OnInitDialog() override;
    afx_msg void OnPaint();
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnTimer(UINT_PTR id);
    afx_msg void OnDestroy();
    afx_msg void OnLanguageChosen();
    afx_msg void OnProductPage();
    afx_msg void OnPrivacyPage();

private:
    struct Child {
        HWND window;
        CRect place;         // in the client area the dialog opened with
        std::wstring source; // its text before any translation
    };
    void loadPicture();
    void makeLanguageBox();
    void fillLanguageBox();
    void rememberChildren();
    void showCaption();

    CComboBox languages_;
    bool filling_ = false; // the selection changes by ourselves
    CImage picture_;
    CSize opened_; // client size
    std::vector<Child> children_;
    DECLARE_MESSAGE_MAP()
};

void AboutCommand();

} // namespace corvane
