// The interactive prompt on a terminal: completion, Esc by Ctrl-C, history, and the end.
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <csignal>

#include "tests/apps/corvane/program.h"

using apptest::Workplace;

namespace {

constexpr char kControlC[] = "\x03", kControlD[] = "\x04", kUp[] = "\x1b[A";

// The program on a terminal of its own.
class Terminal {
public:
    explicit Terminal(const std::string& command) {
        pid_ = forkpty(&terminal_, nullptr, nullptr, nullptr);
        if (pid_ == 0) {
            execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
            _exit(127);
        }
    }
    ~Terminal() {
        if (pid_ > 0) kill(pid_, SIGKILL); // a test that failed half-way leaves it asking
        end();
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    // Reads until the text has come since the last call; false when it doesn't come in time.
    bool sees(const std::string& text) {
        const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        for (;;) {
            if (const size_t at = shown_.find(text, from_); at != shown_.npos)
                return from_ = at + text.size(), true;
            pollfd ready{terminal_, POLLIN, 0};
            char bytes[4096];
            const bool late = std::chrono::steady_clock::now() > until;
            if (late || poll(&ready, 1, 1000) < 0) return false;
            if (!(ready.revents & (POLLIN | POLLHUP))) continue;
            const ssize_t count = read(terminal_, bytes, sizeof bytes);
            if (count <= 0) return false;
            shown_.append(bytes, size_t(count));
        }
    }
    // Waits for the prompt to take single keys: what is typed before that goes through the terminal's own
    // line editing, which swallows Ctrl-D.
    void type(const std::string& keys) {
        termios settings{};
        for (int i = 0; i < 500 && tcgetattr(terminal_, &settings) == 0 && (settings.c_lflag & ICANON); ++i)
            usleep(10000);
        EXPECT_EQ(ssize_t(keys.size()), write(terminal_, keys.data(), keys.size()));
    }
    // Its exit status.
    int end() {
        if (pid_ <= 0) return -1;
        int status = 0;
        waitpid(pid_, &status, 0);
        close(terminal_);
        pid_ = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    const std::string& shown() const { return shown_; }

private:
    int terminal_ = -1;
    pid_t pid_ = 0;
    std::string shown_;
    size_t from_ = 0;
};

} // namespace

TEST(Prompt, CompletesCancelsRemembersAndEnds) {
    const Workplace place;
    {
        Terminal terminal(place.command("run - --lang en"));
        ASSERT_TRUE(terminal.sees("Command: ")) << terminal.shown();
        terminal.type("circ\t\r");
        ASSERT_TRUE(terminal.sees("Specify center point for circle or [3P/2P]: ")) << terminal.shown();
        terminal.type("0,0\r");
        ASSERT_TRUE(terminal.sees("or [Diameter]: "));
        terminal.type("di\t\r");
        ASSERT_TRUE(terminal.sees("Specify diameter of circle: ")) << terminal.shown();
        terminal.type(kControlC); // cancels the command, not the program
        ASSERT_TRUE(terminal.sees("*Cancel*")) << terminal.shown();
        ASSERT_TRUE(terminal.sees("Command: "));
        terminal.type("LINE 0,0 1,1\r"); // one line, several answers
        ASSERT_TRUE(terminal.sees("Specify next point or [Undo]: 1,1"));
        ASSERT_TRUE(terminal.sees("Specify next point or [Undo]: "));
        terminal.type("\r");
        ASSERT_TRUE(terminal.sees("Command: "));
        terminal.type(kControlD);
        ASSERT_TRUE(terminal.sees("Discard all changes to the drawing?")) << terminal.shown();
        terminal.type("n\r");
        ASSERT_TRUE(terminal.sees("Command: "));
        terminal.type("QUIT\r");
        ASSERT_TRUE(terminal.sees("Discard all changes to the drawing?"));
        terminal.type("y\r");
        EXPECT_EQ(0, terminal.end());
    }
    Terminal again(place.command("run - --lang en"));
    ASSERT_TRUE(again.sees("Command: "));
    again.type(std::string(kUp) + kUp); // QUIT, then LINE
    ASSERT_TRUE(again.sees("LINE 0,0 1,1")) << again.shown();
    again.type("\r");
    ASSERT_TRUE(again.sees("Specify next point or [Undo]: 1,1"));
    ASSERT_TRUE(again.sees("Specify next point or [Undo]: "));
    again.type(kControlC);
    ASSERT_TRUE(again.sees("Command: "));
    again.type("U\r");
    ASSERT_TRUE(again.sees("Command: "));
    again.type(kControlD);
    ASSERT_TRUE(again.sees("Discard all changes"));
    again.type(kControlD);
    EXPECT_EQ(0, again.end());
}
