// The door to the host: dialogs, controls, drawing in them, pictures.
#pragma once
#include <functional>
#include <optional>
#include <string>

#include "host/ui/ui.h"

namespace corvane::host_door {

// Dots to the inch that the host has laid the window out for; those of its device context where the host
// can't tell them by window, and 0 where nobody can.
int windowDpi(HWND window);
// The handle of this module's own resources.
HINSTANCE moduleResources();
// The bytes of one of them; nothing when there is none of that number and type.
std::optional<std::string> moduleResource(UINT id, const wchar_t* type);
// Scripts drag in the window in units of its own; this leads from them to pixels of its client area.
void setDragUnits(HWND window, std::function<CPoint(double x, double y)> toPixel);

// Whether dialogs are windows in front of somebody, who sees what they show while they work; in scripts and
// at prompts they are not.
bool dialogsAreSeen();

} // namespace corvane::host_door
