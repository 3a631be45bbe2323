// The language service: every text of the system is written in Chinese and shown in the user's
// language. The source text is the key; a text without a translation is shown as it stands.
#pragma once
#include <cstdarg>
#include <string>

#include "core/host/system.h"

namespace corvane {

// The normalised code of the language in use: the one set, else the stored one, else the file's, else the
// system's (Chinese systems read the source texts, all others the fallback language).
std::wstring ActiveLanguage();
// From now on, and in the settings for the next time.
void SetLanguage(const std::wstring& code);
// True when texts are shown as they stand in the sources.
bool SpeaksSourceLanguage();
// Whether there are texts in that language: it is the source's, or the file has some.
bool HasTexts(const std::wstring& code);

CString Translate(const wchar_t* source);
CString TranslateOr(const wchar_t* source, const wchar_t* otherwise);
// Translates the format, then fills it in. A translation whose placeholders don't match the source's in
// order and type is not used.
template <class... Arguments> CString TranslateFormat(const wchar_t* source, const Arguments&... arguments);
// The translated format if it takes the same arguments as the source, else the source.
CString TranslatedFormat(const wchar_t* source);
// The placeholders of a format, such as "%d %s", one after the other.
std::wstring FormatPlaceholders(const std::wstring& format);

// Where the language file is looked for: beside the module, then up to six folders above it.
std::wstring ModuleLangPath();

template <class... Arguments> CString TranslateFormat(const wchar_t* source, const Arguments&... arguments) {
    CString text;
    text.Format(TranslatedFormat(source), arguments...);
    return text;
}

} // namespace corvane
