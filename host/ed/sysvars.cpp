// The table of system variables, and reading and writing them.
#include "host/ed/sysvars.h"

#include <cmath>
#include <map>

#include "host/db/database.h"
#include "host/ed/document.h"
#include "host/ed/editor.h"
#include "host/ed/editor_reactor.h"
#include "host/ed/interpreter.h"
#include "host/os/clock.h"
#include "host/os/locale.h"
#include "host/os/registry.h"
#include "host/os/text.h"

namespace host {

int colorIndexOf(const std::wstring& text) {
    static const std::map<std::wstring, int> kNames = {{L"bylayer", 256}, {L"byblock", 0}, {L"red", 1},
                                                       {L"yellow", 2},    {L"green", 3},   {L"cyan", 4},
                                                       {L"blue", 5},      {L"magenta", 6}, {L"white", 7}};
    if (const auto named = kNames.find(lower(text)); named != kNames.end()) return named->second;
    const auto number = parseInteger(std::wstring_view(text));
    return number && *number >= 0 && *number <= 256 ? int(*number) : -1;
}

namespace {

using Home = SystemVariable::Home;
constexpr wchar_t kProfileKey[] = L"Software\\Host\\Variables";

// clang-format off
const std::vector<SystemVariable> kVariables = {
    {L"ANGBASE", RTREAL, Home::drawing, "$ANGBASE", 50, L"0.0"},
    {L"ANGDIR", RTSHORT, Home::drawing, "$ANGDIR", 70, L"0", 0, 1},
    {L"ATTDIA", RTSHORT, Home::profile, nullptr, 0, L"0", 0, 1},
    {L"ATTREQ", RTSHORT, Home::profile, nullptr, 0, L"1", 0, 1},
    {L"AUNITS", RTSHORT, Home::drawing, "$AUNITS", 70, L"0", 0, 4},
    {L"AUPREC", RTSHORT, Home::drawing, "$AUPREC", 70, L"0", 0, 8},
    {L"AUTOSNAP", RTSHORT, Home::profile, nullptr, 0, L"63", 0, 127},
    {L"CDATE", RTREAL, Home::computed, nullptr, 0, L"", 0, 0, true},
    {L"CECOLOR", RTSTR, Home::drawing, "$CECOLOR", 62, L"BYLAYER"},
    {L"CELTSCALE", RTREAL, Home::drawing, "$CELTSCALE", 40, L"1.0", 1e-9, 1e99},
    {L"CELTYPE", RTSTR, Home::drawing, "$CELTYPE", 6, L"ByLayer"},
    {L"CELWEIGHT", RTSHORT, Home::drawing, "$CELWEIGHT", 370, L"-1", -3, 211},
    {L"CLAYER", RTSTR, Home::drawing, "$CLAYER", 8, L"0"},
    {L"CMDACTIVE", RTSHORT, Home::computed, nullptr, 0, L"", 0, 0, true},
    {L"CMDDIA", RTSHORT, Home::profile, nullptr, 0, L"1", 0, 1},
    {L"CMDECHO", RTSHORT, Home::session, nullptr, 0, L"1", 0, 1},
    {L"CMDNAMES", RTSTR, Home::computed, nullptr, 0, L"", 0, 0, true},
    {L"CTAB", RTSTR, Home::computed, nullptr, 0, L"", 0, 0, true},
    {L"CVPORT", RTSHORT, Home::session, nullptr, 0, L"2", 1, 32767},
    {L"DBMOD", RTSHORT, Home::computed, nullptr, 0, L"", 0, 0, true},
    {L"DEFAULTGIZMO", RTSHORT, Home::profile, nullptr, 0, L"0", 0, 3},
    {L"DELOBJ", RTSHORT, Home::profile, nullptr, 0, L"1", -3, 3},
    {L"DWGNAME", RTSTR, Home::computed, nullptr, 0, L"", 0, 0, true},
    {L"DWGPREFIX", RTSTR, Home::computed, nullptr, 0, L"", 0, 0, true},
    {L"ELEVATION", RTREAL, Home::drawing, "$ELEVATION", 40, L"0.0"},
    {L"ERRNO", RTSHORT, Home::session, nullptr, 0, L"0", 0, 255},
    {L"EXPERT", RTSHORT, Home::session, nullptr, 0, L"0", 0, 5},
    {L"EXTMAX", RT3DPOINT, Home::computed, nullptr, 0, L"", 0, 0, true},
    {L"EXTMIN", RT3DPOINT, Home::computed, nullptr, 0, L"", 0, 0, true},
    {L"FILEDIA", RTSHORT, Home::profile, nullptr, 0, L"1", 0, 1},
    {L"FILLMODE", RTSHORT, Home::drawing, "$FILLMODE", 70, L"1", 0, 1},
    {L"GRIPS", RTSHORT, Home::profile, nullptr, 0, L"2", 0, 2},
    {L"GRIDMODE", RTSHORT, Home::session, nullptr, 0, L"0", 0, 1},
    {L"HIGHLIGHT", RTSHORT, Home::session, nullptr, 0, L"1", 0, 1},
    {L"HPISLANDDETECTION", RTSHORT, Home::profile, nullptr, 0, L"1", 0, 2},
    {L"HPISLANDDETECTIONMODE", RTSHORT, Home::profile, nullptr, 0, L"1", 0, 1},
    {L"INSNAME", RTSTR, Home::session, nullptr, 0, L""},
    {L"INSUNITS", RTSHORT, Home::drawing, "$INSUNITS", 70, L"4", 0, 24},
    {L"LASTANGLE", RTREAL, Home::session, nullptr, 0, L"0.0", 0, 0, true},
    {L"LASTPOINT", RT3DPOINT, Home::session, nullptr, 0, L"0.0,0.0,0.0"},
    {L"LIMMAX", RTPOINT, Home::drawing, "$LIMMAX", 10, L"420.0,297.0"},
    {L"LIMMIN", RTPOINT, Home::drawing, "$LIMMIN", 10, L"0.0,0.0"},
    {L"LOCALE", RTSTR, Home::computed, nullptr, 0, L"", 0, 0, true},
    {L"LTSCALE", RTREAL, Home::drawing, "$LTSCALE", 40, L"1.0", 1e-9, 1e99},
    {L"LUNITS", RTSHORT, Home::drawing, "$LUNITS", 70, L"2", 1, 5},
    {L"LUPREC", RTSHORT, Home::drawing, "$LUPREC", 70, L"4", 0, 8},
    {L"LWDISPLAY", RTSHORT, Home::drawing, "$LWDISPLAY", 290, L"0", 0, 1},
    {L"MEASUREMENT", RTSHORT, Home::drawing, "$MEASUREMENT", 70, L"1", 0, 1},
    {L"MENUBAR", RTSHORT, Home::profile, nullptr, 0, L"0", 0, 1},
    {L"MENUECHO", RTSHORT, Home::session, nullptr, 0, L"0", 0, 15},
    {L"MIRRTEXT", RTSHORT, Home::drawing, "$MIRRTEXT", 70, L"0", 0, 1},
    {L"NOMUTT", RTSHORT, Home::session, nullptr, 0, L"0", 0, 1},
    {L"OFFSETDIST", RTREAL, Home::session, nullptr, 0, L"1.0"},
    {L"OFFSETGAPTYPE", RTSHORT, Home::profile, nullptr, 0, L"0", 0, 2},
    {L"ORTHOMODE", RTSHORT, Home::drawing, "$ORTHOMODE", 70, L"0", 0, 1},
    {L"OSMODE", RTSHORT, Home::profile, nullptr, 0, L"4133", 0, 32767},
    {L"PDMODE", RTSHORT, Home::drawing, "$PDMODE", 70, L"0", 0, 100},
    {L"PDSIZE", RTREAL, Home::drawing, "$PDSIZE", 40, L"0.0"},
    {L"PEDITACCEPT", RTSHORT, Home::profile, nullptr, 0, L"0", 0, 1},
    {L"PICKADD", RTSHORT, Home::profile, nullptr, 0, L"2", 0, 2},
    {L"PICKAUTO", RTSHORT, Home::profile, nullptr, 0, L"1", 0, 7},
    {L"PICKBOX", RTSHORT, Home::profile, nullptr, 0, L"3", 0, 50},
    {L"PICKDRAG", RTSHORT, Home::profile, nullptr, 0, L"2", 0, 2},
    {L"PICKFIRST", RTSHORT, Home::profile, nullptr, 0, L"1", 0, 1},
    {L"PICKSTYLE", RTSHORT, Home::profile, nullptr, 0, L"1", 0, 3},
    {L"PLINECONVERTMODE", RTSHORT, Home::profile, nullptr, 0, L"0", 0, 1},
    {L"PLINEGEN", RTSHORT, Home::drawing, "$PLINEGEN", 70, L"0", 0, 1},
    {L"PLINETYPE", RTSHORT, Home::profile, nullptr, 0, L"2", 0, 2},
    {L"PLINEWID", RTREAL, Home::drawing, "$PLINEWID", 40, L"0.0", 0, 1e99},
    {L"SCREENSIZE", RTPOINT, Home::session, nullptr, 0, L"1920.0,1080.0", 0, 0, true},
    {L"SNAPANG", RTREAL, Home::session, nullptr, 0, L"0.0"},
    {L"SPLFRAME", RTSHORT, Home::drawing, "$SPLFRAME", 70, L"0", 0, 1},
    {L"SPLINESEGS", RTSHORT, Home::drawing, "$SPLINESEGS", 70, L"8", -32768, 32767},
    {L"SPLINETYPE", RTSHORT, Home::drawing, "$SPLINETYPE", 70, L"6", 5, 6},
    {L"SURFTAB1", RTSHORT, Home::drawing, "$SURFTAB1", 70, L"6", 0, 32766},
    {L"SURFTAB2", RTSHORT, Home::drawing, "$SURFTAB2", 70, L"6", 0, 32766},
    {L"TEXTSIZE", RTREAL, Home::drawing, "$TEXTSIZE", 40, L"2.5", 1e-9, 1e99},
    {L"TEXTSTYLE", RTSTR, Home::drawing, "$TEXTSTYLE", 7, L"Standard"},
    {L"THICKNESS", RTREAL, Home::drawing, "$THICKNESS", 40, L"0.0"},
    {L"TILEMODE", RTSHORT, Home::drawing, "$TILEMODE", 70, L"1", 0, 1},
    {L"UCSNAME", RTSTR, Home::drawing, "$UCSNAME", 2, L"", 0, 0, true},
    {L"UCSORG", RT3DPOINT, Home::drawing, "$UCSORG", 10, L"0.0,0.0,0.0", 0, 0, true},
    {L"UCSXDIR", RT3DPOINT, Home::drawing, "$UCSXDIR", 10, L"1.0,0.0,0.0", 0, 0, true},
    {L"UCSYDIR", RT3DPOINT, Home::drawing, "$UCSYDIR", 10, L"0.0,1.0,0.0", 0, 0, true},
    {L"VIEWCTR", RT3DPOINT, Home::computed, nullptr, 0, L"", 0, 0, true},
    {L"VIEWDIR", RT3DPOINT, Home::computed, nullptr, 0, L"", 0, 0, true},
    {L"VIEWSIZE", RTREAL, Home::computed, nullptr, 0, L"", 0, 0, true},
    {L"VIEWTWIST", RTREAL, Home::computed, nullptr, 0, L"", 0, 0, true},
    {L"WORLDUCS", RTSHORT, Home::computed, nullptr, 0, L"", 0, 0, true},
};
// clang-format on

std::map<std::wstring, std::wstring>& sessionValues() {
    static std::map<std::wstring, std::wstring> values;
    return values;
}

AcDbDatabase* database() { return acdbHostApplicationServices()->workingDatabase(); }

std::wstring pointText(const AcGePoint3d& p, bool inSpace) {
    std::string text = formatReal(p.x) + "," + formatReal(p.y);
    if (inSpace) text += "," + formatReal(p.z);
    return wide(text);
}

// The active viewport of model space.
struct ViewState {
    AcGePoint3d target;
    AcGePoint2d center{0, 0};
    AcGeVector3d direction = AcGeVector3d::kZAxis;
    double height = 297, twist = 0;
};
ViewState activeView() {
    ViewState view;
    AcDbViewportTable* table = nullptr;
    if (!database() || database()->getViewportTable(table, AcDb::kForRead) != Acad::eOk) return view;
    AcDbViewportTableRecord* active = nullptr;
    if (table->getAt(L"*Active", active, AcDb::kForRead) == Acad::eOk) {
        view = {active->target(), active->centerPoint(), active->viewDirection(), active->height(),
                active->viewTwist()};
        active->close();
    }
    table->close();
    return view;
}

AcGePoint3d viewCenterUcs(const ViewState& view) {
    resbuf display, ucs;
    display.restype = ucs.restype = RTSHORT;
    display.resval.rint = 2, ucs.resval.rint = 1;
    ads_point in{view.center.x, view.center.y, 0}, out{view.center.x, view.center.y, 0};
    acedTrans(in, &display, &ucs, 0, out);
    return {out[X], out[Y], out[Z]};
}

std::wstring drawingPath() {
    const ACHAR* path = L"";
    if (database()) database()->getFilename(path);
    return path;
}

std::wstring computed(const std::wstring& name) {
    const std::wstring path = drawingPath();
    const size_t slash = path.find_last_of(L'/') + 1;
    if (name == L"CMDACTIVE") return runningCommands() > 0 ? L"1" : L"0";
    if (name == L"CMDNAMES") return runningCommandNames();
    if (name == L"CTAB") return acdbHostApplicationServices()->layoutManager()->findActiveLayout();
    if (name == L"DBMOD") return database() && database()->undoLog().changedSinceSave() ? L"1" : L"0";
    if (name == L"DWGNAME") return path.empty() ? L"Drawing1.dxf" : path.substr(slash);
    if (name == L"DWGPREFIX") return path.substr(0, slash);
    if (name == L"LOCALE") return wide(languageTag());
    if (name == L"EXTMIN") return database() ? pointText(database()->extmin(), true) : L"0.0,0.0,0.0";
    if (name == L"EXTMAX") return database() ? pointText(database()->extmax(), true) : L"0.0,0.0,0.0";
    if (name == L"VIEWCTR") return pointText(viewCenterUcs(activeView()), true);
    if (name == L"VIEWSIZE") return wide(formatReal(activeView().height));
    if (name == L"VIEWTWIST") return wide(formatReal(activeView().twist));
    if (name == L"VIEWDIR") {
        const AcGeVector3d d = activeView().direction;
        return pointText({d.x, d.y, d.z}, true);
    }
    if (name == L"WORLDUCS")
        return database() && database()->headerPoint("$UCSXDIR", {1, 0, 0}) == AcGePoint3d(1, 0, 0) &&
                       database()->headerPoint("$UCSYDIR", {0, 1, 0}) == AcGePoint3d(0, 1, 0) &&
                       database()->headerPoint("$UCSORG") == AcGePoint3d::kOrigin
                   ? L"1"
                   : L"0";
    return {};
}

std::wstring colorText(int index) {
    if (index == AcCmEntityColor::kACIbyLayer) return L"BYLAYER";
    return index == AcCmEntityColor::kACIbyBlock ? L"BYBLOCK" : std::to_wstring(index);
}

std::wstring fromHeader(const SystemVariable& v) {
    const GroupList* value = database() ? database()->headerValue(v.headerName) : nullptr;
    if (!value || value->empty()) return v.start;
    const Group first = *value->begin();
    if (v.headerCode == 62) return colorText(int(first.integer));
    if (v.type == RTSTR) return first.wide();
    if (v.type == RTREAL) return wide(formatReal(first.real));
    if (v.type == RTSHORT || v.type == RTLONG) return std::to_wstring(first.integer);
    return pointText(database()->headerPoint(v.headerName), v.type == RT3DPOINT);
}

std::vector<double> numbersOf(const std::wstring& text) {
    std::vector<double> numbers;
    for (size_t from = 0; from <= text.size();) {
        const size_t comma = std::min(text.find(L',', from), text.size());
        const auto number = parseReal(std::wstring_view(text).substr(from, comma - from));
        if (!number || !std::isfinite(*number)) return {};
        numbers.push_back(*number);
        from = comma + 1;
    }
    return numbers;
}

// The record that a name variable must name.
bool namesRecord(const SystemVariable& v, const std::wstring& text) {
    const AcRxClass* table = std::wstring_view(v.name) == L"CLAYER"      ? AcDbLayerTable::desc()
                             : std::wstring_view(v.name) == L"CELTYPE"   ? AcDbLinetypeTable::desc()
                             : std::wstring_view(v.name) == L"TEXTSTYLE" ? AcDbTextStyleTable::desc()
                                                                         : nullptr;
    return !table || !database()->find(table, text).isNull();
}

void toHeader(const SystemVariable& v, const std::wstring& text) {
    AcDbDatabase& db = *database();
    if (v.headerCode == 62) return db.setHeaderInteger(v.headerName, 62, colorIndexOf(text));
    const std::vector<double> numbers = v.type == RTSTR ? std::vector<double>() : numbersOf(text);
    switch (v.type) {
    case RTSTR: return db.setHeaderText(v.headerName, v.headerCode, text);
    case RTREAL: return db.setHeaderReal(v.headerName, v.headerCode, numbers[0]);
    case RTSHORT:
    case RTLONG: return db.setHeaderInteger(v.headerName, v.headerCode, std::int64_t(numbers[0]));
    default: db.setHeaderPoint(v.headerName, {numbers[0], numbers[1], numbers.size() > 2 ? numbers[2] : 0});
    }
}

bool fits(const SystemVariable& v, const std::wstring& text, std::wstring& why) {
    if (v.headerCode == 62)
        return colorIndexOf(text) >= 0 || (why = L"it takes a colour name, or a number from 0 to 256", false);
    if (v.type == RTSTR)
        return namesRecord(v, text) ||
               (why = L"the drawing has nothing of the name \"" + text + L"\"", false);
    const std::vector<double> numbers = numbersOf(text);
    const bool point = v.type == RTPOINT || v.type == RT3DPOINT;
    if (point)
        return numbers.size() == 2 || numbers.size() == 3 || (why = L"it takes a point such as 10,20", false);
    const bool whole = v.type == RTSHORT || v.type == RTLONG;
    if (numbers.size() != 1 || (whole && numbers[0] != std::floor(numbers[0])))
        return why = whole ? L"it takes a whole number" : L"it takes a number", false;
    if (v.low != v.high && (numbers[0] < v.low || numbers[0] > v.high)) {
        why = L"it takes values from " + wide(formatFixed(v.low, 9, true)) + L" to " +
              wide(formatFixed(v.high, 9, true));
        return false;
    }
    return true;
}

} // namespace

const std::vector<SystemVariable>& systemVariables() { return kVariables; }

const SystemVariable* findSystemVariable(const std::wstring& name) {
    for (const SystemVariable& v : kVariables)
        if (equalNoCase(v.name, name)) return &v;
    return nullptr;
}

std::wstring systemVariableText(const SystemVariable& v) {
    switch (v.home) {
    case Home::computed: return computed(v.name);
    case Home::drawing: return fromHeader(v);
    case Home::profile:
        if (const auto stored = userRegistry().text(kProfileKey, v.name)) return *stored;
        return v.start;
    case Home::session: break;
    }
    const auto set = sessionValues().find(v.name);
    return set == sessionValues().end() ? v.start : set->second;
}

bool setSystemVariableText(const SystemVariable& v, const std::wstring& text, std::wstring& why) {
    if (v.readOnly) return why = L"it can't be changed", false;
    if (v.home == Home::drawing && !database()) return why = L"no drawing is open", false;
    if (!fits(v, text, why)) return false;
    if (systemVariableText(v) == text) return true;
    acedEditorPtr()->each([&](AcEditorReactor& r) { r.sysVarWillChange(v.name); });
    if (v.home == Home::drawing)
        toHeader(v, text);
    else if (v.home == Home::profile)
        userRegistry().set(kProfileKey, v.name, text);
    else
        sessionValues()[v.name] = text;
    acedEditorPtr()->each([&](AcEditorReactor& r) { r.sysVarChanged(v.name, true); });
    return true;
}

void setSessionVariable(const std::wstring& name, const std::wstring& text) { sessionValues()[name] = text; }

} // namespace host

int acedGetVar(const ACHAR* name, resbuf* result) {
    const host::SystemVariable* v = name && result ? host::findSystemVariable(name) : nullptr;
    if (!v) return RTERROR;
    const std::wstring text = host::systemVariableText(*v);
    result->restype = v->type;
    if (v->type == RTSTR) {
        result->resval.rstring = nullptr;
        return acutNewString(text.c_str(), result->resval.rstring);
    }
    const std::vector<double> numbers = host::numbersOf(text);
    if (numbers.empty()) return RTERROR;
    if (v->type == RTREAL)
        result->resval.rreal = numbers[0];
    else if (v->type == RTSHORT)
        result->resval.rint = short(numbers[0]);
    else if (v->type == RTLONG)
        result->resval.rlong = Adesk::Int32(numbers[0]);
    else
        for (size_t i = 0; i < 3; ++i) result->resval.rpoint[i] = i < numbers.size() ? numbers[i] : 0;
    return RTNORM;
}

int acedSetVar(const ACHAR* name, const resbuf* value) {
    const host::SystemVariable* v = name && value ? host::findSystemVariable(name) : nullptr;
    if (!v) return RTERROR;
    std::wstring text, why;
    const auto& r = value->resval;
    switch (value->restype) {
    case RTSTR: text = r.rstring ? r.rstring : L""; break;
    case RTREAL: text = host::wide(host::formatReal(r.rreal)); break;
    case RTSHORT: text = std::to_wstring(r.rint); break;
    case RTLONG: text = std::to_wstring(r.rlong); break;
    case RTPOINT:
    case RT3DPOINT:
        text = host::pointText({r.rpoint[0], r.rpoint[1], r.rpoint[2]}, value->restype == RT3DPOINT);
        break;
    default: return RTERROR;
    }
    // Numbers serve variables of any number type, as at the host.
    return host::setSystemVariableText(*v, text, why) ? RTNORM : RTERROR;
}
