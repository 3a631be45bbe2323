// The queue of posted messages, and timers.
#include "host/ui/queue.h"

#include <algorithm>
#include <deque>
#include <vector>

#include "host/os/clock.h"
#include "host/ui/window.h"

namespace host {
namespace {

constexpr UINT kShortest = 10; // milliseconds, as at the window system
constexpr int kRounds = 3;

struct Timer {
    HWND window;
    UINT_PTR id;
    UINT period;
    TIMERPROC each;
    std::uint32_t due;
    std::uint64_t number; // of its making
};
struct Queue {
    std::deque<MSG> posted;
    std::vector<Timer> timers;
    std::uint64_t made = 0;
    UINT_PTR nextId = 0x7000;
};
Queue& queue() {
    static Queue all;
    return all;
}

void fire(const Timer& timer) {
    if (timer.each)
        timer.each(timer.window, WM_TIMER, timer.id, tickCount());
    else
        SendMessageW(timer.window, WM_TIMER, timer.id, 0);
}
Timer* running(std::uint64_t number) {
    for (Timer& timer : queue().timers)
        if (timer.number == number) return &timer;
    return nullptr;
}
// How long until it is due; negative when it is overdue. Ticks wrap.
std::int32_t wait(const Timer& timer, std::uint32_t now) { return std::int32_t(timer.due - now); }

} // namespace

int deliverPosted(int most) {
    int delivered = 0;
    for (; !queue().posted.empty() && delivered < most; ++delivered) {
        const MSG message = queue().posted.front();
        queue().posted.pop_front();
        SendMessageW(message.hwnd, message.message, message.wParam, message.lParam);
    }
    return delivered;
}

void settle() {
    deliverPosted();
    std::uint64_t fired = 0; // timers up to this number have had their turn
    for (int round = 0; round < kRounds; ++round) {
        std::vector<Timer> turn;
        for (const Timer& timer : queue().timers)
            if (timer.number >= fired) turn.push_back(timer);
        if (turn.empty()) return;
        fired = queue().made;
        std::stable_sort(turn.begin(), turn.end(),
                         [](const Timer& a, const Timer& b) { return a.period < b.period; });
        for (const Timer& timer : turn) {
            if (running(timer.number)) fire(timer);
            deliverPosted();
        }
    }
}

int fireTimers(std::uint32_t now) {
    std::vector<std::uint64_t> due;
    for (const Timer& timer : queue().timers)
        if (wait(timer, now) <= 0) due.push_back(timer.number);
    for (const std::uint64_t number : due) {
        Timer* timer = running(number);
        if (!timer) continue;
        timer->due = now + timer->period;
        fire(Timer(*timer));
    }
    int next = -1;
    for (const Timer& timer : queue().timers) {
        const int left = std::max(wait(timer, now), 0);
        if (next < 0 || left < next) next = left;
    }
    return next;
}

int runningTimers() { return int(queue().timers.size()); }

void forgetWindow(HWND window) {
    std::erase_if(queue().posted, [&](const MSG& message) { return message.hwnd == window; });
    std::erase_if(queue().timers, [&](const Timer& timer) { return timer.window == window; });
}

} // namespace host

using namespace host;

BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!IsWindow(window)) return FALSE;
    queue().posted.push_back({window, message, wParam, lParam});
    return TRUE;
}

UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC each) {
    if (window && !IsWindow(window)) return 0;
    if (!window && !id) id = queue().nextId++;
    const UINT period = std::max(milliseconds, kShortest);
    std::erase_if(queue().timers, [&](const Timer& t) { return t.window == window && t.id == id; });
    queue().timers.push_back({window, id, period, each, tickCount() + period, queue().made++});
    return window && !id ? 1 : id;
}
BOOL KillTimer(HWND window, UINT_PTR id) {
    return std::erase_if(queue().timers,
                         [&](const Timer& timer) { return timer.window == window && timer.id == id; }) > 0;
}
