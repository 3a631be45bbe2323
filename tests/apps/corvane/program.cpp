// Running the built program.
#include "tests/apps/corvane/program.h"

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

namespace fs = std::filesystem;

namespace apptest {
namespace {

std::string contents(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

} // namespace

Workplace::Workplace() {
    std::string name = (fs::temp_directory_path() / "corvane-app-XXXXXX").string();
    folder_ = mkdtemp(name.data());
    fs::create_directory(path());
}
Workplace::~Workplace() { fs::remove_all(folder_); }

std::string Workplace::command(const std::string& words) const {
    std::string replaced = words;
    for (size_t at; (at = replaced.find("DATA/")) != replaced.npos;)
        replaced.replace(at, 5, CORVANE_TEST_DATA "/drawings/");
    return "cd " + path().string() +
           " && exec env LC_ALL=C.UTF-8 TERM=dumb CORVANE_HOME=" + (folder_ / "home").string() +
           " CORVANE_CLOCK=1000000000 " CORVANE_PROGRAM " " + replaced;
}

Outcome Workplace::run(const std::string& words, const std::string& input) const {
    std::ofstream(folder_ / "in", std::ios::binary) << input;
    const std::string in = (folder_ / "in").string(), out = (folder_ / "out").string(),
                      errors = (folder_ / "errors").string();
    const int status = std::system((command(words) + " <" + in + " >" + out + " 2>" + errors).c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), contents(out), contents(errors)};
}

void Workplace::write(const std::string& name, const std::string& text) const {
    std::ofstream(path() / name, std::ios::binary) << text;
}
std::string Workplace::read(const std::string& name) const { return contents(path() / name); }

std::vector<std::string> Workplace::files() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(path()))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace apptest
