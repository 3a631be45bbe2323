// UCS: the axes drawing is done in.
#include <numbers>

#include "host/ed/frontend.h"
#include "host/ed/named_records.h"

namespace host {
namespace {

UserFrame userFrame() { return surroundings().user; }
AcGeVector3d zAxis(const UserFrame& frame) { return frame.xAxis.crossProduct(frame.yAxis).normal(); }

// Those of the working drawing that were current before, the latest last. Another drawing begins anew.
std::vector<UserFrame>& formerFrames() {
    static std::vector<UserFrame> frames;
    static const AcDbDatabase* of = nullptr;
    if (of != &drawing()) frames.clear(), of = &drawing();
    constexpr size_t kMost = 10;
    if (frames.size() > kMost) frames.erase(frames.begin());
    return frames;
}

void setUser(const UserFrame& frame, const std::wstring& name = {}) {
    const UserFrame former = userFrame();
    drawing().setHeaderPoint("$UCSORG", frame.origin);
    drawing().setHeaderPoint("$UCSXDIR", {frame.xAxis.x, frame.xAxis.y, frame.xAxis.z});
    drawing().setHeaderPoint("$UCSYDIR", {frame.yAxis.x, frame.yAxis.y, frame.yAxis.z});
    drawing().setHeaderText("$UCSNAME", 2, name);
    formerFrames().push_back(former);
    frontEnd().redraw();
}

void setPrevious() {
    std::vector<UserFrame>& frames = formerFrames();
    if (frames.empty()) return printLine(L"\nNo UCS stands before this one.");
    const UserFrame former = frames.back();
    setUser(former);
    frames.resize(frames.size() - 2); // this step back leaves no trace of its own
}

// Axes made square and of unit length; nothing when they span no plane.
std::optional<UserFrame> squared(const AcGePoint3d& origin, const AcGeVector3d& x, const AcGeVector3d& y) {
    const AcGeVector3d z = x.crossProduct(y);
    if (x.length() == 0 || z.length() <= 1e-12 * x.length() * y.length()) return std::nullopt;
    return UserFrame{origin, x.normal(), z.crossProduct(x).normal()};
}
void setSquared(const AcGePoint3d& origin, const AcGeVector3d& x, const AcGeVector3d& y) {
    const auto frame = squared(origin, x, y);
    frame ? setUser(*frame) : printLine(L"\nThe points span no plane; nothing was changed.");
}

void byOrigin(const AcGePoint3d& origin) {
    const UserFrame now = userFrame();
    const AcGePoint3d at = ucsToWorld(origin);
    const AskedPoint x = askPoint(L"\nSpecify point on X-axis or <accept>: ", &origin);
    if (x.status == RTNONE) return setUser({at, now.xAxis, now.yAxis});
    if (!x) return;
    const AcGeVector3d along = ucsToWorld(x.point) - at;
    const AskedPoint y = askPoint(L"\nSpecify point on the XY plane or <accept>: ", &origin);
    if (y) return setSquared(at, along, ucsToWorld(y.point) - at);
    if (y.status == RTNONE) setSquared(at, along, zAxis(now).crossProduct(along));
}

void turnRound(const std::wstring& axis) {
    const UserFrame now = userFrame();
    double angle = std::numbers::pi / 2;
    if (acedGetAngle(nullptr, (L"\nSpecify rotation angle about " + axis + L" axis <90>: ").c_str(),
                     &angle) == RTCAN)
        return;
    const AcGeVector3d about = axis == L"X" ? now.xAxis : axis == L"Y" ? now.yAxis : zAxis(now);
    const AcGeMatrix3d turn = AcGeMatrix3d::rotation(angle, about);
    setUser({now.origin, turn * now.xAxis, turn * now.yAxis});
}

// The axes of a normal, turned so that X keeps as near to the present one as the arbitrary axis rule does.
void byNormal(const AcGePoint3d& origin, const AcGeVector3d& normal) {
    const AcGeMatrix3d plane = AcGeMatrix3d::planeToWorld(normal);
    setUser({origin, plane * AcGeVector3d::kXAxis, plane * AcGeVector3d::kYAxis});
}

void byZAxis() {
    const AskedPoint origin = askPoint(L"\nSpecify new origin point <0,0,0>: ");
    if (!origin && origin.status != RTNONE) return;
    const AskedPoint z = askPoint(L"\nSpecify point on positive portion of Z-axis: ", &origin.point);
    if (!z) return;
    const AcGePoint3d at = ucsToWorld(origin.point);
    const AcGeVector3d normal = ucsToWorld(z.point) - at;
    if (normal.length() == 0) return printLine(L"\nThe two points are the same; nothing was changed.");
    byNormal(at, normal);
}

void byObject() {
    ads_name name;
    ads_point at;
    AcDbObjectId id;
    if (acedEntSel(L"\nSelect object to align UCS: ", name, at) != RTNORM ||
        acdbGetObjectId(id, name) != Acad::eOk)
        return;
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    AcGePlane plane;
    if (!entity || entity->getPlane(plane) != Acad::eOk)
        return printLine(L"\nThat object lies in no plane; nothing was changed.");
    AcGePoint3dArray grips;
    entity->getGripPoints(grips);
    byNormal(grips.isEmpty() ? plane.pointOnPlane() : grips[0], plane.normal());
}

void saveUser() {
    const std::wstring name = askName(L"\nEnter name to save current UCS: ");
    if (name.empty()) return;
    const UserFrame now = userFrame();
    auto record = recordToFill<AcDbUCSTableRecord, AcDbUCSTable>(name);
    if (!record) return;
    record->setOrigin(now.origin), record->setXAxis(now.xAxis), record->setYAxis(now.yAxis);
    drawing().setHeaderText("$UCSNAME", 2, name);
}

void restoreUser() {
    const std::wstring name = askName(L"\nEnter name of UCS to restore: ");
    if (name.empty()) return;
    AcDbObjectPointer<AcDbUCSTableRecord> record(drawing().find(AcDbUCSTable::desc(), name), AcDb::kForRead);
    if (!record) return printLine(L"\nThe drawing has no UCS \"" + name + L"\".");
    setUser({record->origin(), record->xAxis(), record->yAxis()}, name);
}

} // namespace

void ucsCommand() {
    const wchar_t kWords[] = L"NAmed New OBject Previous View World X Y Z ZAxis Save Restore Delete ? "
                             L"_NAmed New OBject Previous View World X Y Z ZAxis Save Restore Delete ?";
    const AskedPoint origin =
        askPoint(L"\nSpecify origin of UCS or [NAmed/OBject/Previous/View/World/X/Y/Z/ZAxis] <World>: ",
                 nullptr, kWords);
    if (origin) return byOrigin(origin.point);
    if (origin.status == RTNONE) return setUser({});
    if (origin.status != RTKWORD) return;
    std::wstring choice = chosenKeyword();
    if (choice == L"New") return ucsCommand();
    if (choice == L"NAmed") {
        acedInitGet(0, L"Restore Save Delete ? _Restore Save Delete ?");
        if (acedGetKword(L"\nEnter an option [Restore/Save/Delete/?]: ", choice) != RTNORM) return;
    }
    const UserFrame now = userFrame();
    const ViewFrame view = surroundings().view;
    if (choice == L"World") return setUser({});
    if (choice == L"Previous") return setPrevious();
    if (choice == L"View")
        return setUser({now.origin, view.displayToWorld() * AcGeVector3d::kXAxis,
                        view.displayToWorld() * AcGeVector3d::kYAxis});
    if (choice == L"OBject") return byObject();
    if (choice == L"ZAxis") return byZAxis();
    if (choice == L"Save") return saveUser();
    if (choice == L"Restore") return restoreUser();
    if (choice == L"Delete") return deleteNamed<AcDbUCSTable>(L"UCS");
    if (choice == L"?") return listNames<AcDbUCSTable>(L"coordinate systems");
    turnRound(choice);
}

} // namespace host
