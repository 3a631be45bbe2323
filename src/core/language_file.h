// The language file as data: translations by hashed source text. Plain text in, plain maps out;
// language.h decides which language is asked for.
#pragma once
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace corvane {

// The hash that keys a source text (FNV-1a over the bytes of its UTF-16 units, low byte first, with a start
// value of its own; Fowler, Noll and Vo 1991). Line ends count as "\n".
std::uint64_t TextHash(std::wstring_view text);

// Trimmed, lower case, "_" replaced by "-".
std::wstring NormalizeLanguage(std::wstring_view code);
// The part before the first "-".
std::wstring PrimarySubtag(const std::wstring& code);
// True when the primary subtags are equal.
bool SameLanguage(const std::wstring& a, const std::wstring& b);

struct LessNoCase {
    bool operator()(const std::wstring& a, const std::wstring& b) const;
};

struct LanguageFile {
    std::map<std::wstring, std::wstring, LessNoCase> TranslationMap; // "0123456789ABCDEF.de" to its text
    std::wstring SourceLanguage = L"zh";
    std::wstring FallbackLanguage = L"en";
    std::wstring ConfiguredLanguage;

    // Reads the file's text into this one. Lines that say nothing are passed over.
    void Read(std::wstring_view text);
    // The translation of the text into the language, or an empty text. An empty entry counts as none.
    std::wstring LookupExact(std::wstring_view text, const std::wstring& language) const;
    // The same for the text without the white space around it, which is put back.
    std::wstring LookupTrimmed(std::wstring_view text, const std::wstring& language) const;
};

// The file's text from its bytes: UTF-8 or UTF-16 by its mark, the system's encoding without one.
std::wstring DecodeLanguageFile(const std::string& bytes);

} // namespace corvane
