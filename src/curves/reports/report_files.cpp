// The file dialog, and the viewer.
#include "curves/reports/report_files.h"

#include "core/host/dialogs.h"
#include "core/host/editor.h"
#include "core/messages.h"

namespace corvane {

bool AskTableFileName(const wchar_t* filter, std::wstring& path) {
    constexpr DWORD kFlags = 0x80002; // explorer style, asks before it replaces a file
    CFileDialog dialog(FALSE, nullptr, nullptr, kFlags, Translate(filter));
    if (dialog.DoModal() != IDOK) return PrintLine(L"\n未设定文件名。\n"), false;
    path = std::wstring(dialog.GetPathName());
    constexpr std::wstring_view kSheet = L".xls";
    if (path.ends_with(kSheet)) path.replace(path.size() - kSheet.size(), kSheet.size(), L".html");
    return true;
}

bool CanWriteReport(const std::wstring& path, const wchar_t* failure) {
    if (host_door::canWrite(path)) return true;
    AfxMessageBox(TranslateFormat(failure, path.c_str()));
    return false;
}

void OpenReport(const std::wstring& path) {
    const std::wstring launcher = host_door::moduleFolder() + L"openExcel.exe";
    host_door::isFile(launcher) ? host_door::openExternally(launcher, path) : host_door::openExternally(path);
    PrintText(TranslateFormat(L"\n列表已输出为<%s>, 马上会自动打开。", path.c_str()));
}

void FinishReport(const TableFile& table, const std::wstring& path, const wchar_t* failure) {
    if (table.Save()) return OpenReport(path);
    AfxMessageBox(TranslateFormat(failure, path.c_str()));
}

} // namespace corvane
