// POSIX files: mapping, and replacing by rename.
#include "host/os/files.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <filesystem>
#include <pwd.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace host {
namespace {

FileError failed(const char* what, const std::string& path, int error = errno) {
    return {std::string("cannot ") + what + " \"" + path + "\": " + std::generic_category().message(error)};
}

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ > STDERR_FILENO) ::close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int operator*() const { return number_; }
    bool closeNow() { return ::close(std::exchange(number_, -1)) == 0; }

private:
    int number_;
};

bool readToEnd(int descriptor, std::string& out) {
    char buffer[1 << 16];
    while (true) {
        const ssize_t count = ::read(descriptor, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return count == 0;
        out.append(buffer, static_cast<std::size_t>(count));
    }
}

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

// Writing "through" a link must change the file it names, not replace the link.
std::string linkTarget(const std::string& path) {
    char resolved[PATH_MAX];
    return ::realpath(path.c_str(), resolved) ? resolved : path;
}

std::string folderOf(const std::string& path) {
    const std::size_t slash = path.find_last_of('/');
    return slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
}

FileError writeDirectly(const std::string& path, std::span<const std::string_view> chunks) {
    Descriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (*file < 0) return failed("write", path);
    for (std::string_view chunk : chunks)
        if (!writeAll(*file, chunk)) return failed("write", path);
    return file.closeNow() ? FileError{} : failed("write", path);
}

// A rename is only on the disk once its folder is.
void flushFolder(const std::string& folder) {
    const Descriptor handle(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (*handle >= 0) ::fsync(*handle);
}

mode_t newFileMode() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

FileError fillAndRename(Descriptor& file, const std::string& temporary, const std::string& target,
                        std::span<const std::string_view> chunks, mode_t mode) {
    for (std::string_view chunk : chunks)
        if (!writeAll(*file, chunk)) return failed("write", target);
    if (::fchmod(*file, mode) != 0) return failed("set the mode of", target);
    if (::fsync(*file) != 0 || !file.closeNow()) return failed("write", target);
    if (::rename(temporary.c_str(), target.c_str()) != 0) return failed("replace", target);
    return {};
}

} // namespace

MappedFile::MappedFile(MappedFile&& other) noexcept { *this = std::move(other); }

MappedFile& MappedFile::operator=(MappedFile&& other) noexcept {
    if (this == &other) return *this;
    close();
    mapped_ = std::exchange(other.mapped_, nullptr);
    size_ = std::exchange(other.size_, 0);
    read_ = std::move(other.read_);
    open_ = std::exchange(other.open_, false);
    return *this;
}

FileError MappedFile::open(const std::string& path) {
    close();
    const bool standardInput = path == "-";
    const Descriptor file(standardInput ? STDIN_FILENO : ::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (*file < 0) return failed("read", path);
    struct stat info {};
    if (::fstat(*file, &info) != 0) return failed("read", path);
    if (S_ISDIR(info.st_mode)) return failed("read", path, EISDIR);
    if (S_ISREG(info.st_mode) && info.st_size > 0 && !standardInput) {
        size_ = static_cast<std::size_t>(info.st_size);
        void* memory = ::mmap(nullptr, size_, PROT_READ, MAP_PRIVATE, *file, 0);
        if (memory == MAP_FAILED) return failed("map", path);
        mapped_ = static_cast<const char*>(memory);
    } else if (!readToEnd(*file, read_)) {
        return failed("read", path);
    }
    open_ = true;
    return {};
}

void MappedFile::close() {
    if (mapped_) ::munmap(const_cast<char*>(mapped_), size_);
    mapped_ = nullptr;
    size_ = 0;
    read_.clear();
    open_ = false;
}

FileError writeWhole(const std::string& path, std::span<const std::string_view> chunks) {
    const std::string target = linkTarget(path);
    struct stat old {};
    const bool exists = ::stat(target.c_str(), &old) == 0;
    if (exists && S_ISDIR(old.st_mode)) return failed("write", path, EISDIR);
    if (exists && !S_ISREG(old.st_mode)) return writeDirectly(target, chunks);
    if (exists && ::access(target.c_str(), W_OK) != 0) return failed("write", path);
    std::string temporary = folderOf(target) + "/.corvane-XXXXXX";
    Descriptor file(::mkostemp(temporary.data(), O_CLOEXEC));
    if (*file < 0) return failed("write", path);
    FileError error =
        fillAndRename(file, temporary, target, chunks, exists ? old.st_mode & 07777 : newFileMode());
    if (error)
        ::unlink(temporary.c_str());
    else
        flushFolder(folderOf(target));
    return error;
}

FileError writeWhole(const std::string& path, std::string_view bytes) {
    return writeWhole(path, std::span<const std::string_view>(&bytes, 1));
}

FileError readWhole(const std::string& path, std::string& bytes) {
    MappedFile file;
    FileError error = file.open(path);
    if (!error) bytes = file.bytes();
    return error;
}

bool fileExists(const std::string& path) { return ::access(path.c_str(), F_OK) == 0; }

FileError makeFolders(const std::string& path) {
    std::error_code error;
    std::filesystem::create_directories(path, error);
    return error ? FileError{"cannot make the folder \"" + path + "\": " + error.message()} : FileError{};
}

std::string programFolder() {
    char path[PATH_MAX];
    const ssize_t length = ::readlink("/proc/self/exe", path, sizeof path);
    return length > 0 ? folderOf(std::string(path, static_cast<std::size_t>(length))) : ".";
}

std::string moduleFolder(const void* addressInModule) {
    Dl_info info{};
    if (!::dladdr(addressInModule, &info) || !info.dli_fname) return programFolder();
    const std::string path = info.dli_fname;
    return path.find('/') == std::string::npos ? programFolder() : folderOf(linkTarget(path));
}

std::string configurationFolder() {
    if (const char* own = std::getenv("CORVANE_HOME"); own && *own) return own;
    if (const char* shared = std::getenv("XDG_CONFIG_HOME"); shared && *shared)
        return std::string(shared) + "/corvane";
    const char* home = std::getenv("HOME");
    if (!home || !*home)
        if (const passwd* user = ::getpwuid(::getuid())) home = user->pw_dir;
    return std::string(home && *home ? home : ".") + "/.config/corvane";
}

} // namespace host
