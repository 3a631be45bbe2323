// Windows in the user's language: titles, captions, the entries of combo and list boxes.
#pragma once
#include <string>

#include "core/host/dialogs.h"
#include "core/language.h"

namespace corvane {

// The title and the direct children, and the items of those that are combo or list boxes. Nothing happens for
// a null pointer, a dead window, or when the source language is spoken.
void TranslateDialog(CWnd* dialog);
// The text, which is set only when its translation differs.
void TranslateWindowText(CWnd* window);
// All items, their data and the selection kept. An item whose text can't be told leaves the box as it was.
void TranslateComboItems(CWnd* combo);
void TranslateListItems(CWnd* list);

std::wstring WindowText(HWND window);

} // namespace corvane
