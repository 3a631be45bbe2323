// NEW, OPEN, QSAVE, SAVEAS, CLOSE, QUIT: drawings, their files, and the session's end.
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
    return askYesNo(L"\nA drawing of that name exists. Replace it? [Yes/No] <N>: ", false).value_or(false);
}

// The path that the user gives at a file prompt.
std::optional<std::wstring> askPath(const wchar_t* title, const std::wstring& initial, int flags) {
    resbuf answer;
    answer.restype = RTNONE;
    if (acedGetFileD(title, initial.c_str(), L"dxf", flags, &answer) != RTNORM) return std::nullopt;
    const std::wstring path = answer.resval.rstring;
    acutDelString(answer.resval.rstring);
    return path;
}

// A drawing that is there already only becomes current.
AcApDocument* openDocumentOf(const std::wstring& path) {
    std::unique_ptr<AcApDocumentIterator> each(acDocManagerPtr()->newAcApDocumentIterator());
    for (; !each->done(); each->step()) {
        std::error_code failure;
        const std::wstring name = each->document()->fileName();
        if (!name.empty() && std::filesystem::equivalent(utf8(name), utf8(path), failure))
            return each->document();
    }
    return nullptr;
}

} // namespace

void newCommand() {
    whenIdle([] { acDocManagerPtr()->add(std::make_unique<AcDbDatabase>()); });
}

void openCommand() {
    const auto path = askPath(L"Open drawing", drawingPath(), 0);
    if (!path) return;
    if (AcApDocument* present = openDocumentOf(*path))
        return whenIdle([present] { acDocManagerPtr()->setCurDocument(present); });
    auto database = std::make_shared<std::unique_ptr<AcDbDatabase>>(std::make_unique<AcDbDatabase>(false));
    const ReadReport report = readDrawing(utf8(*path), **database);
    if (!report.ok) return printLine(L"\nNot opened: " + wide(report.message));
    (*database)->setFilename(*path);
    for (const ReadReport::Note& note : report.notes) printLine(L"\nNote: " + wide(note.sentence) + L".");
    whenIdle([database] { acDocManagerPtr()->add(std::move(*database)); });
}

void closeCommand() {
    if (drawing().undoLog().changedSinceSave()) {
        const auto keep = askYesNo(L"\nSave changes to the drawing? [Yes/No] <Y>: ", true);
        if (!keep) return;
        if (*keep) quickSaveCommand();
        if (*keep && drawing().undoLog().changedSinceSave()) return; // not saved after all
    }
    whenIdle([] {
        AcApDocument* closing = curDoc();
        std::unique_ptr<AcApDocumentIterator> each(acDocManagerPtr()->newAcApDocumentIterator());
        each->step();
        // There is always a drawing to work on.
        if (each->done()) acDocManagerPtr()->add(std::make_unique<AcDbDatabase>());
        acDocManagerPtr()->close(closing);
    });
}

void saveAsCommand() {
    const std::wstring present = drawingPath();
    const auto asked = askPath(L"Save drawing as", present, 1);
    if (!asked) return;
    std::wstring path = *asked;
    if (std::filesystem::path(path).extension().empty()) path += L".dxf";
    if (mayReplace(path) && save(path)) drawing().setFilename(path);
}

void quickSaveCommand() {
    if (drawingPath().empty()) return saveAsCommand();
    save(drawingPath());
}

void quitCommand() { askQuit(); }

} // namespace host
