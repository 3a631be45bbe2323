// The fixed parts of the file, and cells.
#include "curves/reports/table_file.h"

#include "core/language.h"

namespace corvane {
namespace {

std::wstring escaped(const std::wstring& words) {
    std::wstring html;
    for (const wchar_t c : words) {
        if (c == L'&')
            html += L"&amp;";
        else if (c == L'<')
            html += L"&lt;";
        else if (c == L'>')
            html += L"&gt;";
        else
            html += c;
    }
    return html;
}

CString cellHtml(int width, const wchar_t* color, const std::wstring& html) {
    CString cell;
    cell.Format(L"    <td width=%d%% valign=top bgcolor=%s><div align=center>%s</div></td>\n", width, color,
                html.c_str());
    return cell;
}

std::wstring fileNameOf(const std::wstring& path) {
    return path.substr(path.find_last_of(host_door::kSeparator) + 1);
}

} // namespace

TableRow& TableRow::cell(const std::wstring& html) {
    if (next_ < columns_.size()) cells_ += cellHtml(columns_[next_++].width, color_, html);
    return *this;
}
TableRow& TableRow::Number(long value) { return cell(std::to_wstring(value)); }
TableRow& TableRow::Real(double value) {
    CString text;
    text.Format(L"%.3f", value);
    return cell(std::wstring(text.GetString()));
}
TableRow& TableRow::Text(const std::wstring& words) {
    return cell(words.empty() ? L"&nbsp;" : escaped(words));
}
TableRow& TableRow::Empty(int cells) {
    for (int i = 0; i < cells; ++i) cell(L"&nbsp;");
    return *this;
}
CString TableRow::Html() const {
    TableRow whole = *this;
    whole.Empty(int(columns_.size() - next_));
    return CString((L"  <tr>\n" + whole.cells_ + L"  </tr>\n").c_str());
}

TableFile::TableFile(const std::wstring& path, const wchar_t* title, TableColumns columns,
                     const wchar_t* style)
    : path_(path) {
    body_ += L"<html>\n<head>\n<meta http-equiv=\"Content-Type\" content=\"text/html; charset=gb2312\">\n";
    body_ += (L"<title>" + escaped(fileNameOf(path)) + L"</title>\n").c_str();
    body_ += L"<style type=\"text/css\">\n<!--\n.STYLE1 {font-size: 18px}\n";
    body_ += style;
    body_ += L"-->\n</style>\n</head>\n<body>\n";
    head(title, columns);
}

void TableFile::head(const wchar_t* title, TableColumns columns) {
    body_ += (L"<p align=center class=STYLE1>" + escaped(Translate(title).GetString()) + L"</p>\n").c_str();
    body_ +=
        L"<table border=1 cellspacing=0 bordercolor=#000000 width = 100% style=border-collapse:collapse>\n";
    TableRow headings(columns);
    for (const TableColumn& column : columns) headings.Text(Translate(column.heading).GetString());
    Add(headings);
}

void TableFile::BeginTable(const wchar_t* title, TableColumns columns) {
    body_ += L"</table>\n<br>\n";
    head(title, columns);
}

std::string TableFile::Bytes() const {
    const std::wstring whole = std::wstring(body_.GetString()) + L"</table>\n<br>\n</body>\n</html>\n";
    return host_door::encodedInGb2312(whole, [](wchar_t c) {
        CString reference;
        reference.Format(L"&#%d;", int(c));
        return std::wstring(reference);
    });
}

bool TableFile::Save() const { return host_door::writeFile(path_, Bytes()); }

} // namespace corvane
