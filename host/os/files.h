// Files read by mapping and written whole or not at all, and the folders the programs live in. Paths
// are UTF-8 as the system takes them.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace host {

// What went wrong, with the path and the system's own words; empty when all went well.
struct FileError {
    std::string message;
    explicit operator bool() const { return !message.empty(); }
};

// A file's bytes for reading, mapped; unmapped on destruction. What is no regular file (a pipe, say) is
// read to its end instead. The bytes stay valid as long as the object; another program's cutting the
// file short while it is mapped ends in the system's bus error, so keep it no longer than needed.
class MappedFile {
public:
    MappedFile() = default;
    explicit MappedFile(const std::string& path) { open(path); }
    ~MappedFile() { close(); }
    MappedFile(MappedFile&& other) noexcept;
    MappedFile& operator=(MappedFile&& other) noexcept;

    FileError open(const std::string& path); // "-" is standard input
    void close();

    bool isOpen() const { return open_; }
    std::string_view bytes() const {
        return mapped_ ? std::string_view(mapped_, size_) : std::string_view(read_);
    }

private:
    const char* mapped_ = nullptr;
    std::size_t size_ = 0;
    std::string read_;
    bool open_ = false;
};

// Writes the chunks, one after the other, as the file's whole contents: to a temporary file in the same
// folder, flushed to the disk, then renamed over the old one, whose mode bits it keeps. At any moment
// either the old or the new contents stand under the name. A link is followed; "/dev/..." and pipes are
// written directly.
FileError writeWhole(const std::string& path, std::span<const std::string_view> chunks);
FileError writeWhole(const std::string& path, std::string_view bytes);

FileError readWhole(const std::string& path, std::string& bytes);

bool fileExists(const std::string& path); // a file or folder one may look at

// Makes the folder and those above it.
FileError makeFolders(const std::string& path);

std::string programFolder();                           // of the running program, no trailing separator
std::string moduleFolder(const void* addressInModule); // of the loaded library that holds the address

// CORVANE_HOME, else XDG_CONFIG_HOME/corvane, else ~/.config/corvane; not made here.
std::string configurationFolder();

} // namespace host
