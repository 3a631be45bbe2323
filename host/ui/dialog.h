// CDialog, modal and modeless, the exchange of its controls' values with members, and the host's dialog
// classes that step aside for picks. Who runs a modal one stands in runner.h.
#pragma once

#include "host/ui/controls.h"
#include "host/ui/runner.h"

class CDialog : public CWnd {
public:
    CDialog() = default;
    // The template of that number in the module in use when the dialog is made.
    explicit CDialog(UINT id, CWnd* parent = nullptr) : templateId_(id), parent_(parent) {}
    ~CDialog() override;

    // IDOK, IDCANCEL or what EndDialog was given; -1 when the dialog can't be made, and the runner told why.
    virtual INT_PTR DoModal();
    BOOL Create(UINT id, CWnd* parent = nullptr); // modeless
    BOOL CreateIndirect(LPCDLGTEMPLATE dialog, CWnd* parent = nullptr);
    BOOL InitModalIndirect(LPCDLGTEMPLATE dialog, CWnd* parent = nullptr); // copied; DoModal follows
    void EndDialog(int result) { ::EndDialog(m_hWnd, result); }
    void SetDefID(UINT id) { SendMessage(DM_SETDEFID, id); }
    DWORD GetDefID() const { return DWORD(SendMessage(DM_GETDEFID)); }
    void GotoDlgCtrl(CWnd* control) { control->SetFocus(); }
    void NextDlgCtrl() const;
    BOOL DestroyWindow() override;

    // FALSE when it has set the focus itself.
    virtual BOOL OnInitDialog();

protected:
    virtual void OnOK();     // UpdateData and, when that served, EndDialog(IDOK)
    virtual void OnCancel(); // EndDialog(IDCANCEL)
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    afx_msg void OnClose();
    DECLARE_MESSAGE_MAP()

private:
    bool make(const host::DialogTemplate& dialog, CWnd* parent);
    bool initialize();
    UINT templateId_ = 0;
    std::unique_ptr<host::DialogTemplate> template_; // of InitModalIndirect
    CWnd* parent_ = nullptr;
};

class CAdUiBaseDialog : public CDialog {
public:
    using CDialog::CDialog;
    // Between these the dialog is hidden and commands may ask for picks; they don't nest.
    void BeginEditorCommand();
    void CompleteEditorCommand(BOOL restore = TRUE);
    void CancelEditorCommand() { CompleteEditorCommand(TRUE); }
    ~CAdUiBaseDialog() override;

protected:
    DECLARE_MESSAGE_MAP()
};
class CAdUiDialog : public CAdUiBaseDialog {
public:
    using CAdUiBaseDialog::CAdUiBaseDialog;

protected:
    DECLARE_MESSAGE_MAP()
};
class CAcUiDialog : public CAdUiDialog {
public:
    using CAdUiDialog::CAdUiDialog;

protected:
    DECLARE_MESSAGE_MAP()
};

// An edit control for numbers within limits: leaving it brings the number into them.
class CAcUiEdit : public CEdit {
public:
    void SetRange(double low, double high) { low_ = low, high_ = high, limited_ = low <= high; }

protected:
    afx_msg void OnKillFocus(CWnd* next);
    DECLARE_MESSAGE_MAP()

private:
    double low_ = 0, high_ = 0;
    bool limited_ = false;
};

// Which way values go, and the complaint about one that doesn't serve.
class CDataExchange {
public:
    CDataExchange(CWnd* dialog, BOOL saveAndValidate)
        : m_bSaveAndValidate(saveAndValidate), m_pDlgWnd(dialog) {}
    BOOL m_bSaveAndValidate;
    CWnd* m_pDlgWnd;
    // Puts the focus on the control at fault and ends the exchange.
    [[noreturn]] void Fail();
    HWND PrepareCtrl(int id);
    struct Failure {};

private:
    HWND last_ = nullptr;
};
void DDX_Control(CDataExchange* exchange, int id, CWnd& control);
void DDX_Text(CDataExchange* exchange, int id, CString& value);
void DDX_Text(CDataExchange* exchange, int id, int& value);
void DDX_Text(CDataExchange* exchange, int id, double& value); // finite numbers
void DDX_Check(CDataExchange* exchange, int id, int& value);
void DDX_Radio(CDataExchange* exchange, int id, int& value); // the index in the group; -1: none
void DDX_CBIndex(CDataExchange* exchange, int id, int& value);
void DDX_LBIndex(CDataExchange* exchange, int id, int& value);
void DDX_Slider(CDataExchange* exchange, int id, int& value);
void DDV_MinMaxInt(CDataExchange* exchange, int value, int low, int high);
void DDV_MinMaxDouble(CDataExchange* exchange, const double& value, const double& low, const double& high);

// Asks for a file to open or save.
class CFileDialog {
public:
    // The filter: "Images (*.png)|*.png;*.jpg|All|*.*||".
    explicit CFileDialog(BOOL open, LPCTSTR extension = nullptr, LPCTSTR name = nullptr, DWORD flags = 6,
                         LPCTSTR filter = nullptr, CWnd* parent = nullptr);
    INT_PTR DoModal();            // IDOK or IDCANCEL
    CString GetPathName() const;  // whole
    CString GetFileName() const;  // without the folder
    CString GetFileTitle() const; // nor the ending
    CString GetFileExt() const;   // without the dot
    const std::vector<std::wstring>& paths() const { return paths_; }
    void SetTitle(LPCTSTR title) { question_.title = title; }

private:
    host::FileQuestion question_;
    std::vector<std::wstring> paths_;
};
