// The table of subcommands with their options, and the help made from it.
#include "apps/corvane/subcommands.h"

#include <algorithm>

namespace app {
namespace {

constexpr Option kHelp = {"--help", "-h", "", "show this help"};
constexpr Option kRecover = {"--recover", "", "", "read what stands before a fault of a broken file"};
constexpr Option kVerbose = {"--verbose", "", "", "list every repair made while reading"};
constexpr Option kJson = {"--json", "", "", "write JSON for programs"};
constexpr Option kLanguage = {"--lang", "", "CODE",
                              "language of the messages, such as en or zh-CN (default: the stored one, else "
                              "the system's)"};
constexpr Option kVersion = {"--version", "", "VERSION",
                             "write R12, R14, R2000, R2004, R2007, R2010, R2013 or R2018 (default: as the "
                             "drawing was)"};

constexpr Option kRunOptions[] = {
    {"--command", "-c", "LINE", "run LINE, a line of a script, behind the script; may be repeated"},
    {"--output", "-o", "OUT.dxf", "save the drawing there (default: it is not saved)"},
    {"--picture", "", "OUT.svg|png|pdf", "draw the result; may be repeated"},
    {"--before-after", "", "OUT.svg|png|pdf", "draw the drawing as read beside the result"},
    {"--mark-vertices", "", "", "mark the vertices of polylines in --before-after"},
    kLanguage,
    kVersion,
    {"--set", "", "VAR=VALUE", "set a system variable before the first command; may be repeated"},
    kRecover,
    {"--quiet", "", "", "write no transcript"},
    kVerbose,
    kHelp};
constexpr Option kInfoOptions[] = {kJson, kRecover, kVerbose, kHelp};
constexpr Option kConvertOptions[] = {
    kVersion, {"--binary", "", "", "write a binary DXF file"}, kRecover, kVerbose, kHelp};
constexpr Option kCheckOptions[] = {kJson, kRecover, kHelp};
constexpr Option kCommandsOptions[] = {
    kJson, {"--missing", "", "", "list the commands that are not built yet"}, kLanguage, kHelp};
constexpr Option kCompletionOptions[] = {kHelp};

constexpr Subcommand kSubcommands[] = {
    {"run", "IN.dxf|- [SCRIPT.scr]", "run commands on a drawing",
     "Opens the drawing, or an empty one for -, runs the commands of the script and of the -c lines, and\n"
     "writes what is asked for. With neither script nor -c the answers come from standard input: a script\n"
     "when it is not a terminal, a prompt when it is. Prompts and messages go to standard output.",
     kRunOptions,
     "corvane run plan.dxf clean.scr -o plan-clean.dxf --before-after clean.png\n"
     "corvane run - -c 'CIRCLE 0,0 25' -c 'PLINE 0,0 40,0 40,30 c' -o new.dxf --version R2000",
     1, 2, runDrawing},
    {"info", "IN.dxf", "tell what is in a drawing",
     "Counts the objects by kind and layer, and tells version, units, extents, blocks and the applications\n"
     "that left data with objects.",
     kInfoOptions, "corvane info plan.dxf\ncorvane info plan.dxf --json | jq .layers", 1, 1, showInfo},
    {"convert", "IN.dxf OUT.dxf|svg|png|pdf", "write a drawing in another form",
     "Writes the drawing as another version of DXF, or as a picture of what its current space shows. The\n"
     "ending of OUT tells which.",
     kConvertOptions,
     "corvane convert plan.dxf plan-r12.dxf --version R12\ncorvane convert plan.dxf plan.pdf", 2, 2,
     convertDrawing},
    {"check", "IN.dxf", "look for faults in a drawing",
     "Lists broken references, handles and values, and what had to be put right to read the file at all. "
     "The\n"
     "exit status is 1 when there is any.",
     kCheckOptions, "corvane check plan.dxf\ncorvane check plan.dxf --json > faults.json", 1, 1,
     checkDrawing},
    {"commands", "", "list the commands that can be run",
     "Lists every command with its name and what it does: those of the host and those of the module.",
     kCommandsOptions, "corvane commands\ncorvane commands --json --lang zh-CN", 0, 0, listCommands},
    {"completion", "", "write the completion for bash",
     "Writes a bash script that completes subcommands, options and drawings.", kCompletionOptions,
     "source <(corvane completion)\ncorvane completion > ~/.local/share/bash-completion/completions/corvane",
     0, 0, printCompletion},
};

std::string indented(const std::string& lines) {
    std::string out = "  ";
    for (char c : lines) {
        out += c;
        if (c == '\n') out += "  ";
    }
    return out + "\n";
}

std::string padded(std::string text, size_t width) {
    if (text.size() < width) text.resize(width, ' ');
    return text + "  ";
}

std::string optionLine(const Option& option) {
    constexpr size_t kWidth = 34, kHelpWidth = 72;
    std::string left = *option.letter ? std::string(option.letter) + ", " : "    ";
    left += option.name;
    if (*option.argument) left += std::string(" ") + option.argument;
    std::string out = "  " + padded(left, kWidth), rest = option.help;
    while (rest.size() > kHelpWidth) {
        const size_t blank = rest.rfind(' ', kHelpWidth);
        out += rest.substr(0, blank) + "\n" + std::string(kWidth + 4, ' ');
        rest.erase(0, blank + 1);
    }
    return out + rest + "\n";
}

} // namespace

std::span<const Subcommand> subcommands() { return kSubcommands; }

std::string programHelp() {
    std::string text =
        "Corvane works on drawings (DXF) from the command line: it runs CAD commands on them in\n"
        "scripts, tells what is in them, checks, converts and draws them.\n\n"
        "Usage:\n"
        "  corvane                 a prompt on an empty drawing\n"
        "  corvane SUBCOMMAND ...\n"
        "  corvane --version\n\nSubcommands:\n";
    for (const Subcommand& row : kSubcommands) text += "  " + padded(row.name, 12) + row.summary + "\n";
    return text +
           "\n\"corvane SUBCOMMAND --help\" tells more of each. Exit status: 0 done, 1 the check found\n"
           "something, 2 wrong usage, 3 a file could not be read or written, 4 a script ran out of\n"
           "answers or left some over, 5 an unknown command.\n\nExamples:\n" +
           indented("corvane run plan.dxf clean.scr -o plan-clean.dxf\ncorvane info plan.dxf");
}

std::string subcommandHelp(const Subcommand& row) {
    std::string text = "Usage: corvane " + std::string(row.name);
    if (*row.operands) text += std::string(" ") + row.operands;
    text += " [OPTION]...\n\n" + std::string(row.purpose) + "\n\nOptions:\n";
    for (const Option& option : row.options) text += optionLine(option);
    return text + "\nExamples:\n" + indented(row.examples);
}

} // namespace app
