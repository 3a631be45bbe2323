// System variables: names, types, ranges and start values in one table; where each one lives
// (drawing header, this run, the user's profile) is part of its row.
#pragma once
#include <string>
#include <vector>

#include "host/db/resbuf.h"

namespace host {

struct SystemVariable {
    enum class Home { drawing, session, profile, computed };
    const wchar_t* name;
    short type; // RTSHORT, RTLONG, RTREAL, RTSTR, RTPOINT, RT3DPOINT
    Home home;
    const char* headerName = nullptr; // drawing: the header variable, with $
    int headerCode = 0;
    const wchar_t* start = L""; // the start value as text
    double low = 0, high = 0;   // numbers; equal: no limits
    bool readOnly = false;
};

const std::vector<SystemVariable>& systemVariables();
// Null when there is none of that name (without regard to case).
const SystemVariable* findSystemVariable(const std::wstring& name);
// The value as the SETVAR command shows it.
std::wstring systemVariableText(const SystemVariable& variable);
// From text; false with a sentence in `why` when it doesn't serve.
bool setSystemVariableText(const SystemVariable& variable, const std::wstring& text, std::wstring& why);
// The colour index that a name or number stands for, 0 to 256 with by block and by layer; -1 for others.
int colorIndexOf(const std::wstring& text);
// Sets a variable of the session that users can't change, such as LASTPOINT or SCREENSIZE.
void setSessionVariable(const std::wstring& name, const std::wstring& text);

} // namespace host
