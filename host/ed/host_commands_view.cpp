// ZOOM, PLAN and -VIEW: what is seen, and from where.
#include <algorithm>
#include <cmath>

#include "host/ed/editor_reactor.h"
#include "host/ed/frontend.h"
#include "host/ed/host_command_tools.h"
#include "host/ed/named_records.h"
#include "host/ed/prompting.h"
#include "host/os/numbers.h"
#include "host/view/collector.h"

namespace host {
namespace {

// -- the view -----------------------------------------------------------------------------------------

void showFrame(const ViewFrame& view) {
    keepView(drawing(), view);
    viewChanged();
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

std::optional<AcDbExtents2d> askRest(const AcGePoint3d& first) {
    ads_point from{first.x, first.y, first.z}, to;
    if (acedGetCorner(from, L"\nSpecify opposite corner: ", to) != RTNORM) return std::nullopt;
    const ViewFrame view = surroundings().view;
    AcDbExtents2d box;
    for (const AcGePoint3d& corner : {first, AcGePoint3d(to[X], to[Y], to[Z])})
        if (const auto seen = view.seen(ucsToWorld(corner))) box.addPoint({seen->x, seen->y});
    if (box.isValid() && box.minPoint().x < box.maxPoint().x && box.minPoint().y < box.maxPoint().y)
        return box;
    return printLine(L"\nThe window has no area."), std::nullopt;
}

void zoomWindow(const AcGePoint3d& first) {
    if (const auto box = askRest(first)) zoomTo(*box, 0);
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

constexpr double kMargin = 0.02; // round what ZOOM Extents and PLAN show, as a part of its size

// The whole drawing from that side.
void lookAlong(const AcGeVector3d& direction, double twist) {
    ViewFrame view = surroundings().view;
    view.direction = direction;
    view.twist = twist;
    view.perspective = false;
    const AcDbExtents2d box = covered(view, false);
    view.fit(box.minPoint(), box.maxPoint(), kMargin);
    showFrame(view);
}

// -- named views --------------------------------------------------------------------------------------------

void saveView(const ViewFrame& view) {
    const std::wstring name = askName(L"\nEnter view name to save: ");
    if (name.empty()) return;
    auto record = recordToFill<AcDbViewTableRecord, AcDbViewTable>(name);
    if (!record) return;
    record->setCenterPoint(view.center), record->setHeight(view.height), record->setWidth(view.width());
    record->setTarget(view.target), record->setViewDirection(view.direction),
        record->setViewTwist(view.twist);
}

void restoreView() {
    const std::wstring name = askName(L"\nEnter view name to restore: ");
    if (name.empty()) return;
    AcDbObjectPointer<AcDbViewTableRecord> record(drawing().find(AcDbViewTable::desc(), name),
                                                  AcDb::kForRead);
    if (!record) return printLine(L"\nThe drawing has no view \"" + name + L"\".");
    ViewFrame view = surroundings().view;
    view.center = record->centerPoint(), view.height = record->height();
    view.target = record->target(), view.direction = record->viewDirection(),
    view.twist = record->viewTwist();
    showFrame(view);
}

void saveWindow() {
    const AskedPoint first = askPoint(L"\nSpecify first corner: ");
    const auto box = first ? askRest(first.point) : std::nullopt;
    if (!box) return;
    ViewFrame view = surroundings().view;
    view.fit(box->minPoint(), box->maxPoint(), 0);
    saveView(view);
}

struct Side {
    const wchar_t* word;
    AcGeVector3d direction;
};
const Side kSides[] = {{L"Top", {0, 0, 1}},     {L"BOttom", {0, 0, -1}}, {L"Front", {0, -1, 0}},
                       {L"BAck", {0, 1, 0}},    {L"Left", {-1, 0, 0}},   {L"Right", {1, 0, 0}},
                       {L"SWiso", {-1, -1, 1}}, {L"SEiso", {1, -1, 1}},  {L"NEiso", {1, 1, 1}},
                       {L"NWiso", {-1, 1, 1}}};

std::wstring sideWords() {
    std::wstring words;
    for (const Side& side : kSides) words += (words.empty() ? L"" : L" ") + std::wstring(side.word);
    return words;
}

void lookFrom(const std::wstring& word) {
    for (const Side& side : kSides)
        if (word == side.word) lookAlong(side.direction, 0);
}

void orthographic() {
    const std::wstring words = sideWords();
    std::wstring shownWords = words, choice;
    std::replace(shownWords.begin(), shownWords.end(), L' ', L'/');
    acedInitGet(0, (words + L" _" + words).c_str());
    if (acedGetKword((L"\nEnter an option [" + shownWords + L"] <Top>: ").c_str(), choice) == RTCAN) return;
    lookFrom(choice.empty() ? kSides[0].word : choice);
}

} // namespace

void zoomCommand() {
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

void planCommand() {
    acedInitGet(0, L"Current Ucs World _Current Ucs World");
    std::wstring choice;
    if (acedGetKword(L"\nEnter an option [Current ucs/Ucs/World] <Current>: ", choice) == RTCAN) return;
    UserFrame frame = surroundings().user;
    if (choice == L"World") frame = {};
    if (choice == L"Ucs") {
        const std::wstring name = askName(L"\nEnter name of UCS: ");
        AcDbObjectPointer<AcDbUCSTableRecord> record(drawing().find(AcDbUCSTable::desc(), name),
                                                     AcDb::kForRead);
        if (!record) return printLine(L"\nThe drawing has no UCS \"" + name + L"\".");
        frame = {record->origin(), record->xAxis(), record->yAxis()};
    }
    // Seen from above, X must point to the right: the twist undoes the turn against the view's own axes.
    ViewFrame flat;
    flat.direction = frame.xAxis.crossProduct(frame.yAxis);
    const AcGeVector3d x = flat.worldToDisplay() * frame.xAxis;
    lookAlong(flat.direction, -std::atan2(x.y, x.x));
}

void viewCommand() {
    // Sides are taken at once, too, as scripts have them: -VIEW _SWISO.
    const std::wstring words = L"? Delete Orthographic Restore Save Window " + sideWords();
    acedInitGet(0, (words + L" _" + words).c_str());
    std::wstring choice;
    if (acedGetKword(L"\nEnter an option [?/Delete/Orthographic/Restore/Save/Window]: ", choice) != RTNORM)
        return;
    if (choice == L"?") return listNames<AcDbViewTable>(L"views");
    if (choice == L"Delete") return deleteNamed<AcDbViewTable>(L"view");
    if (choice == L"Orthographic") return orthographic();
    if (choice == L"Restore") return restoreView();
    if (choice == L"Save") return saveView(surroundings().view);
    if (choice == L"Window") return saveWindow();
    lookFrom(choice);
}

} // namespace host
