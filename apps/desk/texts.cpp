// Asking the module that is loaded; see src/core/module_language.cpp for what it answers.
#include "apps/desk/texts.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

#include "apps/desk/qt_text.h"
#include "host/ed/application.h"

namespace desk {
namespace {

template <class Function> Function* ofModule(const char* name) {
    return reinterpret_cast<Function*>(acrxDynamicLinker->symbol(name));
}

} // namespace

QString say(const wchar_t* source) {
    auto* translate = ofModule<void(const wchar_t*, std::wstring&)>("corvaneTranslate");
    if (!translate) return shown(source);
    std::wstring text;
    translate(source, text);
    return shown(text);
}

QString say(const QString& source) { return say(wide(source).c_str()); }

std::vector<Language> languages() {
    std::vector<Language> all;
    auto* offered = ofModule<bool(int, std::wstring&, std::wstring&)>("corvaneOfferedLanguage");
    std::wstring code, name;
    for (int i = 0; offered && offered(i, code, name); ++i) all.push_back({code, shown(name)});
    return all;
}

std::wstring spokenLanguage() {
    std::wstring code;
    if (auto* ask = ofModule<void(std::wstring&)>("corvaneLanguage")) ask(code);
    return code;
}

void speak(const std::wstring& code) {
    if (auto* set = ofModule<void(const wchar_t*)>("corvaneSetLanguage")) set(code.c_str());
}

void followLanguageInToolkit() {
    static QTranslator* current = nullptr;
    delete current; // takes itself out
    current = new QTranslator(QCoreApplication::instance());
    const QString code = shown(spokenLanguage());
    const QString name = code.startsWith("zh") ? "qtbase_zh_CN" : "qtbase_" + code.section('-', 0, 0);
    if (current->load(name, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(current);
}

} // namespace desk
