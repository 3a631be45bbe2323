// The bash completion, from the table of subcommands.
#include <cstdio>

#include "apps/corvane/subcommands.h"

namespace app {

ExitStatus printCompletion(const Arguments&) {
    std::string names, cases;
    for (const Subcommand& row : subcommands()) {
        names += (names.empty() ? "" : " ") + std::string(row.name);
        cases += std::string("        ") + row.name + ") words=\"";
        for (const Option& option : row.options)
            cases += std::string(&option == row.options.data() ? "" : " ") + option.name;
        cases += "\" ;;\n";
    }
    std::printf("# Completion of corvane for bash.\n"
                "_corvane() {\n"
                "    local word=${COMP_WORDS[COMP_CWORD]} words\n"
                "    if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
                "        COMPREPLY=($(compgen -W \"%s --help --version\" -- \"$word\"))\n"
                "        return\n"
                "    fi\n"
                "    case ${COMP_WORDS[1]} in\n%s"
                "    esac\n"
                "    if [[ $word == -* ]]; then\n"
                "        COMPREPLY=($(compgen -W \"$words\" -- \"$word\"))\n"
                "    else\n"
                "        COMPREPLY=($(compgen -f -- \"$word\"))\n"
                "    fi\n"
                "}\n"
                "complete -o filenames -F _corvane corvane\n",
                names.c_str(), cases.c_str());
    return ExitStatus::done;
}

} // namespace app
