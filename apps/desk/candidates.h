// What completes an answer at a prompt: names of commands and variables, or keywords.
#pragma once
#include <QStringList>

#include "host/ed/frontend.h"

namespace desk {

QStringList keywordsOf(const host::PromptRequest& request);
QStringList candidatesOf(const host::PromptRequest& request);

} // namespace desk
