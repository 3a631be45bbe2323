// UNDO, U and REDO: taking commands back and doing them again.
#include "host/ed/host_command_tools.h"
#include "host/ed/interpreter.h"
#include "host/ed/prompting.h"

namespace host {
namespace {

// Steps of a group bear the name of the command that began it.
std::wstring shownName(const std::wstring& name) { return name.empty() || name == L"UNDO" ? L"GROUP" : name; }

// Takes back up to `count` steps and prints their names.
void takeBack(int count) {
    UndoLog& log = drawing().undoLog();
    std::wstring names;
    int done = 0;
    for (; done < count; ++done) {
        const std::wstring name = log.lastName();
        if (log.undo() == 0) break;
        names += shownName(name) + L" ";
    }
    printLine(done == 0 ? L"\nNothing to undo." : L"\n" + names);
    if (done > 0 && done < count) printLine(L"\nEverything has been undone.");
}

// Brackets that no running command holds.
int openGroups() { return drawing().undoLog().depth() - runningCommands(); }

void endGroup() {
    if (openGroups() > 0)
        drawing().undoLog().end();
    else
        printLine(L"\nNo group has been begun.");
}

bool confirmsUndoOfAll() {
    return askYesNo(L"\nThis will undo everything. OK? [Yes/No] <Y>: ", true).value_or(false);
}

void backToMark() {
    UndoLog& log = drawing().undoLog();
    if (!log.hasMark() && log.undoSteps() > 0 && !confirmsUndoOfAll()) return;
    const bool marked = log.hasMark();
    if (log.undoToMark() == 0 && !marked)
        printLine(L"\nNothing to undo.");
    else
        printLine(marked ? L"\nMark encountered." : L"\nEverything has been undone.");
}

} // namespace

void undoCommand() {
    acedInitGet(RSG_NOZERO | RSG_NONEG, L"Begin End Mark BAck _Begin End Mark BAck");
    int count = 1;
    const int status =
        acedGetInt(L"\nEnter the number of operations to undo or [Begin/End/Mark/BAck] <1>: ", &count);
    if (status == RTNORM || status == RTNONE) return takeBack(count);
    if (status != RTKWORD) return;
    const std::wstring choice = chosenKeyword();
    if (choice == L"Begin") drawing().undoLog().begin(L"GROUP");
    if (choice == L"End") endGroup();
    if (choice == L"Mark") drawing().undoLog().setMark();
    if (choice == L"BAck") backToMark();
}

void uCommand() { takeBack(1); }

void redoCommand() { printLine(drawing().undoLog().redo() ? L"\nDone again." : L"\nNothing to redo."); }

} // namespace host
