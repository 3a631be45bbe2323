// What a user does to a standard control, for front ends: each sends the messages that the user's hand would
// cause, in their order. They do nothing on a stale handle; whether the control is visible and enabled is for
// the caller to look at. Mouse actions stand in window.h.
#pragma once

#include <string>
#include <vector>

#include "host/ui/types.h"

namespace host {

void press(HWND button);                                // a click in its middle
void typeText(HWND edit, const std::wstring& text);     // over all that stands there, then leaves the control
void chooseItem(HWND combo, int index);                 // out of its list
void typeInCombo(HWND combo, const std::wstring& text); // one with an edit field
void chooseItems(HWND list, const std::vector<int>& items); // these and no others
void doubleClickItem(HWND list, int index);
void moveSlider(HWND slider, int position); // drags the thumb there and lets go

} // namespace host
