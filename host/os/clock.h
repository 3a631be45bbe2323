// The time of day and the tick count, settable so that runs can be repeated: by the environment
// (CORVANE_CLOCK=SECONDS[,TICKS]) and by tests. A set clock stands still.
#pragma once

#include <cstdint>
#include <optional>

namespace host {

struct LocalTime {
    int year, month, day; // month and day from 1
    int hour, minute, second;
    int weekday; // 0 is Sunday
};

struct ClockSetting {
    std::int64_t seconds;    // since 1970-01-01 UTC
    std::uint32_t ticks = 0; // milliseconds
};

std::int64_t clockSeconds(); // since 1970-01-01 UTC
std::uint32_t tickCount();   // milliseconds since some moment; wraps after 49.7 days
LocalTime localTime();       // a set clock is read as UTC, so that results do not depend on the place
double julianDate(bool utc); // days since noon of 1 January 4713 BC, with fraction of the day

bool clockIsSet();
void setClock(std::optional<ClockSetting> setting); // nothing returns to the running clock

} // namespace host
