// Registry, files and folders by the host's own services.
#include "core/host/system.h"

#include <link.h>
#include <unistd.h>

#include <algorithm>
#include <cwchar>
#include <filesystem>
#include <random>

#include "host/os/clock.h"
#include "host/os/codepage.h"
#include "host/os/files.h"
#include "host/os/locale.h"
#include "host/os/registry.h"
#include "host/os/shell.h"
#include "host/os/text.h"

namespace corvane::host_door {
namespace {

// SplitMix64 (Steele, Lea and Flood 2014): every bit of the outcome hangs on every bit of the state.
std::uint64_t mixed(std::uint64_t state) {
    state = (state ^ state >> 30) * 0xBF58476D1CE4E5B9u;
    state = (state ^ state >> 27) * 0x94D049BB133111EBu;
    return state ^ state >> 31;
}

} // namespace

std::optional<std::uint32_t> registryNumber(const std::wstring& key, const std::wstring& name) {
    return host::userRegistry().number(key, name);
}
std::optional<std::wstring> registryText(const std::wstring& key, const std::wstring& name) {
    return host::userRegistry().text(key, name);
}
std::optional<std::vector<unsigned char>> registryBytes(const std::wstring& key, const std::wstring& name) {
    return host::userRegistry().bytes(key, name);
}
bool registryHasKey(const std::wstring& key) { return host::userRegistry().hasKey(key); }
bool setRegistry(const std::wstring& key, const std::wstring& name, std::uint32_t value) {
    return host::userRegistry().set(key, name, value).empty();
}
bool setRegistry(const std::wstring& key, const std::wstring& name, const std::wstring& value) {
    return host::userRegistry().set(key, name, value).empty();
}
bool setRegistry(const std::wstring& key, const std::wstring& name, const std::vector<unsigned char>& value) {
    return host::userRegistry().set(key, name, value).empty();
}
RegistryBatch::RegistryBatch() { host::userRegistry().beginBatch(); }
RegistryBatch::~RegistryBatch() { host::userRegistry().endBatch(); }

std::wstring moduleFolder() {
    static const char anchor = 0;
    const std::string folder = host::moduleFolder(&anchor);
    return folder.empty() ? std::wstring() : host::wide(folder) + kSeparator;
}

std::wstring loadedModulePath(const std::wstring& fileName) {
    struct Search {
        std::string name, path;
    } search{"/" + host::utf8(fileName), {}};
    dl_iterate_phdr(
        [](dl_phdr_info* info, size_t, void* data) {
            auto& wanted = *static_cast<Search*>(data);
            const std::string_view path = info->dlpi_name;
            if (!path.ends_with(wanted.name)) return 0;
            wanted.path = path;
            return 1;
        },
        &search);
    return host::wide(search.path);
}

bool isFile(const std::wstring& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(host::utf8(path), error);
}

std::optional<std::string> fileBytes(const std::wstring& path) {
    std::string bytes;
    if (host::readWhole(host::utf8(path), bytes)) return std::nullopt;
    return bytes;
}

std::wstring decodeSystem(const std::string& bytes) {
    return host::isUtf8(bytes) ? host::wide(bytes) : host::wide(host::CodePage("ANSI_936").decode(bytes));
}

std::string encodedInGb2312(const std::wstring& text, const std::function<std::wstring(wchar_t)>& replace) {
    // The code page holds far more than the character set that bears its number.
    const host::CodePage page("ANSI_936");
    const auto belongs = [](const std::string& bytes) {
        const auto byte = [&](size_t i) { return static_cast<unsigned char>(bytes[i]); };
        return bytes.size() == 1 ? byte(0) < 0x80
                                 : bytes.size() == 2 && byte(0) >= 0xA1 && byte(0) <= 0xF7 && byte(1) >= 0xA1;
    };
    std::string bytes;
    for (const wchar_t c : text) {
        const auto one = page.encode(host::utf8(std::wstring(1, c)));
        bytes += one.lost == 0 && belongs(one.bytes) ? one.bytes : page.encode(host::utf8(replace(c))).bytes;
    }
    return bytes;
}

bool writeFile(const std::wstring& path, const std::string& bytes) {
    return !host::writeWhole(host::utf8(path), bytes);
}

bool canWrite(const std::wstring& path) {
    const std::filesystem::path file(host::utf8(path));
    std::error_code error;
    if (std::filesystem::exists(file, error))
        return std::filesystem::is_regular_file(file, error) && access(file.c_str(), W_OK) == 0;
    const std::filesystem::path folder = file.has_parent_path() ? file.parent_path() : ".";
    return std::filesystem::is_directory(folder, error) && access(folder.c_str(), W_OK) == 0;
}

std::wstring requestedLanguage() { return host::wide(host::requestedLanguage()); }
bool systemSpeaksChinese() { return host::languageTag().starts_with("zh"); }

std::wstring freshGuid(std::uint64_t salt) {
    constexpr std::uint64_t kStep = 0x9E3779B97F4A7C15u;
    static std::uint64_t calls = 0;
    std::uint64_t state = mixed(salt + kStep * ++calls);
    state = mixed(state + std::uint64_t(host::clockSeconds()) + (std::uint64_t(host::tickCount()) << 32));
    if (!host::clockIsSet()) state ^= std::uint64_t(std::random_device()()) << 32 | std::random_device()();
    const std::uint64_t high = mixed(state + kStep), low = mixed(state + 2 * kStep);
    wchar_t text[37]; // version 4, variant 1
    std::swprintf(text, 37, L"%08X-%04X-4%03X-%04X-%012llX", unsigned(high >> 32),
                  unsigned(high >> 16 & 0xFFFF), unsigned(high & 0xFFF),
                  unsigned(low >> 48 & 0x3FFF) | 0x8000u,
                  static_cast<unsigned long long>(low & 0xFFFFFFFFFFFFu));
    return text;
}

std::int64_t clockSeconds() { return host::clockSeconds(); }
std::uint32_t tickCount() { return host::tickCount(); }

void openExternally(const std::wstring& target, const std::wstring& parameters) {
    host::shellOpen({target, parameters});
}

} // namespace corvane::host_door
