// Groups, registering and setting.
#include "core/xdata.h"

namespace corvane {

resbuf* TextGroup(int code, const std::wstring& text) {
    resbuf* group = acutNewRb(code);
    acutNewString(text.c_str(), group->resval.rstring);
    return group;
}

Acad::ErrorStatus SetXData(AcDbObjectId id, const wchar_t* application, const resbuf* data) {
    if (acdbRegApp(application) == RTERROR) return Acad::eRegappIdNotFound;
    AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite);
    return object ? object->setXData(data) : object.openStatus();
}

} // namespace corvane
