// Text to the command line, message boxes, symbols, queued expressions and other small services.
#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <map>

#include "host/ed/editor.h"
#include "host/ed/frontend.h"
#include "host/ed/prompting.h"
#include "host/os/format.h"
#include "host/os/text.h"
#include "host/view/screen.h"

namespace {

std::map<std::wstring, host::ResbufChain>& symbols() {
    static std::map<std::wstring, host::ResbufChain> table;
    return table;
}

struct Menus {
    std::vector<std::wstring> groups; // upper case
    std::vector<std::wstring> expressions;
};
Menus& menus() {
    static Menus state;
    return state;
}

} // namespace

int acutPrintf(const ACHAR* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const std::wstring text = host::formatText(format, arguments);
    va_end(arguments);
    host::frontEnd().print(text);
    return RTNORM;
}
int acedPrompt(const ACHAR* text) { return host::frontEnd().print(text), RTNORM; }
int acedAlert(const ACHAR* text) {
    host::frontEnd().messageBox({text, L"", kMessageOk});
    return RTNORM;
}
int MessageBoxW(void*, const wchar_t* text, const wchar_t* caption, unsigned style) {
    return host::frontEnd().messageBox({text ? text : L"", caption ? caption : L"", style});
}
int AfxMessageBox(const wchar_t* text, unsigned style) { return MessageBoxW(nullptr, text, L"", style); }

int acedGrDraw(const ads_point from, const ads_point to, int color, int highlight) {
    if (!from || !to || color < -1 || color > 255) return RTERROR;
    for (int i = 0; i < 3; ++i)
        if (!std::isfinite(from[i]) || !std::isfinite(to[i])) return RTERROR;
    host::screen().draw({host::ucsToWorld({from[X], from[Y], from[Z]}),
                         host::ucsToWorld({to[X], to[Y], to[Z]}), color, highlight != 0});
    return RTNORM;
}
int acedRedraw(const ads_name entity, int mode) {
    if (!entity) return host::screen().clearVectors(), host::frontEnd().redraw(), RTNORM;
    constexpr int kShow = 1, kHighlight = 3, kUnhighlight = 4;
    AcDbObjectId id;
    if (acdbGetObjectId(id, entity) != Acad::eOk || id.isErased()) return RTERROR;
    if (mode == kHighlight || mode == kUnhighlight) host::screen().highlight(id, mode == kHighlight);
    if (mode == kShow) host::screen().redraw(id);
    return host::frontEnd().redraw(), RTNORM;
}
void acedUpdateDisplay() { host::frontEnd().redraw(); }
void Sleep(unsigned milliseconds) { host::frontEnd().wait(milliseconds); }
// The viewport records are the only place where the view is kept, so there is nothing to copy.
int acedVports2VportTableRecords() { return RTNORM; }
int acedUsrBrk() { return host::frontEnd().progress(L"", -1) ? 0 : 1; }

int acedPutSym(const ACHAR* name, const resbuf* value) {
    if (!name || !*name) return RTERROR;
    const std::wstring key = host::upper(name);
    symbols().erase(key);
    if (value && value->restype != RTNIL) symbols().try_emplace(key, host::copyChain(value));
    return RTNORM;
}
int acedGetSym(const ACHAR* name, resbuf** value) {
    const auto found = symbols().find(host::upper(name ? name : L""));
    *value = found == symbols().end() ? nullptr : host::copyChain(found->second.get());
    return RTNORM;
}

bool acedIsMenuGroupLoaded(const ACHAR* group) {
    const auto& groups = menus().groups;
    return std::find(groups.begin(), groups.end(), host::upper(group)) != groups.end();
}

namespace {
// The group of (if(null(menugroup "GROUP"))(command "menuload" "FILE")); empty for other expressions.
std::wstring groupLoadedBy(std::wstring_view expression) {
    constexpr std::wstring_view kAsks = L"(if(null(menugroup \"", kLoads = L"\"))(command \"menuload\" \"";
    const size_t end = expression.find(L'"', kAsks.size());
    if (!expression.starts_with(kAsks) || end == expression.npos) return {};
    if (!expression.substr(end).starts_with(kLoads) || !host::trimmed(expression).ends_with(L"\"))"))
        return {};
    return std::wstring(expression.substr(kAsks.size(), end - kAsks.size()));
}
} // namespace

int ads_queueexpr(const ACHAR* expression) {
    // The menu's own expression is understood; what shows pull-downs is for front ends that have a menu bar.
    if (const std::wstring group = groupLoadedBy(expression); !group.empty())
        menus().groups.push_back(host::upper(group));
    menus().expressions.push_back(expression);
    return RTNORM;
}

namespace host {
const std::vector<std::wstring>& queuedExpressions() { return menus().expressions; }

AcDbObjectId entityOf(const EntityAnswer& answer) {
    AcDbObjectId id;
    if (!answer.symbol.empty()) {
        const auto found = symbols().find(answer.symbol);
        if (found != symbols().end() && found->second.get()->restype == RTENAME)
            acdbGetObjectId(id, found->second.get()->resval.rlname);
    } else if (AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase()) {
        database->getAcDbObjectId(id, false, AcDbHandle(answer.handle.c_str()));
    }
    return id.isErased() ? AcDbObjectId() : id;
}
} // namespace host
