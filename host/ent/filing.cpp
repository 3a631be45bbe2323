// Numbers on their way into files.
#include "host/ent/filing.h"

#include <charconv>
#include <optional>

namespace host {

namespace {
// The shortest decimal near `degrees` that reads as exactly these radians; nothing when there is none.
std::optional<double> degreesFor(double radians, double degrees) {
    char text[40];
    for (int digits = 1; digits <= 16; ++digits) {
        const auto written =
            std::to_chars(text, text + sizeof text, degrees, std::chars_format::general, digits);
        double shorter = 0;
        std::from_chars(text, written.ptr, shorter);
        if (toRadians(shorter) == radians) return shorter;
    }
    for (const double near : {degrees, std::nextafter(degrees, -1e300), std::nextafter(degrees, 1e300)})
        if (toRadians(near) == radians) return near;
    return std::nullopt;
}
} // namespace

double fileDegrees(double radians) {
    const double degrees = toDegrees(radians);
    // Some radians are no number of degrees at all; they are written as those that the next reading will
    // give.
    if (const auto exact = degreesFor(radians, degrees)) return *exact;
    const double next = toRadians(degrees);
    return degreesFor(next, toDegrees(next)).value_or(degrees);
}

} // namespace host
