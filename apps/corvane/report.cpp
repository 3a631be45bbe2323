// What the program tells on standard error.
#include "apps/corvane/report.h"

#include <unistd.h>

#include <cstdio>

namespace app {

void complain(const std::string& message) {
    std::fflush(stdout);
    std::fprintf(stderr, "corvane: %s\n", message.c_str());
}

namespace {

void tellNote(const std::string& path, const host::ReadReport& report, const host::ReadReport::Note& note) {
    std::string place = path;
    if (note.line > 0) place += (report.binary ? ", byte " : ", line ") + std::to_string(note.line);
    if (!note.object.empty()) place += ", " + note.object;
    complain(place + ": " + note.sentence);
}

} // namespace

void tellRepairs(const std::string& path, const host::ReadReport& report, bool verbose) {
    if (!report.message.empty()) complain(report.message);
    if (report.noteCount == 0) return;
    if (!verbose) {
        const bool one = report.noteCount == 1;
        return complain(path + ": " + std::to_string(report.noteCount) +
                        (one ? " fault was" : " faults were") +
                        " found while reading (--verbose tells which)");
    }
    for (const host::ReadReport::Note& note : report.notes) tellNote(path, report, note);
    if (const long more = report.noteCount - long(report.notes.size()); more > 0)
        complain(path + ": and " + std::to_string(more) + " more");
}

Progress::Progress() : shownAt_(Clock::now()), terminal_(isatty(STDERR_FILENO)) {}

void Progress::show(const std::string& caption, double share) {
    constexpr auto kPatience = std::chrono::milliseconds(400);
    const auto now = Clock::now();
    if (!terminal_ || now - shownAt_ < kPatience) return;
    shownAt_ = now;
    visible_ = true;
    std::fprintf(stderr, "\r\x1b[K%s %3.0f %%", caption.c_str(), share * 100);
    std::fflush(stderr);
}

void Progress::clear() {
    if (visible_) std::fputs("\r\x1b[K", stderr);
    visible_ = false;
}

} // namespace app
