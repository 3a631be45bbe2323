// Posted messages and timers. Nothing here waits: whoever runs a dialog calls these between a user's actions.
#pragma once

#include "host/ui/types.h"

namespace host {

// Delivers posted messages in the order of posting, with those that arrive meanwhile; at most `most` (a
// window that posts to itself for ever doesn't hang the program). The number delivered.
int deliverPosted(int most = 10'000);

// After an action of a script's: posted messages, then each running timer once, in the order of their due
// moments, with those that are started meanwhile, up to three rounds. No clock is asked, so that scripts
// repeat.
void settle();

// For front ends with a clock: fires the timers that are due at the moment, milliseconds of tickCount(), and
// tells how long nothing else is due; -1 when no timer runs.
int fireTimers(std::uint32_t now);

int runningTimers();
// Forgets what was posted to the window, and its timers.
void forgetWindow(HWND window);

} // namespace host
