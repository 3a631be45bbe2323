// Language tags from the environment's locale names ("zh_CN.UTF-8@variant").
#include "host/os/locale.h"

#include <cstdlib>

namespace host {
namespace {

std::string& overridden() {
    static std::string tag;
    return tag;
}

std::string& requested() {
    static std::string tag;
    return tag;
}

std::string tagOf(std::string name) {
    name.erase(std::min(name.find_first_of(".@"), name.size()));
    if (name == "C" || name == "POSIX" || name.empty()) return "en";
    for (char& c : name) {
        if (c == '_')
            c = '-';
        else if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c + 32);
    }
    return name;
}

} // namespace

std::string languageTag() {
    if (!overridden().empty()) return overridden();
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (const char* value = std::getenv(variable); value && *value) return tagOf(value);
    return "en";
}

std::string requestedLanguage() { return requested(); }
void setRequestedLanguage(std::string tag) { requested() = std::move(tag); }

void setLanguageTag(std::string tag) { overridden() = std::move(tag); }

} // namespace host
