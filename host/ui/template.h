// Dialog templates: what a resource script says of a dialog, and reading such scripts.
//
// Understood: `ID DIALOG|DIALOGEX x, y, w, h` with STYLE, EXSTYLE, CAPTION, FONT, CLASS, LANGUAGE and a block
// (BEGIN END or braces) of CONTROL, LTEXT, CTEXT, RTEXT, ICON, PUSHBUTTON, DEFPUSHBUTTON, CHECKBOX,
// AUTOCHECKBOX, RADIOBUTTON, AUTORADIOBUTTON, STATE3, AUTO3STATE, GROUPBOX, EDITTEXT, COMBOBOX, LISTBOX and
// SCROLLBAR; `ID TYPE "file"` for files; comments; lines that begin with # are passed over, but for
// `#define NAME number`. Identifiers are plain numbers or names so defined; styles are names or numbers
// joined by |, with NOT taking bits away.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/ui/messages.h"
#include "host/ui/rect.h"

namespace host {

struct ControlTemplate {
    std::wstring
        className{}; // "Button", "Edit", "Static", "ListBox", "ComboBox", "msctls_trackbar32" or another
    std::wstring text{};
    UINT id = 0; // 65535 for -1
    DWORD style = 0, exStyle = 0;
    CRect rect{}; // dialog units
};

struct DialogTemplate {
    UINT id = 0;
    std::wstring caption{}, className{};
    DWORD style = 0, exStyle = 0;
    CRect rect{}; // dialog units
    int pointSize = 9;
    std::wstring typeface = L"MS Shell Dlg";
    int weight = 400;
    bool italic = false;
    std::vector<ControlTemplate> controls{};
};

struct FileResource {
    UINT id = 0;
    std::wstring type{}; // upper case
    std::string file{};  // as written, UTF-8
};

struct ResourceScript {
    std::vector<DialogTemplate> dialogs{};
    std::vector<FileResource> files{};
    std::vector<std::string> errors{}; // "line 12: ..."; a dialog with an error in it is left out
};

// Reads UTF-8 text. Coordinates are from -32768 to 32767, sizes from 0 on; at most 4096 controls a dialog.
ResourceScript parseResourceScript(std::string_view text);

// Pixels to four units across and eight down, for a font at a resolution.
struct DialogUnits {
    int x = 6, y = 13;
    CRect pixels(const CRect& units) const;
};
LOGFONTW templateFont(const DialogTemplate& dialog, int dotsPerInch);
DialogUnits dialogUnits(const LOGFONTW& font);

} // namespace host

using LPCDLGTEMPLATE = const host::DialogTemplate*;
