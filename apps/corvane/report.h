// What the program tells on standard error: failures, repairs, and the progress of long work.
#pragma once
#include <chrono>
#include <string>

#include "host/dxf/dxf.h"

namespace app {

// One message, "corvane: ..." with a line end; what stands on standard output is flushed first.
void complain(const std::string& message);

// The repairs made while reading: summed up in a line, or each in one.
void tellRepairs(const std::string& path, const host::ReadReport& report, bool verbose);

// Shows how far work has come in one line of the terminal, once it has taken a while; nothing where
// standard error is no terminal.
class Progress {
public:
    Progress();
    ~Progress() { clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    void show(const std::string& caption, double share);
    void clear();

private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point shownAt_;
    bool terminal_, visible_ = false;
};

} // namespace app
