// The door to the host: text files in whatever encoding they come, and files for the moment.
#pragma once
#include <optional>
#include <string>

namespace corvane::host_door {

// The text of a file in UTF-8, UTF-16 or GB18030, with or without a mark; nothing when it can't be read.
std::optional<std::wstring> textOfFile(const std::wstring& path);
// A new empty file in the system's folder for such, its name ending in `suffix`; an empty path when none can
// be made. It stays until somebody removes it.
std::wstring temporaryFile(const std::wstring& suffix);

} // namespace corvane::host_door
