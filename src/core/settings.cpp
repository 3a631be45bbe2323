// Typed values in the host's registry.
#include "core/settings.h"

#include <cstring>

#include "core/host/system.h"

namespace corvane {

std::uint32_t RegReadInt(RegistryRoot, const std::wstring& key, const std::wstring& name) {
    return host_door::registryNumber(key, name).value_or(0);
}

double RegReadReal(RegistryRoot, const std::wstring& key, const std::wstring& name, double otherwise) {
    const auto bytes = host_door::registryBytes(key, name);
    if (!bytes || bytes->size() != sizeof(double)) return otherwise;
    double value = 0;
    std::memcpy(&value, bytes->data(), sizeof value);
    return value;
}

std::wstring RegReadText(RegistryRoot, const std::wstring& key, const std::wstring& name) {
    const auto text = host_door::registryText(key, name);
    return text && (host::utf16Length(*text) + 1) * 2 <= kRegistryTextBytes ? *text : std::wstring();
}

bool RegReadBlock(RegistryRoot, const std::wstring& key, const std::wstring& name,
                  std::vector<unsigned char>& block) {
    auto bytes = host_door::registryBytes(key, name);
    if (!bytes || bytes->size() != kRegistryBlockSize) return false;
    block = std::move(*bytes);
    return true;
}

bool RegWriteInt(RegistryRoot, const std::wstring& key, const std::wstring& name, std::uint32_t value) {
    return host_door::setRegistry(key, name, value);
}

bool RegWriteReal(RegistryRoot, const std::wstring& key, const std::wstring& name, double value) {
    std::vector<unsigned char> bytes(sizeof value);
    std::memcpy(bytes.data(), &value, sizeof value);
    return host_door::setRegistry(key, name, bytes);
}

bool RegWriteText(RegistryRoot, const std::wstring& key, const std::wstring& name,
                  const std::wstring& value) {
    return host_door::setRegistry(key, name, value);
}

bool RegWriteBlock(RegistryRoot, const std::wstring& key, const std::wstring& name,
                   const std::vector<unsigned char>& block) {
    if (block.size() != kRegistryBlockSize || !host_door::registryHasKey(key)) return false;
    return host_door::setRegistry(key, name, block);
}

} // namespace corvane
