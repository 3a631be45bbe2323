// The system variables behind the aids.
#include "apps/desk/drawing_aids.h"

#include <cmath>

#include "apps/desk/view_state.h"
#include "host/ed/prompting.h"
#include "host/ed/sysvars.h"
#include "host/os/numbers.h"

namespace desk {
namespace {

constexpr long long kSnapsOff = 16384; // of OSMODE

long long numberOf(const wchar_t* name) {
    const std::wstring text = host::systemVariableText(*host::findSystemVariable(name));
    return host::parseInteger(std::wstring_view(text)).value_or(0);
}

void setQuietly(const wchar_t* name, long long value) {
    std::wstring why;
    withoutTrace(
        [&] { host::setSystemVariableText(*host::findSystemVariable(name), std::to_wstring(value), why); });
}

} // namespace

bool orthoHolds(bool shift) { return (numberOf(L"ORTHOMODE") != 0) != shift; }

AcGePoint3d alongAxis(const AcGePoint3d& base, const AcGePoint3d& point) {
    const AcGePoint3d from = host::worldToUcs(base);
    AcGePoint3d to = host::worldToUcs(point);
    std::abs(to.x - from.x) >= std::abs(to.y - from.y) ? to.y = from.y : to.x = from.x;
    to.z = from.z;
    return host::ucsToWorld(to);
}

std::optional<QString> switchAid(int key) {
    if (key == Qt::Key_F3) {
        const long long modes = numberOf(L"OSMODE") ^ kSnapsOff;
        setQuietly(L"OSMODE", modes);
        return modes & kSnapsOff ? "<Osnap off>" : "<Osnap on>";
    }
    if (key == Qt::Key_F7) {
        const bool on = numberOf(L"GRIDMODE") == 0;
        setQuietly(L"GRIDMODE", on);
        return on ? "<Grid on>" : "<Grid off>";
    }
    if (key == Qt::Key_F8) {
        const bool on = numberOf(L"ORTHOMODE") == 0;
        setQuietly(L"ORTHOMODE", on);
        return on ? "<Ortho on>" : "<Ortho off>";
    }
    return std::nullopt;
}

bool aidIsOn(int key) {
    if (key == Qt::Key_F3) return numberOf(L"OSMODE") > 0 && !(numberOf(L"OSMODE") & kSnapsOff);
    if (key == Qt::Key_F7) return numberOf(L"GRIDMODE") != 0;
    return key == Qt::Key_F8 && numberOf(L"ORTHOMODE") != 0;
}

} // namespace desk
