// Dialogs for front ends without windows: every open dialog is asked about like a prompt, one action an
// answer (dialog_action.h), and what an action does goes through the messages that a user's hand would cause.
#pragma once
#include <string>

#include "host/ui/types.h"

namespace host {

// Lets the front end in use answer dialogs. startHost calls it; the desk puts its own runner in place later.
void installPromptedDialogs();

// Does one action on the dialog. A message, with nothing changed, when the action can't be read, names no
// control or gives a value that doesn't serve; the listing for "?"; else empty.
std::wstring performDialogAction(HWND dialog, const std::wstring& action);

// The controls that are shown, one a line: number, kind, label or caption, value.
std::wstring dialogListing(HWND dialog);

} // namespace host
