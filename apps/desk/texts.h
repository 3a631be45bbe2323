// The window's own texts in the language of the commands: sources in Chinese, as everywhere, and the module
// that is loaded translates them. Without a module a text is shown as it stands.
#pragma once
#include <QString>
#include <string>
#include <vector>

namespace desk {

QString say(const wchar_t* source);
QString say(const QString& source);
// Translates the format and fills in "%1" and so on.
template <class... Arguments> QString say(const wchar_t* source, const Arguments&... arguments) {
    return say(source).arg(arguments...);
}

struct Language {
    std::wstring code;
    QString name; // in itself
};
// Those there are texts in, and the code of the one in use.
std::vector<Language> languages();
std::wstring spokenLanguage();
// From now on and at the next start. Windows that stand must be told.
void speak(const std::wstring& code);

// The toolkit's own texts, such as those of file dialogs, in the language in use.
void followLanguageInToolkit();

} // namespace desk
