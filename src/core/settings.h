// The settings store: each user's last values under one key of the host's registry, flat and
// named by their feature.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

namespace corvane {

enum RegistryRoot { kCurrentUser };
inline constexpr wchar_t kSettingsKey[] = L"Software\\Brinkhaven\\Corvane";
inline constexpr size_t kRegistryBlockSize = 262144;
// Longest text that reads back; longer ones read as missing.
inline constexpr size_t kRegistryTextBytes = 8192;

// Missing values and values of another type read as 0, as the default given, as empty text, as false.
std::uint32_t RegReadInt(RegistryRoot root, const std::wstring& key, const std::wstring& name);
double RegReadReal(RegistryRoot root, const std::wstring& key, const std::wstring& name, double otherwise);
std::wstring RegReadText(RegistryRoot root, const std::wstring& key, const std::wstring& name);
bool RegReadBlock(RegistryRoot root, const std::wstring& key, const std::wstring& name,
                  std::vector<unsigned char>& block);
// True when written. The key is made, but for blocks, whose key must exist and whose size is fixed.
bool RegWriteInt(RegistryRoot root, const std::wstring& key, const std::wstring& name, std::uint32_t value);
bool RegWriteReal(RegistryRoot root, const std::wstring& key, const std::wstring& name, double value);
bool RegWriteText(RegistryRoot root, const std::wstring& key, const std::wstring& name,
                  const std::wstring& value);
bool RegWriteBlock(RegistryRoot root, const std::wstring& key, const std::wstring& name,
                   const std::vector<unsigned char>& block);

// The store of this system: the functions above with its key.
namespace SettingsStore {
inline std::uint32_t ReadInt(const std::wstring& name) {
    return RegReadInt(kCurrentUser, kSettingsKey, name);
}
inline double ReadReal(const std::wstring& name, double otherwise) {
    return RegReadReal(kCurrentUser, kSettingsKey, name, otherwise);
}
inline std::wstring ReadText(const std::wstring& name) {
    return RegReadText(kCurrentUser, kSettingsKey, name);
}
inline bool WriteInt(const std::wstring& name, std::uint32_t value) {
    return RegWriteInt(kCurrentUser, kSettingsKey, name, value);
}
inline bool WriteReal(const std::wstring& name, double value) {
    return RegWriteReal(kCurrentUser, kSettingsKey, name, value);
}
inline bool WriteText(const std::wstring& name, const std::wstring& value) {
    return RegWriteText(kCurrentUser, kSettingsKey, name, value);
}
} // namespace SettingsStore

} // namespace corvane
