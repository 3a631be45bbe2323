// What can be answered at a prompt: keywords to click, and what completes a line, which are names of commands
// and variables, or keywords.
#pragma once
#include <QStringList>

#include "apps/desk/command_line.h"
#include "host/ed/frontend.h"

namespace desk {

// The keywords to click in the prompt, which may be said in another language than the request's text.
std::vector<PromptKeyword> keywordsOf(const host::PromptRequest& request, const std::wstring& said);
QStringList candidatesOf(const host::PromptRequest& request);

} // namespace desk
