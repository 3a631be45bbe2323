// How the program ends, for scripts and make files.
#pragma once

namespace app {

enum class ExitStatus {
    done = 0,
    found = 1,          // check: something is wrong with the drawing
    usage = 2,          // the command line makes no sense
    file = 3,           // a file could not be read or written
    answers = 4,        // a script ran out of answers or left some over
    unknownCommand = 5, // wins over `answers`: what a command that isn't there leaves behind are its answers
};

} // namespace app
