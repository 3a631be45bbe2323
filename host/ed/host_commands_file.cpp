// QSAVE, SAVEAS, QUIT: the drawing's file and the session's end.
#include <filesystem>

#include "host/dxf/dxf.h"
#include "host/ed/application.h"
#include "host/ed/document.h"
#include "host/ed/editor_reactor.h"
#include "host/ed/host_command_tools.h"
#include "host/ed/interpreter.h"
#include "host/ed/prompting.h"
#include "host/ed/sysvars.h"
#include "host/os/files.h"
#include "host/os/text.h"

namespace host {
namespace {

std::wstring drawingPath() {
    const ACHAR* path = L"";
    drawing().getFilename(path);
    return path;
}

bool save(const std::wstring& path) {
    acedEditorPtr()->each([&](AcEditorReactor& r) { r.beginSave(&drawing(), path.c_str()); });
    acrxDynamicLinker->broadcast(AcRx::kSaveMsg);
    const WriteReport report = writeDrawing(utf8(path), drawing());
    if (!report.ok) return printLine(L"\nNot saved: " + wide(report.message)), false;
    for (const std::string& loss : report.losses) printLine(L"\nNote: " + wide(loss) + L".");
    printLine(L"\nSaved as " + path);
    acedEditorPtr()->each([&](AcEditorReactor& r) { r.saveComplete(&drawing(), path.c_str()); });
    return true;
}

// Asked unless EXPERT is 2 or more; a drawing's own file may always be replaced.
bool mayReplace(const std::wstring& path) {
    if (path == drawingPath() || !fileExists(utf8(path))) return true;
    if (systemVariableText(*findSystemVariable(L"EXPERT")) >= L"2") return true;
    acedInitGet(0, L"Yes No _Yes No");
    std::wstring answer;
    return acedGetKword(L"\nA drawing of that name exists. Replace it? [Yes/No] <N>: ", answer) == RTNORM &&
           answer == L"Yes";
}

} // namespace

void saveAsCommand() {
    const std::wstring present = drawingPath();
    resbuf answer;
    answer.restype = RTNONE;
    if (acedGetFileD(L"Save drawing as", present.c_str(), L"dxf", 1, &answer) != RTNORM) return;
    std::wstring path = answer.resval.rstring;
    acutDelString(answer.resval.rstring);
    if (std::filesystem::path(path).extension().empty()) path += L".dxf";
    if (mayReplace(path) && save(path)) drawing().setFilename(path);
}

void quickSaveCommand() {
    if (drawingPath().empty()) return saveAsCommand();
    save(drawingPath());
}

void quitCommand() { askQuit(); }

} // namespace host
