// What this room's own files share of the windows: their table, the control classes, the frame around
// dialogs.
#pragma once

#include "host/ui/window.h"

namespace host {

// What a window of a class is made of.
struct WindowClass {
    std::wstring name;
    std::unique_ptr<Control> (*makeControl)(const Window&) = nullptr;
    WNDPROC procedure = nullptr;
    HBRUSH background = nullptr;
};
const WindowClass* windowClass(std::wstring_view name); // null when it isn't registered

// The part of a window's rectangle that isn't its client area.
struct FrameInsets {
    int left = 0, top = 0, right = 0, bottom = 0;
};
FrameInsets frameInsets(DWORD style);
inline constexpr int kFrame = 3, kTitle = 30;

void invalidate(Window& window);
// Detaches and deletes the window with its children; messages tell it.
void destroy(HWND window);

std::unique_ptr<Control> makeStatic(const Window&);
std::unique_ptr<Control> makeButton(const Window&);
std::unique_ptr<Control> makeEdit(const Window&);
std::unique_ptr<Control> makeCombo(const Window&);
std::unique_ptr<Control> makeList(const Window&);
std::unique_ptr<Control> makeSlider(const Window&);
std::unique_ptr<Control> makeDialogControl(const Window&);

// Sets the text without telling anyone but the watcher.
void setTextQuietly(Window& window, std::wstring_view text);

} // namespace host
