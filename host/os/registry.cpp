// Reading and writing the settings file:
//     [Software\Brinkhaven\Corvane]
//     blur = 5
//     name = "text with \n, \" and \\"
//     radius = hex:0000000000001440
// Trailing zero bytes of long blocks are left out and counted: hex(262144):01ff.
#include "host/os/registry.h"

#include "host/os/files.h"

#include <fcntl.h>
#include <memory>
#include <sys/file.h>
#include <unistd.h>

namespace host {
namespace {

constexpr std::size_t kMostBytes = std::size_t(1) << 24; // a block larger than this is damage, not data

// Held while the file is re-read and replaced. The lock file stays: removing it would let a third
// program lock another file of the same name.
class FileLock {
public:
    explicit FileLock(const std::string& path)
        : file_(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
        if (file_ >= 0) ::flock(file_, LOCK_EX);
    }
    ~FileLock() {
        if (file_ >= 0) ::close(file_);
    }
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

private:
    int file_;
};

std::wstring unquoted(std::string_view quoted) {
    std::string out;
    for (std::size_t i = 1; i + 1 < quoted.size(); ++i) {
        if (quoted[i] != '\\') {
            out += quoted[i];
            continue;
        }
        const char c = quoted[++i];
        out += c == 'n' ? '\n' : c == 'r' ? '\r' : c == 't' ? '\t' : c;
    }
    return wide(out);
}

std::string quoted(std::wstring_view text) {
    std::string out = "\"";
    for (char c : utf8(text)) {
        switch (c) {
        case '\n': out += "\\n"; break;
        case '\r': out += "\\r"; break;
        case '\t': out += "\\t"; break;
        case '\\':
        case '"': out += '\\'; [[fallthrough]];
        default: out += c;
        }
    }
    return out += '"';
}

int nibble(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

std::optional<RegistryBytes> parseHex(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos) return std::nullopt;
    const std::string_view digits = text.substr(colon + 1);
    std::size_t size = digits.size() / 2;
    if (text.size() > 3 && text[3] == '(') {
        const auto stated = parseInteger(text.substr(4, text.find(')') - 4));
        if (!stated || *stated < 0 || static_cast<std::size_t>(*stated) > kMostBytes) return std::nullopt;
        size = static_cast<std::size_t>(*stated);
    }
    if (digits.size() % 2 != 0 || digits.size() / 2 > size) return std::nullopt;
    RegistryBytes bytes(size, 0);
    for (std::size_t i = 0; i < digits.size() / 2; ++i) {
        const int high = nibble(digits[2 * i]), low = nibble(digits[2 * i + 1]);
        if (high < 0 || low < 0) return std::nullopt;
        bytes[i] = static_cast<unsigned char>(high << 4 | low);
    }
    return bytes;
}

std::string hexText(const RegistryBytes& bytes) {
    std::size_t used = bytes.size();
    while (used > 0 && bytes[used - 1] == 0) --used;
    const bool shortened = bytes.size() - used > 16;
    if (!shortened) used = bytes.size();
    std::string out = shortened ? "hex(" + std::to_string(bytes.size()) + "):" : "hex:";
    constexpr const char* digits = "0123456789abcdef";
    for (std::size_t i = 0; i < used; ++i) {
        out += digits[bytes[i] >> 4];
        out += digits[bytes[i] & 15];
    }
    return out;
}

std::optional<RegistryValue> parseValue(std::string_view text) {
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') return unquoted(text);
    if (text.starts_with("hex")) {
        if (auto bytes = parseHex(text)) return std::move(*bytes);
        return std::nullopt;
    }
    const auto number = parseInteger(text);
    if (!number || *number < 0 || *number > 0xFFFFFFFFLL) return std::nullopt;
    return static_cast<std::uint32_t>(*number);
}

std::string valueText(const RegistryValue& value) {
    if (const auto* number = std::get_if<std::uint32_t>(&value)) return std::to_string(*number);
    if (const auto* text = std::get_if<std::wstring>(&value)) return quoted(*text);
    return hexText(std::get<RegistryBytes>(value));
}

// Names may hold anything; the signs that have a meaning in the file are written as escapes.
std::string nameText(std::wstring_view name) {
    const bool plain = !name.empty() && name.find_first_of(L"=\"[;#\r\n\t") == std::wstring_view::npos &&
                       trimmed(name).size() == name.size();
    return plain ? utf8(name) : quoted(name);
}

std::size_t assignment(std::string_view line) {
    if (line.front() != '"') return line.find('=');
    std::size_t i = 1;
    for (; i < line.size() && line[i] != '"'; ++i)
        if (line[i] == '\\') ++i;
    return i < line.size() ? line.find('=', i) : std::string_view::npos;
}

template <class T> std::optional<T> as(const RegistryValue* value) {
    if (const T* held = value ? std::get_if<T>(value) : nullptr) return *held;
    return std::nullopt;
}

std::string parentFolder(const std::string& path) {
    const std::size_t slash = path.find_last_of('/');
    return slash == std::string::npos ? "." : path.substr(0, slash);
}

} // namespace

Registry::Keys Registry::parse(std::string_view file) {
    Keys keys;
    Values* section = nullptr;
    if (file.starts_with("\xEF\xBB\xBF")) file.remove_prefix(3);
    while (!file.empty()) {
        const std::size_t end = std::min(file.find('\n'), file.size());
        const std::string_view line = trimmed(file.substr(0, end));
        file.remove_prefix(std::min(end + 1, file.size()));
        if (line.empty() || line.front() == ';' || line.front() == '#') continue;
        if (line.front() == '[' && line.back() == ']') {
            section = &keys[wide(line.substr(1, line.size() - 2))];
            continue;
        }
        const std::size_t equals = assignment(line);
        if (!section || equals == std::string_view::npos) continue;
        const std::string_view name = trimmed(line.substr(0, equals));
        if (auto value = parseValue(trimmed(line.substr(equals + 1))))
            section->insert_or_assign(name.starts_with('"') ? unquoted(name) : wide(name), std::move(*value));
    }
    return keys;
}

std::string Registry::written(const Keys& keys) {
    std::string out;
    for (const auto& [key, values] : keys) {
        if (!out.empty()) out += '\n';
        out += '[';
        out += utf8(key);
        out += "]\n";
        for (const auto& [name, value] : values)
            out += nameText(name).append(" = ") + valueText(value) + '\n';
    }
    return out;
}

void Registry::enact(Keys& keys, const Change& change) {
    if (change.value) {
        keys[change.key].insert_or_assign(change.name, *change.value);
    } else if (!change.name.empty()) {
        if (const auto key = keys.find(change.key); key != keys.end()) key->second.erase(change.name);
    } else {
        const std::wstring below = change.key + L'\\';
        std::erase_if(keys, [&](const auto& entry) {
            return equalNoCase(entry.first, change.key) ||
                   equalNoCase(std::wstring_view(entry.first).substr(0, below.size()), below);
        });
    }
}

std::string Registry::load() {
    if (loaded_) return {};
    loaded_ = true;
    std::string file;
    keys_.clear();
    const FileError error = readWhole(path_, file);
    if (!error) keys_ = parse(file);
    for (const Change& change : pending_) enact(keys_, change);
    return error && fileExists(path_) ? error.message : std::string();
}

const RegistryValue* Registry::find(std::wstring_view key, std::wstring_view name) {
    load();
    const auto values = keys_.find(key);
    if (values == keys_.end()) return nullptr;
    const auto value = values->second.find(name);
    return value == values->second.end() ? nullptr : &value->second;
}

std::optional<std::uint32_t> Registry::number(std::wstring_view key, std::wstring_view name) {
    return as<std::uint32_t>(find(key, name));
}
std::optional<std::wstring> Registry::text(std::wstring_view key, std::wstring_view name) {
    return as<std::wstring>(find(key, name));
}
std::optional<RegistryBytes> Registry::bytes(std::wstring_view key, std::wstring_view name) {
    return as<RegistryBytes>(find(key, name));
}

bool Registry::hasKey(std::wstring_view key) {
    load();
    return keys_.find(key) != keys_.end();
}

std::vector<std::wstring> Registry::subkeys(std::wstring_view key) {
    load();
    while (key.ends_with(L'\\')) key.remove_suffix(1);
    std::vector<std::wstring> below;
    for (const auto& [name, values] : keys_) {
        if (name.size() <= key.size() + 1 || name[key.size()] != L'\\' ||
            !equalNoCase(name.substr(0, key.size()), key))
            continue;
        std::wstring sub = name.substr(key.size() + 1);
        sub.resize(std::min(sub.find(L'\\'), sub.size()));
        if (below.empty() || !equalNoCase(below.back(), sub)) below.push_back(std::move(sub));
    }
    return below;
}

std::vector<std::wstring> Registry::names(std::wstring_view key) {
    load();
    std::vector<std::wstring> all;
    if (const auto values = keys_.find(key); values != keys_.end())
        for (const auto& [name, value] : values->second) all.push_back(name);
    return all;
}

std::string Registry::apply(Change change) {
    load();
    enact(keys_, change);
    pending_.push_back(std::move(change));
    return batches_ > 0 ? std::string() : save();
}

std::string Registry::set(std::wstring_view key, std::wstring_view name, RegistryValue value) {
    return apply({std::wstring(key), std::wstring(name), std::move(value)});
}

std::string Registry::remove(std::wstring_view key, std::wstring_view name) {
    return name.empty() ? std::string() : apply({std::wstring(key), std::wstring(name), std::nullopt});
}

std::string Registry::removeKey(std::wstring_view key) {
    return apply({std::wstring(key), {}, std::nullopt});
}

std::string Registry::endBatch() {
    if (batches_ > 0) --batches_;
    return batches_ > 0 || pending_.empty() ? std::string() : save();
}

std::string Registry::save() {
    if (FileError error = makeFolders(parentFolder(path_))) return error.message;
    const FileLock lock(path_ + ".lock");
    loaded_ = false;
    // What others wrote meanwhile, with our changes on top. What can't be read must not be replaced.
    if (std::string error = load(); !error.empty()) return error;
    if (FileError error = writeWhole(path_, written(keys_))) return error.message;
    pending_.clear();
    return {};
}

namespace {

std::unique_ptr<Registry>& userSlot() {
    static std::unique_ptr<Registry> slot;
    return slot;
}

} // namespace

Registry& userRegistry() {
    if (!userSlot()) setUserRegistry(configurationFolder() + "/settings.ini");
    return *userSlot();
}

void setUserRegistry(const std::string& path) { userSlot() = std::make_unique<Registry>(path); }

} // namespace host
