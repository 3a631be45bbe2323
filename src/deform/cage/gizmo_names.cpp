// Names of modes and handles.
#include "deform/cage/gizmo_names.h"

namespace corvane::deform {

CString GizmoModeName(GizmoMode mode) {
    if (mode == GizmoMode::scale) return Translate(L"缩放");
    return mode == GizmoMode::rotate ? Translate(L"旋转") : Translate(L"移动");
}

CString ShortHandleName(int handle) {
    constexpr const wchar_t* kNames[] = {L"", L"X", L"Y", L"Z", L"XY", L"XZ", L"YZ", L"XYZ"};
    return handle > kNoHandle && handle <= kCentre ? kNames[handle] : L"";
}

CString HandleName(int handle) {
    if (handle == kCentre) return Translate(L"XYZ(均匀)");
    return IsAxis(handle) || IsPlane(handle) ? ShortHandleName(handle) : Translate(L"自由");
}

} // namespace corvane::deform
