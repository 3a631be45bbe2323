// The command-line program: finds the subcommand in the table, reads its options and runs it.
#include <cstdio>
#include <exception>

#include "apps/corvane/report.h"
#include "apps/corvane/subcommands.h"

namespace app {
namespace {

const Subcommand* findSubcommand(const std::string& name) {
    for (const Subcommand& row : subcommands())
        if (name == row.name) return &row;
    return nullptr;
}

ExitStatus wrongUsage(const std::string& what, const std::string& where) {
    complain(what + "\nTry \"corvane" + where + " --help\".");
    return ExitStatus::usage;
}

std::string subcommandNames() {
    std::string names;
    for (const Subcommand& row : subcommands()) names += (names.empty() ? "" : ", ") + std::string(row.name);
    return names;
}

ExitStatus runSubcommand(const Subcommand& row, std::span<const std::string> words) {
    std::string error;
    const Arguments arguments = Arguments::parse(words, row.options, error);
    if (arguments.has("--help")) {
        std::fputs(subcommandHelp(row).c_str(), stdout);
        return ExitStatus::done;
    }
    const std::string where = std::string(" ") + row.name;
    if (!error.empty()) return wrongUsage(error, where);
    const size_t count = arguments.positional().size();
    if (count < row.fewest)
        return wrongUsage("too little is given: corvane" + where + " " + row.operands, where);
    if (count > row.most)
        return wrongUsage("\"" + arguments.positional()[row.most] + "\" is too much: corvane" + where + " " +
                              row.operands,
                          where);
    return row.handler(arguments);
}

ExitStatus dispatch(std::vector<std::string> words) {
    if (words.empty()) words = {"run", "-"};
    const std::string first = words.front();
    if (first == "--help" || first == "-h" || (first == "help" && words.size() == 1)) {
        std::fputs(programHelp().c_str(), stdout);
        return ExitStatus::done;
    }
    if (first == "--version") {
        std::puts("corvane " CORVANE_VERSION);
        return ExitStatus::done;
    }
    if (first == "help") words = {words[1], "--help"};
    const Subcommand* row = findSubcommand(words.front());
    if (!row)
        return wrongUsage("unknown subcommand \"" + words.front() + "\"; there are " + subcommandNames(), "");
    return runSubcommand(*row, std::span(words).subspan(1));
}

} // namespace
} // namespace app

int main(int count, char** words) {
    try {
        return int(app::dispatch({words + 1, words + count}));
    } catch (const std::bad_alloc&) {
        app::complain("there is not enough memory for this drawing");
    } catch (const std::exception& fault) {
        app::complain(std::string("stopped by a fault of the program: ") + fault.what());
    }
    return int(app::ExitStatus::file);
}
