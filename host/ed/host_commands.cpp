// The rows of the host's own commands, their registration, and HELP.
#include "host/ed/host_commands.h"

#include "host/ed/host_command_tools.h"
#include "host/ed/interpreter.h"
#include "host/os/text.h"

namespace host {
namespace {

constexpr int kModal = ACRX_CMD_MODAL, kTransparent = ACRX_CMD_TRANSPARENT;

// clang-format off
constexpr HostCommand kCommands[] = {
    {L"LINE", L"L", kModal, lineCommand, L"Draws straight lines from point to point"},
    {L"PLINE", L"PL", kModal, polylineCommand, L"Draws a polyline of straight segments and arcs"},
    {L"CIRCLE", L"C", kModal, circleCommand, L"Draws a circle by centre and radius, or through points"},
    {L"ARC", L"A", kModal, arcCommand, L"Draws an arc through three points or by its centre"},
    {L"ELLIPSE", L"EL", kModal, ellipseCommand, L"Draws an ellipse or an elliptical arc"},
    {L"SPLINE", L"SPL", kModal, splineCommand, L"Draws a spline through fit points or over control points"},
    {L"POINT", L"PO", kModal, pointCommand, L"Draws a point"},
    {L"TEXT", L"DT", kModal, textCommand, L"Writes a line of text"},
    {L"ERASE", L"E", kModal, eraseCommand, L"Erases objects"},
    {L"MOVE", L"M", kModal, moveCommand, L"Moves objects"},
    {L"COPY", L"CO", kModal, copyCommand, L"Copies objects, as often as wanted"},
    {L"ROTATE", L"RO", kModal, rotateCommand, L"Turns objects round a point"},
    {L"SCALE", L"SC", kModal, scaleCommand, L"Makes objects larger or smaller"},
    {L"MIRROR", L"MI", kModal, mirrorCommand, L"Mirrors objects across a line"},
    {L"STRETCH", L"S", kModal, stretchCommand, L"Moves the points of objects that lie in a crossing window"},
    {L"EXPLODE", L"X", kModal, explodeCommand, L"Takes objects apart"},
    {L"OFFSET", L"O", kModal, offsetCommand, L"Draws curves at a distance beside curves"},
    {L"PEDIT", L"PE", kModal, polylineEditCommand, L"Edits polylines: closes, joins, widens, fits, smooths"},
    {L"BLOCK", L"B", kModal, blockCommand, L"Makes a block of objects"},
    {L"-BLOCK", L"-B", kModal, blockCommand, L"The same as BLOCK"},
    {L"INSERT", L"I", kModal, insertCommand, L"Inserts a block"},
    {L"-INSERT", L"-I", kModal, insertCommand, L"The same as INSERT"},
    {L"XCLIP", L"XC", kModal, clipCommand, L"Cuts block references to a boundary"},
    {L"PURGE", L"PU", kModal, purgeCommand, L"Takes out blocks, layers and styles that nothing uses"},
    {L"-PURGE", L"-PU", kModal, purgeCommand, L"The same as PURGE"},
    {L"WMFOUT", L"", kModal, metafileOutCommand, L"Writes objects as they are seen into a Windows metafile"},
    {L"WMFIN", L"", kModal, metafileInCommand, L"Inserts a Windows metafile as a block of polylines"},
    {L"LIST", L"LI", kModal, listCommand, L"Tells kind, layer, length and area of objects"},
    {L"LAYER", L"LA", kModal, layerCommand, L"Makes layers and sets what is shown of them"},
    {L"-LAYER", L"-LA", kModal, layerCommand, L"The same as LAYER"},
    {L"ZOOM", L"Z", kTransparent, zoomCommand, L"Sets the part of the drawing that is shown"},
    {L"UCS", L"", kModal, ucsCommand, L"Sets the axes that drawing is done in"},
    {L"PLAN", L"", kModal, planCommand, L"Shows the drawing from above a coordinate system"},
    {L"-VIEW", L"-V", kModal, viewCommand, L"Saves and restores views; shows the drawing from its sides"},
    {L"SETVAR", L"SET", kTransparent, setVariableCommand, L"Shows and sets system variables; their names alone do, too"},
    {L"U", L"", kModal, uCommand, L"Takes the last command back"},
    {L"UNDO", L"", kModal, undoCommand, L"Takes several commands back, or groups commands"},
    {L"REDO", L"", kModal, redoCommand, L"Does again what was taken back last"},
    {L"NEW", L"", kModal, newCommand, L"Begins another drawing"},
    {L"OPEN", L"", kModal, openCommand, L"Opens a drawing beside those that are open"},
    {L"CLOSE", L"", kModal, closeCommand, L"Closes the current drawing"},
    {L"QSAVE", L"", kModal, quickSaveCommand, L"Saves the drawing to its file"},
    {L"SAVEAS", L"", kModal, saveAsCommand, L"Saves the drawing to another file"},
    {L"HELP", L"?", kTransparent, helpCommand, L"Lists the commands"},
    {L"QUIT", L"EXIT", kModal, quitCommand, L"Ends the session without saving"},
};
// clang-format on

CommandNotes& moduleNotes() {
    static CommandNotes notes;
    return notes;
}

AcEdCommandStack& stack() {
    return *static_cast<AcEdCommandStack*>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
}

std::wstring padded(std::wstring text, size_t width) {
    if (text.size() < width) text.resize(width, L' ');
    return text + L' ';
}

} // namespace

std::span<const HostCommand> hostCommands() { return kCommands; }

std::wstring commandOfAlias(const std::wstring& alias) {
    if (!alias.empty())
        for (const HostCommand& row : kCommands)
            if (equalNoCase(row.alias, alias)) return row.name;
    return {};
}

void setCommandNotes(CommandNotes notes) { moduleNotes() = std::move(notes); }

CommandNote commandNote(const AcEdCommand& command) {
    for (const HostCommand& row : kCommands)
        if (command.functionAddr() == row.handler && equalNoCase(row.name, command.globalName()))
            return {row.summary, true};
    return moduleNotes() ? moduleNotes()(command) : CommandNote();
}

void registerHostCommands() {
    for (const HostCommand& row : kCommands)
        stack().addCommand(kHostGroup, row.name, row.name, row.flags, row.handler);
}

void helpCommand() {
    constexpr size_t kNameWidth = 16;
    std::wstring group;
    for (const auto& command : stack().commands()) {
        const CommandNote note = commandNote(*command);
        if (!note.built) continue;
        if (group != command->groupName()) acutPrintf(L"\n\n%s:", (group = command->groupName()).c_str());
        acutPrintf(L"\n  %s%s", padded(command->localName(), kNameWidth).c_str(), note.summary.c_str());
    }
    acutPrintf(L"\n\nEnter repeats the last command; ' before a name runs a command inside another one.");
}

} // namespace host
