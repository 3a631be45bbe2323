// The answers of a run.
#include "apps/corvane/script_source.h"

#include <algorithm>

#include "apps/corvane/report.h"
#include "host/os/files.h"
#include "host/os/text.h"

namespace app {
namespace {

std::optional<ScriptSource> readFile(const std::string& path, const std::string& name) {
    host::MappedFile file;
    if (const host::FileError error = file.open(path)) return complain(error.message), std::nullopt;
    if (!host::isUtf8(file.bytes())) {
        complain(name + ": this is not text in UTF-8; save the script as UTF-8");
        return std::nullopt;
    }
    ScriptSource source;
    source.name = name;
    source.text = host::wide(file.bytes());
    if (!source.text.empty() && source.text.back() != L'\n') source.text += L'\n';
    source.fileLines = int(std::count(source.text.begin(), source.text.end(), L'\n'));
    return source;
}

} // namespace

std::string ScriptSource::place(int line) const {
    if (line <= fileLines) return name + ", line " + std::to_string(line);
    return "-c number " + std::to_string(line - fileLines);
}

std::string ScriptSource::whole() const { return name.empty() ? "the -c lines" : name; }

std::optional<ScriptSource> readScript(const Arguments& arguments) {
    ScriptSource source;
    if (arguments.positional().size() > 1) {
        const std::string& path = arguments.positional()[1];
        auto file = readFile(path, path);
        if (!file) return std::nullopt;
        source = std::move(*file);
    }
    for (const std::string& line : arguments.values("--command")) {
        std::wstring text = host::wide(line);
        std::replace(text.begin(), text.end(), L'\n', L' ');
        source.text += text + L'\n';
    }
    return source;
}

std::optional<ScriptSource> readStandardInput() { return readFile("-", "standard input"); }

} // namespace app
