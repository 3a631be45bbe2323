// CMyAcUiDialog: the base of all dialogs. Templates are drawn once, for a screen of 1920 by 1080 at 100
// percent; the base fits them to the screen they open on, draws pictures and texts of several lines itself so
// that they stay sharp, and has the dialog translated once the derived class has filled it.
//
// Derived dialogs call OnInitDialog first and do their own work after it; they add no scaling and no
// translating. How windows are translated stands in dialog_language.h, pictures from resources in
// dialog_resources.h.
#pragma once
#include <map>
#include <memory>
#include <vector>

#include "core/host/dialogs.h"

namespace corvane {

// Posted by a dialog to itself at the end of its initialisation.
inline constexpr UINT kPostInitTranslate = WM_APP + 0x10F;

// Size of a new edge or extent: rounded half up.
int ScaledLength(int length, double scale);
// The factor for a screen of that size, where the host has enlarged windows by `dpiFactor` already. Sizes
// below 1 and factors that aren't above 0 count as those of the reference screen.
double DialogScaleFor(int screenWidth, int screenHeight, double dpiFactor);

class CMyAcUiDialog : public CAcUiDialog {
public:
    explicit CMyAcUiDialog(UINT templateId, CWnd* parent = nullptr);
    ~CMyAcUiDialog() override;

    // What the dialog would be scaled by on the screen it is on; above 0.
    double ComputeDialogScale() const;

protected:
    BOOL OnInitDialog() override;
    afx_msg void OnDrawItem(int id, LPDRAWITEMSTRUCT draw);
    afx_msg LRESULT OnPostInitTranslate(WPARAM, LPARAM);

    // Numbers in edits, in the dialog's form.
    const wchar_t* realForm = L"%.6g";
    void ShowReal(int id, double value);
    // The number in an edit; the present one, with all its digits, when the edit shows it or holds none.
    double RealIn(int id, double present) const;

    void ApplyDialogScale(); // once; later calls do nothing
    void TakeOverPictureStatics();
    void TakeOverTextStatics();

    bool scaled = false;
    double scale = 1.0;
    int baseClientWidth = 0, baseClientHeight = 0; // before scaling
    CFont dialogFont;
    bool dialogFontMade = false;
    std::map<HFONT, std::unique_ptr<CFont>> scaledFonts; // by the font that was scaled
    std::map<HWND, HBITMAP> pictureStatics;
    std::vector<HWND> textStatics;

private:
    void scaleWindow();
    void scaleChildren();
    void scaleFonts();
    HFONT scaledFont(HFONT original);
    void drawPictureStatic(const DRAWITEMSTRUCT& draw, HBITMAP bitmap);
    void drawTextStatic(const DRAWITEMSTRUCT& draw);

    DECLARE_MESSAGE_MAP()
};

// Runs a dialog with this module's resources in use, and gives what it ended with.
INT_PTR RunModal(CDialog& dialog);

} // namespace corvane
