// The table files of the reports: one HTML table that spreadsheet programs open as a sheet. Rows are
// put together here; asking for a name and opening the result stand in report_files.h.
#pragma once
#include <span>
#include <string>

#include "core/host/system.h"

namespace corvane {

struct TableColumn {
    const wchar_t* heading; // source text
    int width;              // per cent
};
using TableColumns = std::span<const TableColumn>;

// One row, cell by cell from the left; cells that aren't given stay empty.
class TableRow {
public:
    explicit TableRow(TableColumns columns, bool closesGroup = false)
        : columns_(columns), color_(closesGroup ? L"#99FF99" : L"#FFFFFF") {}
    TableRow& Number(long value);
    TableRow& Real(double value); // three decimals
    TableRow& Text(const std::wstring& words);
    TableRow& Empty(int cells = 1);
    CString Html() const;

private:
    TableRow& cell(const std::wstring& html);
    TableColumns columns_;
    size_t next_ = 0;
    const wchar_t* color_;
    std::wstring cells_;
};

// The whole file: `title` is a source text, `rows` the rows' HTML, `style` further lines of the style sheet.
// In GB2312, as its head says; characters beyond it are written as references that every reader knows.
class TableFile {
public:
    TableFile(const std::wstring& path, const wchar_t* title, TableColumns columns,
              const wchar_t* style = L"");
    void Add(const CString& rows) { body_ += rows; }
    void Add(const TableRow& row) { body_ += row.Html(); }
    // Ends the table and begins another below it.
    void BeginTable(const wchar_t* title, TableColumns columns);
    std::string Bytes() const;
    // Writes the file whole; false when it can't be written.
    bool Save() const;

private:
    void head(const wchar_t* title, TableColumns columns);
    std::wstring path_;
    CString body_;
};

} // namespace corvane
