// The command table: every command of the system, one row each. Registration, demand loading, help
// and menus all read these rows.
#pragma once
#include <span>
#include <string>

#include "core/host/editor.h"

namespace corvane {

enum class Section { host, curves, arrays, associative, deformation, raster, scatter, aids, text, insert };

struct CommandEntry {
    const wchar_t* globalName;
    const wchar_t* localName; // what users type
    int flag;                 // ACRX_CMD_MODAL or ACRX_CMD_TRANSPARENT
    Section section;
    AcRxFunctionPtr handler; // null while the command is not built
    const wchar_t* summary;  // source text
};

inline constexpr wchar_t kCommandGroup[] = L"Corvane";

// In the order of registration.
std::span<const CommandEntry> CommandTable();
// The rows from this index on exist only where the active language is Chinese.
size_t FirstChineseOnlyRow();

// Adds the rows to the host's command stack and prints the load message.
void RegisterCommands();
// Writes the application and its commands to the host's record of what to load on demand.
void RegisterDemandLoad();
// Loads the menu file into the host and shows its menus; also the handler of CORVANE and CVCD.
void LoadMenuFile();
// The folder of the module with a separator at its end: that of its own file, else the registered location,
// else the host application's.
void ModuleDirectory(std::wstring& folder);
// Opens demonstration link `number`, 1 to 8, when there is one.
void OpenDemoLink(int number);
template <int Number> void OpenDemoLink() { OpenDemoLink(Number); }
// The host's user interface language as a numeric id, 0 when it can't be told; and whether that is Simplified
// Chinese.
int HostLanguageId();
bool HostIsSimplifiedChinese();
// The id of a locale text such as "zh-CN", "0x804" or "2052"; 0 for texts that name none.
int LanguageIdFromText(const std::wstring& text);
// The id of the language folder in a path such as /usr/lib/host/zh-CN/accore.so; 0 when there is none.
int LanguageIdFromPath(const std::wstring& path);

} // namespace corvane
