// "commands": every command with what it does.
#include <algorithm>
#include <cstdio>

#include "apps/corvane/json.h"
#include "apps/corvane/session.h"
#include "apps/corvane/subcommands.h"
#include "host/ed/host_commands.h"
#include "host/os/text.h"

namespace app {
namespace {

struct Row {
    std::string group, name, globalName;
    host::CommandNote note;
};

// Those built, or those missing, in the order of registration.
std::vector<Row> rows(bool missing) {
    std::vector<Row> all;
    const auto* stack = static_cast<AcEdCommandStack*>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
    for (const auto& command : stack->commands()) {
        const host::CommandNote note = host::commandNote(*command);
        if (note.built != missing)
            all.push_back({host::utf8(command->groupName()), host::utf8(command->localName()),
                           host::utf8(command->globalName()), note});
    }
    return all;
}

std::string asJson(const std::vector<Row>& all) {
    JsonWriter json;
    json.beginList();
    for (const Row& row : all) {
        json.beginObject();
        json.text("name", row.name);
        json.text("globalName", row.globalName);
        json.text("group", row.group);
        json.text("summary", host::utf8(row.note.summary));
        json.truth("built", row.note.built);
        json.endObject();
    }
    json.endList();
    return json.take();
}

void print(const std::vector<Row>& all) {
    std::string group;
    size_t width = 0, globalWidth = 0;
    for (const Row& row : all) {
        width = std::max(width, row.name.size());
        globalWidth = std::max(globalWidth, row.globalName.size());
    }
    for (const Row& row : all) {
        if (row.group != group) std::printf("%s%s\n", group.empty() ? "" : "\n", row.group.c_str());
        group = row.group;
        std::printf("  %-*s  %-*s  %s\n", int(width), row.name.c_str(), int(globalWidth),
                    row.globalName.c_str(), host::utf8(row.note.summary).c_str());
    }
}

} // namespace

ExitStatus listCommands(const Arguments& arguments) {
    Session session;
    if (!session.loadModule(arguments.value("--lang"))) return ExitStatus::file;
    const std::vector<Row> all = rows(arguments.has("--missing"));
    if (arguments.has("--json"))
        std::fputs(asJson(all).c_str(), stdout);
    else
        print(all);
    return ExitStatus::done;
}

} // namespace app
