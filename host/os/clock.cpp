// The clock of the system, unless one was set.
#include "host/os/clock.h"

#include "host/os/numbers.h"

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <string_view>

namespace host {
namespace {

std::optional<ClockSetting> fromEnvironment() {
    const char* text = std::getenv("CORVANE_CLOCK");
    if (!text) return std::nullopt;
    const std::string_view all(text);
    const std::size_t comma = all.find(',');
    const auto seconds = parseInteger(all.substr(0, comma));
    if (!seconds) return std::nullopt;
    ClockSetting setting{*seconds, 0};
    if (comma != std::string_view::npos)
        if (const auto ticks = parseInteger(all.substr(comma + 1)))
            setting.ticks = static_cast<std::uint32_t>(*ticks);
    return setting;
}

std::optional<ClockSetting>& current() {
    static std::optional<ClockSetting> setting = fromEnvironment();
    return setting;
}

} // namespace

bool clockIsSet() { return current().has_value(); }
void setClock(std::optional<ClockSetting> setting) { current() = setting; }

std::int64_t clockSeconds() { return current() ? current()->seconds : std::time(nullptr); }

std::uint32_t tickCount() {
    if (current()) return current()->ticks;
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

LocalTime localTime() {
    const std::time_t seconds = clockSeconds();
    std::tm parts{};
    if (clockIsSet())
        gmtime_r(&seconds, &parts);
    else
        localtime_r(&seconds, &parts);
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour,
            parts.tm_min,         parts.tm_sec,     parts.tm_wday};
}

double julianDate(bool utc) {
    constexpr double unixEpoch = 2440587.5, secondsPerDay = 86400.0;
    const std::time_t seconds = clockSeconds();
    std::int64_t offset = 0;
    if (!utc && !clockIsSet()) {
        std::tm parts{};
        localtime_r(&seconds, &parts);
        offset = parts.tm_gmtoff;
    }
    return unixEpoch + static_cast<double>(seconds + offset) / secondsPerDay;
}

} // namespace host
