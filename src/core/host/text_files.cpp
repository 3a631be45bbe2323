// Text files by the host's file and code page services.
#include "core/host/text_files.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "host/os/codepage.h"
#include "host/os/files.h"
#include "host/os/text.h"

namespace corvane::host_door {

std::optional<std::wstring> textOfFile(const std::wstring& path) {
    std::string bytes;
    if (host::readWhole(host::utf8(path), bytes)) return std::nullopt;
    return host::textFileContents(bytes);
}

std::wstring temporaryFile(const std::wstring& suffix) {
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    if (error) return {};
    const std::string ending = host::utf8(suffix);
    std::string name = (folder / ("corvane-XXXXXX" + ending)).string();
    const int file = mkstemps(name.data(), int(ending.size()));
    if (file < 0) return {};
    close(file);
    return host::wide(name);
}

} // namespace corvane::host_door
