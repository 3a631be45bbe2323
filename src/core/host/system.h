// The door to the host: text, the user's registry, files and folders, the system's language, viewers.
#pragma once
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/os/cstring.h"

namespace corvane::host_door {

std::optional<std::uint32_t> registryNumber(const std::wstring& key, const std::wstring& name);
std::optional<std::wstring> registryText(const std::wstring& key, const std::wstring& name);
std::optional<std::vector<unsigned char>> registryBytes(const std::wstring& key, const std::wstring& name);
bool registryHasKey(const std::wstring& key);
bool setRegistry(const std::wstring& key, const std::wstring& name, std::uint32_t value);
bool setRegistry(const std::wstring& key, const std::wstring& name, const std::wstring& value);
bool setRegistry(const std::wstring& key, const std::wstring& name, const std::vector<unsigned char>& value);
// Many values written as one.
class RegistryBatch {
public:
    RegistryBatch();
    ~RegistryBatch();
    RegistryBatch(const RegistryBatch&) = delete;
    RegistryBatch& operator=(const RegistryBatch&) = delete;
};

// The folder of this module's own file, with a separator at its end; empty when it can't be told.
std::wstring moduleFolder();
inline constexpr wchar_t kSeparator = L'/';
// The path of a library that is loaded into the process, by its file name; empty when it isn't.
std::wstring loadedModulePath(const std::wstring& fileName);
bool isFile(const std::wstring& path);
// The bytes of a file; nothing when it can't be read.
std::optional<std::string> fileBytes(const std::wstring& path);
// Bytes of the system's own encoding, or any that a text file without a mark may have.
std::wstring decodeSystem(const std::string& bytes);

// Text in GB2312; `replace` gives what stands for a character that it lacks.
std::string encodedInGb2312(const std::wstring& text, const std::function<std::wstring(wchar_t)>& replace);
// Writes a file whole or not at all; false when it can't be written.
bool writeFile(const std::wstring& path, const std::string& bytes);
// True when a file of that name is there and may be written, or could be made.
bool canWrite(const std::wstring& path);

// The language asked for at this start of the program; empty when none was.
std::wstring requestedLanguage();
// True when the user's system speaks Chinese.
bool systemSpeaksChinese();
// A text that no other call gives, such as "3F2504E0-4F89-41D3-9A0C-0305E82C3301". Under a clock that is set
// it comes of the clock, the salt and the number of calls alone, so that runs can be repeated.
std::wstring freshGuid(std::uint64_t salt);
// Seconds since 1970-01-01 UTC, and milliseconds since some moment; both stand still under a clock that is
// set.
std::int64_t clockSeconds();
std::uint32_t tickCount();
// Opens a file or address in the user's viewer, or a program with its parameters.
void openExternally(const std::wstring& target, const std::wstring& parameters = {});

} // namespace corvane::host_door
