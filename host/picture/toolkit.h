// The one place that brings Qt Gui to life, with or without a display.
#pragma once

namespace host {

// Makes a QGuiApplication unless there is one already (the desk makes its own first). Without a display
// the platform is "offscreen". Call it before anything of Qt Gui; calls after the first cost nothing.
void ensureToolkit();

// While it lives, Qt's own remarks on standard error are dropped; failures come back as values anyway.
class QuietToolkit {
public:
    QuietToolkit();
    ~QuietToolkit();
    QuietToolkit(const QuietToolkit&) = delete;
    QuietToolkit& operator=(const QuietToolkit&) = delete;

private:
    using Handler = void (*)();
    Handler before_; // a function pointer of Qt's, kept without its header
};

} // namespace host
