// Which language is spoken, and texts in it.
#include "core/language.h"

#include "core/language_file.h"
#include "core/settings.h"

namespace corvane {
namespace {

struct Service {
    LanguageFile file;
    std::wstring activeOverride;
    bool loaded = false;
};

Service& service() {
    static Service theService;
    if (!theService.loaded) {
        theService.loaded = true; // before reading: an unreadable file must not be tried again for every text
        if (const auto bytes = host_door::fileBytes(ModuleLangPath()))
            theService.file.Read(DecodeLanguageFile(*bytes));
    }
    return theService;
}

std::wstring translation(std::wstring_view text) {
    const LanguageFile& file = service().file;
    const std::wstring language = ActiveLanguage();
    for (const std::wstring& code : {language, file.FallbackLanguage}) {
        if (SameLanguage(code, file.SourceLanguage)) return {};
        if (std::wstring found = file.LookupExact(text, code); !found.empty()) return found;
        if (std::wstring found = file.LookupTrimmed(text, code); !found.empty()) return found;
        if (language == file.FallbackLanguage) break;
    }
    return {};
}

} // namespace

std::wstring ModuleLangPath() {
    static constexpr wchar_t kName[] = L"CorvaneLang.ini";
    const std::wstring own = host_door::moduleFolder();
    std::wstring folder = own;
    if (host_door::isFile(own + kName)) return own + kName;
    for (int up = 0; up < 6; ++up) {
        while (!folder.empty() && folder.back() == host_door::kSeparator) folder.pop_back();
        folder.resize(folder.find_last_of(host_door::kSeparator) + 1);
        if (folder.empty()) break;
        for (const wchar_t* below : {L"", L"resources/", L"Corvane_2004_VC7/"})
            if (host_door::isFile(folder + below + kName)) return folder + below + kName;
    }
    return own + kName;
}

std::wstring ActiveLanguage() {
    const Service& s = service();
    if (!s.activeOverride.empty()) return s.activeOverride;
    if (const std::wstring asked = NormalizeLanguage(host_door::requestedLanguage()); !asked.empty())
        return asked;
    const std::wstring stored = NormalizeLanguage(RegReadText(kCurrentUser, kSettingsKey, L"Language"));
    if (!stored.empty()) return stored;
    if (!s.file.ConfiguredLanguage.empty()) return s.file.ConfiguredLanguage;
    return host_door::systemSpeaksChinese() ? s.file.SourceLanguage : s.file.FallbackLanguage;
}

void SetLanguage(const std::wstring& code) {
    service().activeOverride = NormalizeLanguage(code);
    RegWriteText(kCurrentUser, kSettingsKey, L"Language", service().activeOverride);
}

bool SpeaksSourceLanguage() { return SameLanguage(ActiveLanguage(), service().file.SourceLanguage); }

bool HasTexts(const std::wstring& code) {
    const LanguageFile& file = service().file;
    const std::wstring ending = L"." + NormalizeLanguage(code);
    if (SameLanguage(code, file.SourceLanguage)) return true;
    for (const auto& [key, text] : file.TranslationMap)
        if (!text.empty() && host::lower(key).ends_with(ending)) return true;
    return false;
}

CString Translate(const wchar_t* source) { return TranslateOr(source, source); }

CString TranslateOr(const wchar_t* source, const wchar_t* otherwise) {
    if (!source || !*source) return otherwise;
    if (SpeaksSourceLanguage()) return source;
    const std::wstring found = translation(source);
    if (!found.empty()) return found;
    return otherwise && *otherwise ? otherwise : source;
}

std::wstring FormatPlaceholders(const std::wstring& format) {
    std::wstring list;
    for (size_t i = 0; i + 1 < format.size(); ++i) {
        if (format[i] != L'%') continue;
        if (format[i + 1] == L'%') {
            ++i;
            continue;
        }
        const size_t end = format.find_first_of(L"diouxXeEfgGcCsSp", i + 1);
        if (end == format.npos) break;
        // Width and precision may differ between languages; stars, sizes and types must not.
        const std::wstring placeholder = format.substr(i + 1, end - i);
        const size_t size = placeholder.find_first_not_of(L"-+ #0123456789.*");
        for (wchar_t c : placeholder.substr(0, size))
            if (c == L'*') list += c;
        list += placeholder.substr(size);
        list += L' ';
        i = end;
    }
    return list;
}

CString TranslatedFormat(const wchar_t* source) {
    const CString translated = Translate(source);
    return FormatPlaceholders(translated.str()) == FormatPlaceholders(source) ? translated : CString(source);
}

} // namespace corvane
