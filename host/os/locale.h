// The language the user's system is set to.
#pragma once

#include <string>

namespace host {

// A language tag in small letters such as "zh-cn", "en-us" or "de", from LC_ALL, LC_MESSAGES or LANG,
// the first that is not empty; "en" for "C", "POSIX" and when none is set.
std::string languageTag();

// Takes the place of the environment's; an empty one gives it back.
void setLanguageTag(std::string tag);

// The language that the user asked this run to speak (a program's --lang); empty when none was asked for.
std::string requestedLanguage();
void setRequestedLanguage(std::string tag);

} // namespace host
