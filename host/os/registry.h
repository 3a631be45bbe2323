// The host's registry: values under key paths, kept in one readable file of the user's configuration
// folder ("settings.ini", UTF-8). Writing re-reads the file under a lock and changes only what was
// set here, so two programs at once lose nothing; the file is replaced atomically.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "host/os/text.h"

namespace host {

using RegistryBytes = std::vector<unsigned char>;

// One value: a whole number of 32 bits, text, or plain bytes.
using RegistryValue = std::variant<std::uint32_t, std::wstring, RegistryBytes>;

class Registry {
public:
    // `path` is the file; it need not exist yet.
    explicit Registry(std::string path) : path_(std::move(path)) {}

    // Keys are written with backslashes ("Software\\Brinkhaven\\Corvane"); keys and names are found without
    // regard to case. A value of another kind reads as nothing.
    std::optional<std::uint32_t> number(std::wstring_view key, std::wstring_view name);
    std::optional<std::wstring> text(std::wstring_view key, std::wstring_view name);
    std::optional<RegistryBytes> bytes(std::wstring_view key, std::wstring_view name);
    bool hasKey(std::wstring_view key);
    // The keys right below one, and the names of a key's values, in order without regard to case.
    std::vector<std::wstring> subkeys(std::wstring_view key);
    std::vector<std::wstring> names(std::wstring_view key);

    // Written at once; the error says why the file could not be. Between begin and end of a batch
    // nothing is written until the last end.
    std::string set(std::wstring_view key, std::wstring_view name, RegistryValue value);
    std::string remove(std::wstring_view key, std::wstring_view name);
    std::string removeKey(std::wstring_view key); // with the keys below it
    void beginBatch() { ++batches_; }
    std::string endBatch();

    // Forgets what was read, so that another program's changes are seen.
    void refresh() { loaded_ = false; }

private:
    using Values = std::map<std::wstring, RegistryValue, LessNoCase>;
    using Keys = std::map<std::wstring, Values, LessNoCase>;
    struct Change {
        std::wstring key, name; // an empty name stands for the whole key
        std::optional<RegistryValue> value;
    };

    const RegistryValue* find(std::wstring_view key, std::wstring_view name);
    std::string apply(Change change);
    std::string save();
    std::string load(); // why the file, being there, could not be read
    static void enact(Keys& keys, const Change& change);
    static Keys parse(std::string_view file);
    static std::string written(const Keys& keys);

    std::string path_;
    Keys keys_;
    std::vector<Change> pending_;
    int batches_ = 0;
    bool loaded_ = false;
};

// The user's registry, in the configuration folder as it was at the first call.
Registry& userRegistry();

// Puts another file in the place of the user's, for tests.
void setUserRegistry(const std::string& path);

} // namespace host
