// Message filters: they see the keys of the drawing window before anybody uses them.
#pragma once
#include <optional>
#include <string>

#include "host/ui/messages.h"

// Takes a message to keep it from everyone else (TRUE), or lets it pass. It may change the message.
using AcedFilterWinMsgFn = BOOL (*)(MSG*);
BOOL acedRegisterFilterWinMsg(AcedFilterWinMsgFn filter); // FALSE for null and for one that is there
BOOL acedRemoveFilterWinMsg(AcedFilterWinMsgFn filter);   // FALSE when it isn't there

namespace host {

// For front ends: a key went down over the drawing. True when a filter has taken it; the latest filter
// is asked first.
bool keyFiltered(UINT virtualKey);
// The virtual key of a name: tab, return, space, escape, delete, a letter or a digit, without regard to case;
// nothing for others.
std::optional<UINT> virtualKeyOf(const std::wstring& name);

} // namespace host
