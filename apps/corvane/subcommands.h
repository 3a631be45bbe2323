// The subcommands of the program: one row each, which dispatch, help and completion read. Their
// handlers stand in files of their own.
#pragma once
#include <span>
#include <string>

#include "apps/corvane/arguments.h"
#include "apps/corvane/exit_status.h"

namespace app {

struct Subcommand {
    const char* name;
    const char* operands; // as the usage line shows them
    const char* summary;
    const char* purpose; // a paragraph
    std::span<const Option> options;
    const char* examples; // lines
    size_t fewest, most;  // operands
    ExitStatus (*handler)(const Arguments&);
};
std::span<const Subcommand> subcommands();

std::string programHelp();
std::string subcommandHelp(const Subcommand& subcommand);

ExitStatus runDrawing(const Arguments& arguments);
ExitStatus showInfo(const Arguments& arguments);
ExitStatus convertDrawing(const Arguments& arguments);
ExitStatus checkDrawing(const Arguments& arguments);
ExitStatus listCommands(const Arguments& arguments);
ExitStatus printCompletion(const Arguments& arguments);

} // namespace app
