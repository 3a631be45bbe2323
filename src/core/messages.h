// What the user reads and answers: lines, notices, yes-or-no questions, version texts.
#pragma once
#include "core/language.h"

namespace corvane {

// Translates the text and prints it to the command line. No line end is added.
void PrintLine(const wchar_t* source);
// Prints a text that is translated and filled in already.
void PrintText(const CString& text);
// Says how many curves a command has worked on.
void ReportCurveCount(int count);
// A message box with the translated text under the product's name and version.
void NoticeBox(const wchar_t* source);
// Asks "Yes No" with the translated prompt. True for yes, false for any other answer, `otherwise` for Enter
// and Esc. The second prompt is not shown.
bool AskYesNo(const wchar_t* prompt, const wchar_t* unused, bool otherwise);

// "2.00" from the module's version; "0.00" when it can't be told.
const CString& ProductVersionText();
CString ProductVersionFull(); // "2.0.0.0"
int ProductVersionNumber();   // 200

// A line of diagnosis, as "[] ..." on a line of its own; shown while the switch of CVdebugPrint is on.
void DebugPrint(const wchar_t* text);
bool DebugPrintOn();
// Handler of CVdebugPrint.
void DebugPrintCommand();

} // namespace corvane
