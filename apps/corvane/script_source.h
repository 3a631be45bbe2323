// Where the answers of a run come from: a script file, -c lines behind it, or standard input; and
// where in them a line stands.
#pragma once
#include <optional>
#include <string>

#include "apps/corvane/arguments.h"

namespace app {

struct ScriptSource {
    std::wstring text;
    std::string name;  // of the script file; "standard input"; empty for -c lines alone
    int fileLines = 0; // of the text; the -c lines follow

    // "clean.scr, line 3" or "-c number 2".
    std::string place(int line) const;
    // The whole source: "clean.scr", "the -c lines".
    std::string whole() const;
};

// From a run's arguments. Nothing, and told, when a script can't be read.
std::optional<ScriptSource> readScript(const Arguments& arguments);
std::optional<ScriptSource> readStandardInput();

} // namespace app
