// Xdata by hand: single groups, and a chain of them into an object.
#pragma once
#include <string>

#include "core/host/database.h"

namespace corvane {

// A group that holds the text.
resbuf* TextGroup(int code, const std::wstring& text);
// Into the object's xdata in place of what the application had there; the application is registered on the
// way. The chain begins with the application's name (1001).
Acad::ErrorStatus SetXData(AcDbObjectId object, const wchar_t* application, const resbuf* data);

} // namespace corvane
