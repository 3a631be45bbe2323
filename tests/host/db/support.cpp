// The test entity's class; and the clock, which stands so that two new drawings are the same.
#include "support.h"

#include "host/os/clock.h"

HOST_DEFINE_CLASS(TestMark, AcDbEntity, L"TESTMARK")

namespace {
[[maybe_unused]] const bool theClockStands = (host::setClock(host::ClockSetting{1'700'000'000, 0}), true);
}
