// Names from the command stack and the table of system variables.
#include "apps/desk/candidates.h"

#include "apps/desk/qt_text.h"
#include "host/ed/commands.h"
#include "host/ed/sysvars.h"

namespace desk {

QStringList keywordsOf(const host::PromptRequest& request) {
    QStringList words;
    for (const std::wstring& keyword : request.keywords) words += shown(keyword);
    return words;
}

QStringList candidatesOf(const host::PromptRequest& request) {
    using Kind = host::PromptRequest::Kind;
    if (request.kind == Kind::objects)
        return {"All",   "Window",   "Crossing", "WPolygon", "CPolygon",
                "Fence", "Previous", "Last",     "Add",      "Remove"};
    const auto* stack = static_cast<AcEdCommandStack*>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
    QStringList names;
    if (request.kind != Kind::command) {
        names = keywordsOf(request);
        if (!request.blanksEnd) return names; // a text may begin with the mark
        for (const auto& command : stack->commands())
            if (command->isTransparent()) names += "'" + shown(command->localName());
        return names;
    }
    for (const auto& command : stack->commands()) names += shown(command->localName());
    for (const host::SystemVariable& variable : host::systemVariables()) names += shown(variable.name);
    return names;
}

} // namespace desk
