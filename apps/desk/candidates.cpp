// Keywords by a prompt's options; names from the command stack and the table of system variables.
#include "apps/desk/candidates.h"

#include "apps/desk/host_texts.h"
#include "apps/desk/qt_text.h"
#include "host/ed/commands.h"
#include "host/ed/sysvars.h"

namespace desk {

namespace {

// The keyword that the option stands for, such as "Second" for "Second pt".
const std::wstring* keywordFor(const std::wstring& option, const std::vector<std::wstring>& keywords) {
    for (const std::wstring& keyword : keywords)
        if (keyword == option) return &keyword;
    for (const std::wstring& keyword : keywords)
        if (option.find(keyword) != option.npos) return &keyword;
    return nullptr;
}

} // namespace

std::vector<PromptKeyword> keywordsOf(const host::PromptRequest& request, const std::wstring& said) {
    std::vector<PromptKeyword> all;
    const std::vector<std::wstring> options = optionsOf(request.text), labels = optionsOf(said);
    if (said == request.text || options.size() != labels.size()) {
        for (const std::wstring& keyword : request.keywords) all.push_back({shown(keyword), shown(keyword)});
        return all;
    }
    for (size_t i = 0; i < options.size(); ++i)
        if (const std::wstring* keyword = keywordFor(options[i], request.keywords))
            all.push_back({shown(labels[i]), shown(*keyword)});
    return all;
}

QStringList candidatesOf(const host::PromptRequest& request) {
    using Kind = host::PromptRequest::Kind;
    if (request.kind == Kind::objects)
        return {"All",   "Window",   "Crossing", "WPolygon", "CPolygon",
                "Fence", "Previous", "Last",     "Add",      "Remove"};
    const auto* stack = static_cast<AcEdCommandStack*>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
    QStringList names;
    if (request.kind != Kind::command) {
        for (const std::wstring& keyword : request.keywords) names += shown(keyword);
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
