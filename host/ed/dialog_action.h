// Answers to an open dialog, as scripts write them: what an action says, and which control it means. What
// actions do stands in dialog_script.cpp.
//
//   1090=20          sets an edit, combo box (by index or text), slider, check box or radio button (on, off)
//   "caption"=on     the same by caption as shown, or by the label that stands before a control, without its
//   colon 1085!            presses a button; any other control is clicked in its middle 1273@3 selects in a
//   list, by index or text; several parted by commas; 1273@3! double-clicks drag ID x,y ...  drags with the
//   mouse, in the control's own units; one point is a click ?                lists the controls picture
//   FILE.png draws the dialog as it stands OK, CANCEL       close it
#pragma once
#include <string>
#include <vector>

#include "host/ge/point2d.h"
#include "host/ui/window.h"

namespace host {

struct DialogAction {
    enum class Kind { none, set, press, select, drag, list, picture, ok, cancel } kind = Kind::none;
    std::wstring target; // a number or a caption
    bool byName = false; // the target stood in quotes
    std::wstring value;
    std::vector<AcGePoint2d> points;
    bool twice = false; // a double click
    std::wstring error; // why it can't be read; empty when it can
};
DialogAction parseDialogAction(const std::wstring& text);

struct FoundControl {
    HWND control = nullptr;
    std::wstring error; // none such, or several
};
FoundControl findControl(HWND dialog, const DialogAction& action);
// The text of the label before an edit, combo box, slider or list; empty when there is none.
std::wstring labelOf(const Window& control);
// A caption as people read it: without the mark of its access key, colon and surrounding blanks.
std::wstring plainCaption(std::wstring_view text);

} // namespace host
