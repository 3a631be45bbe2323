// What programs that carry the module ask of its language service, by name: their own texts in the language
// of the commands, and the choice of it. See language.h; the entry point stands in module.cpp.
#include "core/about.h"
#include "core/language.h"

#define CORVANE_EXPORT extern "C" __attribute__((visibility("default")))

CORVANE_EXPORT void corvaneTranslate(const wchar_t* source, std::wstring& text) {
    text = corvane::Translate(source).str();
}

CORVANE_EXPORT void corvaneLanguage(std::wstring& code) { code = corvane::ActiveLanguage(); }

CORVANE_EXPORT void corvaneSetLanguage(const wchar_t* code) { corvane::SetLanguage(code); }

// The languages that there are texts in, by number from 0; false behind the last.
CORVANE_EXPORT bool corvaneOfferedLanguage(int number, std::wstring& code, std::wstring& name) {
    for (const corvane::LanguageRow& row : corvane::LanguageTable()) {
        if (!corvane::HasTexts(row.code) || number-- > 0) continue;
        code = row.code;
        name = row.shownAs;
        return true;
    }
    return false;
}
