// Where a report goes: the name that the user chooses, and the program that shows it.
#pragma once
#include <string>

#include "curves/reports/table_file.h"

namespace corvane {

// Asks for the name of a report; `filter` is the source text of the dialog's filter. A name that
// ends in ".xls" ends in ".html" then: spreadsheet programs open that, and name what it is; others are kept.
// False when the user gave none, which is told.
bool AskTableFileName(const wchar_t* filter, std::wstring& path);
// True when a file of that name can be written; else says so in a box with the format's source text.
bool CanWriteReport(const std::wstring& path, const wchar_t* failure);
// Opens the report: through the launcher "openExcel.exe" beside the module when it is there. Tells where it
// is.
void OpenReport(const std::wstring& path);
// Writes the table and opens it; a failure is told with `failure`.
void FinishReport(const TableFile& table, const std::wstring& path, const wchar_t* failure);

} // namespace corvane
