// CString, the host's text class, over a standard wide string. Indices and lengths are in wide
// characters; out-of-range ones are brought into range, as callers rely on. Formatting rules stand
// in format.h, case folding in text.h.
#pragma once

#include "host/os/format.h"
#include "host/os/text.h"

#include <cstdarg>
#include <functional>
#include <string>
#include <string_view>
#include <type_traits>

class CString {
public:
    CString() = default;
    CString(const wchar_t* text) : text_(text ? text : L"") {}
    CString(const wchar_t* text, int length)
        : text_(text && length > 0 ? std::wstring(text, std::size_t(length)) : std::wstring()) {}
    CString(const char* utf8) : text_(utf8 ? host::wide(utf8) : std::wstring()) {}
    CString(std::wstring text) : text_(std::move(text)) {}
    explicit CString(std::wstring_view text) : text_(text) {}
    explicit CString(wchar_t c, int count = 1) : text_(count > 0 ? std::size_t(count) : 0, c) {}

    operator const wchar_t*() const { return text_.c_str(); }
    const wchar_t* GetString() const { return text_.c_str(); }
    const std::wstring& str() const { return text_; }

    int GetLength() const { return static_cast<int>(text_.size()); }
    bool IsEmpty() const { return text_.empty(); }
    void Empty() { text_.clear(); }
    wchar_t GetAt(int index) const { return inside(index) ? text_[std::size_t(index)] : L'\0'; }
    wchar_t operator[](int index) const { return GetAt(index); }
    void SetAt(int index, wchar_t c) {
        if (inside(index)) text_[std::size_t(index)] = c;
    }

    // Text by the host's format rules; CString, std::wstring and enumerations may be given as arguments.
    template <class... Arguments> void Format(const wchar_t* format, const Arguments&... arguments) {
        text_ = host::formatArguments(format, passed(arguments)...);
    }
    template <class... Arguments> void AppendFormat(const wchar_t* format, const Arguments&... arguments) {
        text_ += host::formatArguments(format, passed(arguments)...);
    }
    void FormatV(const wchar_t* format, va_list arguments) { text_ = host::formatText(format, arguments); }

    CString Left(int count) const { return Mid(0, count); }
    CString Right(int count) const;
    CString Mid(int first) const { return Mid(first, GetLength()); }
    CString Mid(int first, int count) const;

    // Index of the first place at or after `start`, -1 when there is none.
    int Find(const wchar_t* part, int start = 0) const;
    int Find(wchar_t c, int start = 0) const;
    int ReverseFind(wchar_t c) const;
    int FindOneOf(const wchar_t* set) const; // the first character that is in the set

    CString& Trim() { return TrimLeft().TrimRight(); }
    CString& TrimLeft();
    CString& TrimRight();
    CString& Trim(const wchar_t* set) { return TrimLeft(set).TrimRight(set); }
    CString& TrimLeft(const wchar_t* set);
    CString& TrimRight(const wchar_t* set);
    CString& Trim(wchar_t c) { return TrimLeft(c).TrimRight(c); }
    CString& TrimLeft(wchar_t c);
    CString& TrimRight(wchar_t c);
    CString& MakeLower();
    CString& MakeUpper();
    CString& MakeReverse();

    int Compare(const wchar_t* other) const { return text_.compare(other ? other : L""); }
    int CompareNoCase(const wchar_t* other) const { return host::compareNoCase(text_, other ? other : L""); }

    // Each gives how many characters or places were changed (Insert and Delete: the new length).
    int Replace(wchar_t from, wchar_t to);
    int Replace(const wchar_t* from, const wchar_t* to);
    int Remove(wchar_t c);
    int Insert(int index, const wchar_t* part);
    int Insert(int index, wchar_t c);
    int Delete(int index, int count = 1);

    // The next run without any of `separators` at or after `start`, which is moved behind it; empty
    // text and start -1 when there is none.
    CString Tokenize(const wchar_t* separators, int& start) const;
    CString SpanIncluding(const wchar_t* set) const;
    CString SpanExcluding(const wchar_t* set) const;

    // Room for at least `length` characters to be written from outside; ReleaseBuffer cuts the text at
    // `length`, or at its first zero.
    wchar_t* GetBuffer(int length = 0);
    void ReleaseBuffer(int length = -1);

    void Append(const wchar_t* part) { text_ += part ? part : L""; }
    void AppendChar(wchar_t c) { text_ += c; }
    CString& operator+=(const wchar_t* part) { return Append(part), *this; }
    CString& operator+=(const CString& part) { return text_ += part.text_, *this; }
    CString& operator+=(wchar_t c) { return text_ += c, *this; }

    friend CString operator+(CString a, const CString& b) { return std::move(a += b); }
    friend CString operator+(CString a, const wchar_t* b) { return std::move(a += b); }
    friend CString operator+(const wchar_t* a, const CString& b) { return CString(a) += b; }
    friend CString operator+(CString a, wchar_t b) { return std::move(a += b); }
    friend CString operator+(wchar_t a, const CString& b) { return CString(a) += b; }

    friend bool operator==(const CString& a, const CString& b) { return a.text_ == b.text_; }
    friend bool operator==(const CString& a, const wchar_t* b) { return a.Compare(b) == 0; }
    friend bool operator==(const wchar_t* a, const CString& b) { return b.Compare(a) == 0; }
    friend bool operator!=(const CString& a, const CString& b) { return !(a == b); }
    friend bool operator!=(const CString& a, const wchar_t* b) { return !(a == b); }
    friend bool operator!=(const wchar_t* a, const CString& b) { return !(a == b); }
    friend bool operator<(const CString& a, const CString& b) { return a.text_ < b.text_; }
    friend bool operator>(const CString& a, const CString& b) { return a.text_ > b.text_; }
    friend bool operator<=(const CString& a, const CString& b) { return a.text_ <= b.text_; }
    friend bool operator>=(const CString& a, const CString& b) { return a.text_ >= b.text_; }

private:
    bool inside(int index) const { return index >= 0 && index < GetLength(); }

    template <class T> static auto passed(const T& value) {
        if constexpr (std::is_same_v<T, CString>)
            return value.GetString();
        else if constexpr (std::is_same_v<T, std::wstring>)
            return value.c_str();
        else if constexpr (std::is_same_v<T, std::string>)
            return value.c_str();
        else if constexpr (std::is_array_v<T>)
            return static_cast<const std::remove_extent_t<T>*>(value);
        else if constexpr (std::is_enum_v<T>)
            return static_cast<std::underlying_type_t<T>>(value);
        else
            return value;
    }

    std::wstring text_;
};

template <> struct std::hash<CString> {
    std::size_t operator()(const CString& text) const noexcept {
        return std::hash<std::wstring>()(text.str());
    }
};
