// Asking for points in world coordinates.
#pragma once
#include "core/host/editor.h"
#include "core/host/geometry.h"
#include "core/language.h"
#include "core/properties.h"

namespace corvane::deform {

struct PromptPoint {
    int status = RTERROR; // of acedGetPoint
    AcGePoint3d world;    // RTNORM alone
    wchar_t keyword = 0;  // RTKWORD alone: the first letter of the keyword
    explicit operator bool() const { return status == RTNORM; }
};

struct PointQuestion {
    CString prompt;
    const wchar_t* keywords = nullptr;
    int bits = 0;                      // of acedInitGet
    const AcGePoint3d* base = nullptr; // world
    bool corner = false;               // the rubber band is a rectangle
};

PromptPoint AskPoint(const PointQuestion& question);

AcGePoint3d InUcs(AcGePoint3d world);

} // namespace corvane::deform
