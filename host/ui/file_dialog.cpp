// Asking for files.
#include "host/os/files.h"
#include "host/ui/dialog.h"

using namespace host;

namespace {

// "label|*.a;*.b|label|*.*||"; blanks around the parts don't count.
std::vector<FileFilter> filtersOf(std::wstring_view text) {
    std::vector<std::wstring> parts;
    for (std::size_t from = 0; from <= text.size();) {
        const std::size_t end = std::min(text.find(L'|', from), text.size());
        parts.emplace_back(trimmed(text.substr(from, end - from)));
        from = end + 1;
    }
    std::vector<FileFilter> filters;
    for (std::size_t i = 0; i + 1 < parts.size() && !parts[i].empty(); i += 2) {
        FileFilter filter{parts[i], {}};
        std::wstring_view patterns = parts[i + 1];
        while (!patterns.empty()) {
            const std::size_t end = std::min(patterns.find(L';'), patterns.size());
            if (end > 0) filter.patterns.emplace_back(trimmed(patterns.substr(0, end)));
            patterns.remove_prefix(std::min(end + 1, patterns.size()));
        }
        filters.push_back(std::move(filter));
    }
    return filters;
}

} // namespace

CFileDialog::CFileDialog(BOOL open, LPCTSTR extension, LPCTSTR name, DWORD flags, LPCTSTR filter, CWnd*) {
    question_.open = open != FALSE;
    question_.extension = extension ? extension : L"";
    question_.initial = name ? name : L"";
    question_.mustExist = (flags & OFN_FILEMUSTEXIST) != 0;
    question_.asksBeforeOverwriting = !open && (flags & OFN_OVERWRITEPROMPT);
    question_.many = (flags & OFN_ALLOWMULTISELECT) != 0;
    question_.filters = filtersOf(filter ? filter : L"");
}

INT_PTR CFileDialog::DoModal() {
    paths_ = dialogRunner().chooseFile(question_);
    if (paths_.empty()) return IDCANCEL;
    // A name without an ending gets the usual one.
    if (!question_.open && !question_.extension.empty() && GetFileExt().IsEmpty())
        paths_.front() += L'.' + question_.extension;
    return IDOK;
}

CString CFileDialog::GetPathName() const {
    return paths_.empty() ? CString(question_.initial) : CString(paths_.front());
}
CString CFileDialog::GetFileName() const {
    const std::wstring path = GetPathName().str();
    return CString(path.substr(path.find_last_of(L"/\\") + 1));
}
CString CFileDialog::GetFileTitle() const {
    const std::wstring name = GetFileName().str();
    return CString(name.substr(0, name.rfind(L'.')));
}
CString CFileDialog::GetFileExt() const {
    const std::wstring name = GetFileName().str();
    const std::size_t dot = name.rfind(L'.');
    return dot == std::wstring::npos ? CString() : CString(name.substr(dot + 1));
}
