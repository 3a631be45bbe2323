// CString's searching, trimming and replacing.
#include "host/os/cstring.h"

#include <algorithm>

namespace {

constexpr auto kNone = std::wstring::npos;
constexpr const wchar_t* kBlanks = L" \t\n\v\f\r";

int asIndex(std::size_t at) { return at == kNone ? -1 : static_cast<int>(at); }

const wchar_t* orEmpty(const wchar_t* text) { return text ? text : L""; }

} // namespace

CString CString::Mid(int first, int count) const {
    const int from = std::clamp(first, 0, GetLength());
    const int most = std::clamp(count, 0, GetLength() - from);
    return CString(text_.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(most)));
}

CString CString::Right(int count) const {
    const int most = std::clamp(count, 0, GetLength());
    return Mid(GetLength() - most, most);
}

int CString::Find(const wchar_t* part, int start) const {
    if (!part || start < 0 || start > GetLength()) return -1;
    return asIndex(text_.find(part, static_cast<std::size_t>(start)));
}

int CString::Find(wchar_t c, int start) const {
    if (start < 0 || start > GetLength()) return -1;
    return asIndex(text_.find(c, static_cast<std::size_t>(start)));
}

int CString::ReverseFind(wchar_t c) const { return asIndex(text_.rfind(c)); }

int CString::FindOneOf(const wchar_t* set) const { return asIndex(text_.find_first_of(orEmpty(set))); }

CString& CString::TrimLeft() { return TrimLeft(kBlanks); }
CString& CString::TrimRight() { return TrimRight(kBlanks); }

CString& CString::TrimLeft(const wchar_t* set) {
    text_.erase(0, std::min(text_.find_first_not_of(orEmpty(set)), text_.size()));
    return *this;
}

CString& CString::TrimRight(const wchar_t* set) {
    text_.erase(text_.find_last_not_of(orEmpty(set)) + 1); // npos + 1 is 0: nothing is kept
    return *this;
}

CString& CString::TrimLeft(wchar_t c) {
    const wchar_t set[] = {c, 0};
    return TrimLeft(set);
}

CString& CString::TrimRight(wchar_t c) {
    const wchar_t set[] = {c, 0};
    return TrimRight(set);
}

CString& CString::MakeLower() {
    for (wchar_t& c : text_) c = host::lower(c);
    return *this;
}

CString& CString::MakeUpper() {
    for (wchar_t& c : text_) c = host::upper(c);
    return *this;
}

CString& CString::MakeReverse() {
    std::reverse(text_.begin(), text_.end());
    return *this;
}

int CString::Replace(wchar_t from, wchar_t to) {
    if (from == to) return 0;
    const auto count = std::count(text_.begin(), text_.end(), from);
    std::replace(text_.begin(), text_.end(), from, to);
    return static_cast<int>(count);
}

int CString::Replace(const wchar_t* from, const wchar_t* to) {
    const std::wstring_view what = orEmpty(from), with = orEmpty(to);
    if (what.empty()) return 0;
    std::wstring out;
    int count = 0;
    std::size_t kept = 0;
    for (std::size_t at = text_.find(what); at != kNone; at = text_.find(what, kept), ++count) {
        out.append(text_, kept, at - kept).append(with);
        kept = at + what.size();
    }
    if (count > 0) text_ = out.append(text_, kept, kNone);
    return count;
}

int CString::Remove(wchar_t c) { return static_cast<int>(std::erase(text_, c)); }

int CString::Insert(int index, const wchar_t* part) {
    text_.insert(static_cast<std::size_t>(std::clamp(index, 0, GetLength())), orEmpty(part));
    return GetLength();
}

int CString::Insert(int index, wchar_t c) {
    const wchar_t part[] = {c, 0};
    return Insert(index, part);
}

int CString::Delete(int index, int count) {
    if (index >= 0 && index < GetLength() && count > 0)
        text_.erase(static_cast<std::size_t>(index), static_cast<std::size_t>(count));
    return GetLength();
}

CString CString::Tokenize(const wchar_t* separators, int& start) const {
    if (start >= 0 && start < GetLength()) {
        const std::size_t first =
            text_.find_first_not_of(orEmpty(separators), static_cast<std::size_t>(start));
        if (first != kNone) {
            const std::size_t end = std::min(text_.find_first_of(orEmpty(separators), first), text_.size());
            start = static_cast<int>(end) + 1;
            return CString(text_.substr(first, end - first));
        }
    }
    start = -1;
    return {};
}

CString CString::SpanIncluding(const wchar_t* set) const {
    return CString(text_.substr(0, text_.find_first_not_of(orEmpty(set))));
}

CString CString::SpanExcluding(const wchar_t* set) const {
    return CString(text_.substr(0, text_.find_first_of(orEmpty(set))));
}

wchar_t* CString::GetBuffer(int length) {
    if (length > GetLength()) text_.resize(static_cast<std::size_t>(length), L'\0');
    return text_.data();
}

void CString::ReleaseBuffer(int length) {
    const std::size_t end = length >= 0 ? static_cast<std::size_t>(length) : text_.find(L'\0');
    if (end < text_.size()) text_.resize(end);
}
