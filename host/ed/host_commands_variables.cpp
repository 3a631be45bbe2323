// SETVAR: settings of the session, the profile and the drawing.
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

} // namespace host
