// The parser of coordinate lists.
#include "curves/conversion/coordinate_file.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

namespace corvane {
namespace {

constexpr std::wstring_view kSeparators = L"，;；、|";

bool isBlank(wchar_t c) {
    return c == L' ' || c == L'\t' || c == L'\v' || c == L'\f' || c == 0xA0 || c == 0x3000 || c == 0xFEFF;
}

// Separators become commas, full-width characters plain ones, blanks single blanks without any at the ends.
std::wstring plain(std::wstring_view line) {
    std::wstring out;
    for (wchar_t c : line) {
        if (kSeparators.find(c) != std::wstring_view::npos) c = L',';
        if (c >= 0xFF01 && c <= 0xFF5E) c = wchar_t(c - 0xFEE0);
        if (c == 0x2212) c = L'-'; // the minus sign of typesetting
        if (!isBlank(c))
            out += c;
        else if (!out.empty() && out.back() != L' ')
            out += L' ';
    }
    if (out.ends_with(L' ')) out.pop_back();
    return out;
}

std::vector<std::wstring> split(const std::wstring& line, wchar_t separator) {
    std::vector<std::wstring> fields(1);
    for (const wchar_t c : line) {
        if (c == separator)
            fields.emplace_back();
        else if (c != L' ')
            fields.back() += c;
    }
    return fields;
}

// The whole field, in the C locale's form whatever the user's.
std::optional<double> number(const std::wstring& field) {
    std::string digits;
    for (const wchar_t c : field) {
        if (std::wstring_view(L"0123456789+-.eEdD").find(c) == std::wstring_view::npos) return std::nullopt;
        digits += c == L'd' || c == L'D' ? 'e' : char(c);
    }
    const char* begin = digits.data() + (digits.starts_with('+') && !digits.starts_with("+-"));
    double value = 0;
    const auto [end, error] = std::from_chars(begin, digits.data() + digits.size(), value);
    if (error != std::errc() || end != digits.data() + digits.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::vector<std::wstring> fieldsOf(std::wstring line) {
    if (const size_t comment = line.find(L"//"); comment != std::wstring::npos) line.resize(comment);
    std::vector<std::wstring> fields = split(line, L',');
    if (fields.size() > 1 || line.find(L' ') == std::wstring::npos) return fields;
    while (line.ends_with(L' ')) line.pop_back();
    std::vector<std::wstring> parts = split(line, L' ');
    const bool numbers = std::all_of(parts.begin(), parts.end(),
                                     [](const std::wstring& part) { return number(part).has_value(); });
    return numbers ? parts : fields;
}

class Reader {
public:
    void line(std::wstring_view text) {
        ++file_.lines;
        const std::vector<std::wstring> fields = fieldsOf(plain(text));
        if (fields.size() < 2) return endRow();
        AcGePoint3d point;
        for (unsigned i = 0; i < std::min<size_t>(fields.size(), 3); ++i) {
            const auto value = number(fields[i]);
            if (!value) return file_.badLines.push_back({file_.lines, std::wstring(text)});
            point[i] = *value;
        }
        row_.push_back(point);
    }
    CoordinateFile take() {
        endRow();
        return std::move(file_);
    }

private:
    void endRow() {
        if (!row_.empty()) file_.rows.push_back(std::move(row_));
        row_.clear();
    }
    CoordinateFile file_;
    std::vector<AcGePoint3d> row_;
};

} // namespace

CoordinateFile ReadCoordinates(std::wstring_view text) {
    Reader reader;
    for (size_t at = 0; at < text.size();) {
        const size_t end = std::min(text.find_first_of(L"\r\n", at), text.size());
        reader.line(text.substr(at, end - at));
        at = end + (text.substr(end).starts_with(L"\r\n") ? 2 : 1);
    }
    return reader.take();
}

} // namespace corvane
