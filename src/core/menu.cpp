// The menu file, the folder it lies in, the host's language, and the demonstration links.
#include <algorithm>
#include <cwctype>

#include "core/command_table.h"
#include "core/host/system.h"
#include "core/language_file.h"
#include "core/messages.h"
#include "core/settings.h"
#include "core/sysvar_stack.h"

namespace corvane {
namespace {

constexpr int kSimplifiedChinese = 2052, kSingapore = 4100;
constexpr int kLastReleaseWithMenuBarOn = 17;

// Text for a host expression: its backslashes doubled.
std::wstring doubled(const std::wstring& path) {
    std::wstring out;
    for (wchar_t c : path) out.append(c == L'\\' ? 2 : 1, c);
    return out;
}

bool all(const std::wstring& text, int (*test)(wint_t)) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [&](wchar_t c) { return test(wint_t(c)); });
}

int fromRegistryRoot() {
    const std::wstring root = acdbHostApplicationServices()->getUserRegistryProductRootKey();
    if (root.empty()) return 0;
    for (const wchar_t* name : {L"Language", L"Locale", L"LocaleId", L"LocaleID", L"LanguageCode"})
        if (const auto text = host_door::registryText(root, name))
            if (const int id = LanguageIdFromText(*text)) return id;
    const size_t colon = root.rfind(L':');
    return colon == root.npos ? 0 : LanguageIdFromText(root.substr(colon + 1));
}

} // namespace

int LanguageIdFromText(const std::wstring& text) {
    static constexpr std::pair<std::wstring_view, int> kNamed[] = {
        {L"zh-cn", 2052}, {L"zh-tw", 1028}, {L"zh-hk", 3076}, {L"zh-sg", 4100},
        {L"en-us", 1033}, {L"en", 1033},    {L"zh", 2052}};
    const std::wstring code = host::lower(CString(text).Trim().str());
    for (const auto& [name, id] : kNamed)
        if (code == name) return id;
    const bool marked = code.starts_with(L"0x");
    const std::wstring digits = marked ? code.substr(2) : code;
    if (!all(digits, std::iswxdigit)) return 0;
    const int base = !marked && all(digits, std::iswdigit) ? 10 : 16;
    const auto value = host::parseInteger(std::wstring_view(digits), base);
    return value && *value > 0 && *value <= 0x7FFFFFFF ? int(*value) : 0;
}

int LanguageIdFromPath(const std::wstring& path) {
    std::wstring folded = host::lower(path);
    std::replace(folded.begin(), folded.end(), L'/', L'\\');
    for (const auto& [folder, id] :
         {std::pair(L"\\zh-cn\\", 2052), std::pair(L"\\zh-tw\\", 1028), std::pair(L"\\zh-hk\\", 3076),
          std::pair(L"\\zh-sg\\", 4100), std::pair(L"\\en-us\\", 1033)})
        if (folded.find(folder) != folded.npos) return id;
    return 0;
}

int HostLanguageId() {
    const AcLocale locale = acrxProductLocale();
    if (int(locale) > 0) return int(locale);
    const std::wstring language = host::lower(CString(locale.iso2LangName()).Trim().str());
    const std::wstring country = host::upper(CString(locale.iso2CountryName()).Trim().str());
    for (const std::wstring& text : {language + L"-" + country, language})
        if (const int id = LanguageIdFromText(text)) return id;
    if (const int id = fromRegistryRoot()) return id;
    for (const wchar_t* module : {L"acadres.dll", L"accore.dll"})
        if (const int id = LanguageIdFromPath(host_door::loadedModulePath(module))) return id;
    return 0;
}

bool HostIsSimplifiedChinese() {
    const int id = HostLanguageId();
    return id == kSimplifiedChinese || id == kSingapore;
}

void ModuleDirectory(std::wstring& folder) {
    folder = host_door::moduleFolder();
    if (folder.empty()) folder = SettingsStore::ReadText(L"Location");
    if (folder.empty()) {
        const std::wstring application = acedGetAppName();
        folder = application.substr(0, application.find_last_of(L"\\/") + 1);
    }
    if (folder.empty()) folder = L"C:\\Program Files\\brinkhaven\\Corvane\\";
    folder = CString(folder).Trim().str();
    while (!folder.empty() && (folder.back() == L'\\' || folder.back() == host_door::kSeparator))
        folder.pop_back();
    folder += host_door::kSeparator;
}

void LoadMenuFile() {
    std::wstring folder;
    ModuleDirectory(folder);
    std::wstring files[] = {L"Corvane_eng.cuix", L"Corvane_chn.cuix"};
    if (HostIsSimplifiedChinese()) std::swap(files[0], files[1]);
    const auto* found =
        std::find_if(files, files + 2, [&](const std::wstring& f) { return host_door::isFile(folder + f); });
    if (found == files + 2) {
        PrintText(
            Translate(L"\n<Corvane_eng.cuix> & <Corvane_chn.cuix>Both Menu File Not Found in Path:").str() +
            folder);
        return;
    }
    if (!acedIsMenuGroupLoaded(L"CORVANE")) {
        CString load;
        load.Format(L"(if(null(menugroup \"CORVANE\"))(command \"menuload\" \"%s\")) ",
                    doubled(folder + *found));
        ads_queueexpr(load);
        for (const wchar_t* show : {L"(menucmd \"P12=+CORVANE.POP1\")", L"(menucmd \"P13=+CORVANE.POP2\")",
                                    L"(menucmd \"P14=+CORVANE.POP3\")"})
            ads_queueexpr(show);
    }
    if (acdbHostMajorRelease() > kLastReleaseWithMenuBarOn) SetSysVarInt(L"menubar", 1);
}

void OpenDemoLink(int number) {
    std::wstring target = SettingsStore::ReadText(L"Demo" + std::to_wstring(number));
    if (target.empty()) {
        std::wstring folder;
        ModuleDirectory(folder);
        const std::wstring tag = L"DEMO" + std::to_wstring(number) + L":";
        const auto bytes = host_door::fileBytes(folder + L"DemoAddress.txt");
        const std::wstring text = bytes ? DecodeLanguageFile(*bytes) : std::wstring();
        if (const size_t at = text.find(tag); at != text.npos)
            target = CString(text.substr(at + tag.size(), text.find_first_of(L"\r\n", at) - at - tag.size()))
                         .Trim()
                         .str();
    }
    if (!target.empty()) host_door::openExternally(target);
}

} // namespace corvane
