// SETVAR and ZOOM: settings of the session and of the view.
#include <algorithm>
#include <cmath>

#include "host/ed/frontend.h"
#include "host/ed/host_command_tools.h"
#include "host/ed/interpreter.h"
#include "host/ed/prompting.h"
#include "host/ed/sysvars.h"
#include "host/os/numbers.h"
#include "host/os/text.h"
#include "host/os/wildcard.h"
#include "host/view/collector.h"

namespace host {
namespace {

// -- SETVAR -------------------------------------------------------------------------------------------

std::wstring shownValue(const SystemVariable& variable) {
    const std::wstring text = systemVariableText(variable);
    return variable.type == RTSTR ? L"\"" + text + L"\"" : text;
}

void listVariables() {
    std::wstring pattern;
    if (acedGetString(0, L"\nEnter variable(s) to list <*>: ", pattern) != RTNORM) return;
    if (pattern.empty()) pattern = L"*";
    constexpr size_t kNameWidth = 14;
    for (const SystemVariable& variable : systemVariables()) {
        if (!wildcardMatch(variable.name, pattern)) continue;
        std::wstring name = variable.name;
        name.resize(std::max(name.size(), kNameWidth), L' ');
        printLine(L"\n" + name + shownValue(variable) + (variable.readOnly ? L" (read only)" : L""));
    }
}

void askValue(const SystemVariable& variable) {
    const std::wstring present = shownValue(variable);
    if (variable.readOnly)
        return printLine(L"\n" + std::wstring(variable.name) + L" = " + present + L" (read only)");
    const std::wstring prompt = L"\nEnter new value for " + std::wstring(variable.name) +
                                (variable.type == RTSTR ? L", or . for none <" : L" <") + present + L">: ";
    for (;;) {
        std::wstring text, why;
        if (acedGetString(variable.type == RTSTR, prompt.c_str(), text) != RTNORM || text.empty()) return;
        if (variable.type == RTSTR && text == L".") text.clear();
        if (setSystemVariableText(variable, text, why)) return;
        printLine(L"\n" + std::wstring(variable.name) + L": " + why + L".");
    }
}

// -- ZOOM ---------------------------------------------------------------------------------------------

void showFrame(const ViewFrame& view) {
    AcDbObjectPointer<AcDbViewportTable> table(drawing().viewportTableId(), AcDb::kForRead);
    AcDbObjectId id;
    if (!table || table->getAt(L"*Active", id) != Acad::eOk) return;
    AcDbObjectPointer<AcDbViewportTableRecord> active(id, AcDb::kForWrite);
    if (!active) return;
    active->setCenterPoint(view.center);
    active->setHeight(view.height);
    active->setWidth(view.height * view.aspect);
    frontEnd().redraw();
}

// What the drawing covers as the view sees it; with `limits` the drawing's limits too.
AcDbExtents2d covered(const ViewFrame& view, bool limits) {
    AcDbExtents2d box = seenExtents(displaySpace(drawing(), drawing().currentSpaceId()), view);
    if (!limits && box.isValid()) return box;
    for (const char* corner : {"$LIMMIN", "$LIMMAX"})
        if (const auto point = view.seen(drawing().headerPoint(corner))) box.addPoint({point->x, point->y});
    return box;
}

void zoomTo(const AcDbExtents2d& box, double margin) {
    ViewFrame view = surroundings().view;
    view.fit(box.minPoint(), box.maxPoint(), margin);
    showFrame(view);
}

void zoomWindow(const AcGePoint3d& first) {
    ads_point from{first.x, first.y, first.z}, to;
    if (acedGetCorner(from, L"\nSpecify opposite corner: ", to) != RTNORM) return;
    const ViewFrame view = surroundings().view;
    AcDbExtents2d box;
    for (const AcGePoint3d& corner : {first, AcGePoint3d(to[X], to[Y], to[Z])})
        if (const auto seen = view.seen(ucsToWorld(corner))) box.addPoint({seen->x, seen->y});
    if (!box.isValid() || box.minPoint().x == box.maxPoint().x || box.minPoint().y == box.maxPoint().y)
        return printLine(L"\nThe window has no area.");
    zoomTo(box, 0);
}

// "2" counts from the drawing's limits, "2x" from what is shown now.
void zoomByFactor(const std::wstring& text) {
    const bool relative = !text.empty() && (text.back() == L'x' || text.back() == L'X');
    const auto factor = parseReal(std::wstring_view(text).substr(0, text.size() - relative));
    if (!factor || !(*factor > 0))
        return printLine(L"\nA corner, a factor such as 2 or 0.5x, or one of All/Extents/Window is needed.");
    ViewFrame view = surroundings().view;
    const double whole = drawing().headerPoint("$LIMMAX").y - drawing().headerPoint("$LIMMIN").y;
    view.height = (relative || !(whole > 0) ? view.height : whole) / *factor;
    showFrame(view);
}

} // namespace

void setVariableCommand() {
    // A variable's name typed as a command comes here.
    if (const SystemVariable* typed = findSystemVariable(runningCommandWord())) return askValue(*typed);
    for (;;) {
        std::wstring name;
        if (acedGetString(0, L"\nEnter variable name or [?]: ", name) != RTNORM || name.empty()) return;
        if (name == L"?") return listVariables();
        if (const SystemVariable* variable = findSystemVariable(name)) return askValue(*variable);
        printLine(L"\nThere is no variable \"" + name + L"\"; ? lists them.");
    }
}

void zoomCommand() {
    constexpr double kMargin = 0.02;
    const AskedPoint corner =
        askPoint(L"\nSpecify corner of window, enter a scale factor (nX), or [All/Extents/Window]: ", nullptr,
                 L"All Extents Window _All Extents Window", RSG_OTHER);
    if (corner) return zoomWindow(corner.point);
    if (corner.status != RTKWORD) return;
    const std::wstring choice = chosenKeyword();
    const ViewFrame view = surroundings().view;
    if (choice == L"All") return zoomTo(covered(view, true), 0);
    if (choice == L"Extents") return zoomTo(covered(view, false), kMargin);
    if (choice != L"Window") return zoomByFactor(choice);
    const AskedPoint first = askPoint(L"\nSpecify first corner: ");
    if (first) zoomWindow(first.point);
}

} // namespace host
