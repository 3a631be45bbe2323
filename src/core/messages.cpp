// Messages, questions and the version they carry.
#include "core/messages.h"

#include "core/host/editor.h"
#include "core/version.h"

namespace corvane {
namespace {
bool debugPrint = false;
}

void PrintLine(const wchar_t* source) { PrintText(Translate(source)); }
void PrintText(const CString& text) { acutPrintf(L"%s", text.GetString()); }

void ReportCurveCount(int count) { PrintText(TranslateFormat(L"\n处理了< %d >根曲线。 ", count)); }

void NoticeBox(const wchar_t* source) {
    const CString caption = TranslateFormat(L"Corvane[V%s]", ProductVersionText());
    MessageBoxW(nullptr, Translate(source), caption, kMessageOk);
}

bool AskYesNo(const wchar_t* prompt, const wchar_t*, bool otherwise) {
    acedInitGet(0, L"Yes No");
    std::wstring answer;
    if (acedGetKword(Translate(prompt), answer) != RTNORM) return otherwise;
    return answer.starts_with(L'Y');
}

const CString& ProductVersionText() {
    static const CString text = [] {
        CString t;
        t.Format(L"%u.%02u", kVersion.major, kVersion.minor);
        return t;
    }();
    return text;
}

CString ProductVersionFull() {
    CString text;
    text.Format(L"%u.%u.%u.%u", kVersion.major, kVersion.minor, kVersion.build, kVersion.revision);
    return text;
}

int ProductVersionNumber() { return int(kVersion.major * 100 + kVersion.minor); }

void DebugPrint(const wchar_t* text) {
    if (debugPrint) acutPrintf(L"\n[] %s", text);
}
bool DebugPrintOn() { return debugPrint; }
void DebugPrintCommand() { debugPrint = AskYesNo(L"\nCorvane调试打印开关？[Y/N]（N）:", L"", false); }

} // namespace corvane
