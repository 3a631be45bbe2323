// What modes and handles are called in messages, translated.
#pragma once
#include "core/language.h"
#include "deform/cage/gizmo.h"

namespace corvane::deform {

CString GizmoModeName(GizmoMode mode);
// "X" to "Z", "XY" to "YZ", the centre's even scale; free for all others.
CString HandleName(int handle);
// As tooltips have it: the centre is "XYZ".
CString ShortHandleName(int handle);

} // namespace corvane::deform
