// Modules' resource folders, read once each.
#include "host/ui/resources.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>

#include "host/os/files.h"
#include "host/os/text.h"

namespace host {
namespace {

constexpr int kFoldersUp = 6;

struct Module {
    std::string folder;
    bool read = false;
    std::map<UINT, DialogTemplate> dialogs;
    std::map<UINT, std::string> dialogFiles;
    std::vector<FileResource> files; // with whole paths
    std::vector<std::string> errors;
};
std::vector<std::unique_ptr<Module>>& modules() {
    static std::vector<std::unique_ptr<Module>> all;
    return all;
}
Module* moduleOf(HINSTANCE handle) {
    const auto number = reinterpret_cast<std::uintptr_t>(handle);
    return number > 0 && number <= modules().size() ? modules()[number - 1].get() : nullptr;
}

std::string withoutEnd(std::string folder) {
    while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
    return folder;
}
// Where the templates lie: in the folder itself, or in the source tree that it was built in.
std::string dialogFolder(const std::string& module) {
    std::filesystem::path folder = withoutEnd(module);
    for (int up = 0; up <= kFoldersUp; ++up) {
        for (const char* below : {"dialogs", "resources/dialogs"})
            if (fileExists((folder / below).string())) return (folder / below).string();
        if (!folder.has_parent_path() || folder == folder.parent_path()) break;
        folder = folder.parent_path();
    }
    return {};
}

void readScript(Module& module, const std::string& path) {
    std::string bytes;
    if (const FileError error = readWhole(path, bytes)) {
        module.errors.push_back(error.message);
        return;
    }
    ResourceScript script = parseResourceScript(bytes);
    for (const std::string& error : script.errors) module.errors.push_back(path + ", " + error);
    for (DialogTemplate& dialog : script.dialogs) {
        const UINT id = dialog.id;
        if (!module.dialogs.emplace(id, std::move(dialog)).second)
            module.errors.push_back(path + ": dialog " + std::to_string(id) + " stands in " +
                                    module.dialogFiles[id] + " too");
        else
            module.dialogFiles[id] = path;
    }
    const std::string folder = path.substr(0, path.rfind('/') + 1);
    for (FileResource& file : script.files) {
        std::replace(file.file.begin(), file.file.end(), '\\', '/');
        if (!file.file.starts_with('/')) file.file = folder + file.file;
        module.files.push_back(std::move(file));
    }
}

void read(Module& module) {
    if (module.read) return;
    module.read = true;
    const std::string folder = dialogFolder(module.folder);
    std::vector<std::string> paths;
    std::error_code error;
    if (!folder.empty())
        for (const auto& entry : std::filesystem::directory_iterator(folder, error))
            if (entry.path().extension() == ".rc") paths.push_back(entry.path().string());
    std::sort(paths.begin(), paths.end());
    for (const std::string& path : paths) readScript(module, path);
}

HINSTANCE inUse = nullptr;

} // namespace

HINSTANCE resourceModule(const std::string& folder) {
    const std::string wanted = withoutEnd(folder);
    for (std::size_t i = 0; i < modules().size(); ++i)
        if (modules()[i]->folder == wanted) return reinterpret_cast<HINSTANCE>(i + 1);
    modules().push_back(std::make_unique<Module>());
    modules().back()->folder = wanted;
    return reinterpret_cast<HINSTANCE>(modules().size());
}

const DialogTemplate* dialogTemplate(HINSTANCE handle, UINT id, std::string& error) {
    Module* module = moduleOf(handle);
    error = "there is no template of dialog " + std::to_string(id);
    if (!module) return nullptr;
    read(*module);
    const auto found = module->dialogs.find(id);
    if (found != module->dialogs.end()) return error.clear(), &found->second;
    for (const std::string& complaint : module->errors) error += "; " + complaint;
    return nullptr;
}

ResourceBytes resourceBytes(HINSTANCE handle, UINT id, const std::wstring& type) {
    ResourceBytes result;
    if (Module* module = moduleOf(handle)) {
        read(*module);
        for (const FileResource& file : module->files) {
            if (file.id != id || !equalNoCase(file.type, type)) continue;
            result.error = readWhole(file.file, result.bytes).message;
            return result;
        }
    }
    result.error = "there is no " + utf8(type) + " resource " + std::to_string(id);
    return result;
}

const std::vector<std::string>& resourceErrors(HINSTANCE handle) {
    static const std::vector<std::string> none;
    Module* module = moduleOf(handle);
    if (module) read(*module);
    return module ? module->errors : none;
}

} // namespace host

HINSTANCE AfxGetResourceHandle() {
    static const HINSTANCE own = host::resourceModule(host::moduleFolder(&host::inUse));
    return host::inUse ? host::inUse : own;
}
void AfxSetResourceHandle(HINSTANCE module) { host::inUse = module; }
