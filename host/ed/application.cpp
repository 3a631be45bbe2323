// Loading modules, and the record of what to load on demand.
#include "host/ed/application.h"

#include <dlfcn.h>

#include <algorithm>

#include "host/ed/document.h"
#include "host/ed/editor.h"
#include "host/os/files.h"
#include "host/os/locale.h"
#include "host/os/registry.h"
#include "host/os/text.h"

HOST_DEFINE_ABSTRACT_CLASS(AcRxDynamicLinker, AcRxObject)

namespace {

constexpr wchar_t kApplicationsKey[] = L"Software\\Host\\Applications\\";
constexpr int kMajorRelease = 25;
std::wstring runningModule; // the path of the module that is being told something

std::wstring reasonText(const char* what) { return host::wide(what ? what : "unknown reason"); }

} // namespace

bool AcRxDynamicLinker::loadModule(const ACHAR* path, bool printing, bool) {
    const auto present =
        std::find_if(modules_.begin(), modules_.end(), [&](const Module& m) { return m.path == path; });
    if (present != modules_.end() && present->active) return true;
    Module module{path, dlopen(host::utf8(path).c_str(), RTLD_NOW | RTLD_LOCAL), nullptr, true, false};
    const auto fail = [&](const std::wstring& why) {
        why_ = L"The module " + std::wstring(path) + L" can't be loaded: " + why;
        if (printing) acedPrompt((L"\n" + why_).c_str());
        return false;
    };
    if (!module.handle) return fail(reasonText(dlerror()));
    const auto version = reinterpret_cast<unsigned (*)()>(dlsym(module.handle, "acrxGetApiVersion"));
    module.entry = reinterpret_cast<decltype(module.entry)>(dlsym(module.handle, "acrxEntryPoint"));
    if (!version || !module.entry) return fail(L"it has no entry point acrxEntryPoint");
    if (version() != kHostApiVersion) return fail(L"it was built for another version of the host");
    if (present == modules_.end())
        modules_.push_back(module);
    else
        *present = module;
    runningModule = path;
    if (modules_.back().entry(AcRx::kInitAppMsg, module.handle) != AcRx::kRetOK)
        return fail(L"it answered with an error");
    for (Module& m : modules_)
        if (m.path == path) m.active = true;
    const std::unique_ptr<AcApDocumentIterator> documents(acDocManagerPtr()->newAcApDocumentIterator());
    for (; !documents->done(); documents->step()) module.entry(AcRx::kLoadDwgMsg, module.handle);
    return true;
}

bool AcRxDynamicLinker::unloadModule(const ACHAR* path, bool) {
    for (Module& module : modules_) {
        if (module.path != path || !module.active || module.locked) continue;
        runningModule = module.path;
        module.entry(AcRx::kUnloadAppMsg, module.handle);
        module.active = false;
        module.locked = true;
        return true;
    }
    return false;
}

bool AcRxDynamicLinker::isApplicationLocked(const ACHAR* name) const {
    return std::any_of(modules_.begin(), modules_.end(),
                       [&](const Module& m) { return m.active && m.locked && m.path == name; });
}
void AcRxDynamicLinker::unlockApplication(void* package) {
    for (Module& module : modules_)
        if (module.handle == package) module.locked = false;
}
void AcRxDynamicLinker::registerAppMDIAware(void*) {}

void AcRxDynamicLinker::broadcast(AcRx::AppMsgCode message) {
    for (size_t i = 0; i < modules_.size(); ++i) {
        if (!modules_[i].active) continue;
        runningModule = modules_[i].path;
        modules_[i].entry(message, modules_[i].handle);
    }
}

std::vector<std::wstring> AcRxDynamicLinker::loaded() const {
    std::vector<std::wstring> paths;
    for (const Module& module : modules_)
        if (module.active) paths.push_back(module.path);
    return paths;
}

void* AcRxDynamicLinker::symbol(const char* name) const {
    for (const Module& module : modules_)
        if (void* found = module.active ? dlsym(module.handle, name) : nullptr) return found;
    return nullptr;
}

AcRxDynamicLinker* acrxDynamicLinkerPtr() {
    static AcRxDynamicLinker linker;
    return &linker;
}

const ACHAR* acedGetAppName() { return runningModule.c_str(); }

AcadAppInfo::AppStatus AcadAppInfo::writeToRegistry(bool, bool) {
    const std::wstring key = kApplicationsKey + name_;
    host::Registry& registry = host::userRegistry();
    const auto put = [&](const wchar_t* name, host::RegistryValue value, auto current) {
        return current == value || registry.set(key, name, std::move(value)).empty();
    };
    const auto asValue = [](auto read) {
        return read ? host::RegistryValue(*read) : host::RegistryValue(host::RegistryBytes());
    };
    const bool written =
        put(L"LOADER", module_, asValue(registry.text(key, L"LOADER"))) &&
        put(L"DESCRIPTION", description_, asValue(registry.text(key, L"DESCRIPTION"))) &&
        put(L"LOADCTRLS", std::uint32_t(reasons_), asValue(registry.number(key, L"LOADCTRLS")));
    return written ? eOk : eError;
}

namespace {
// Writes only what differs, so that a start that changes nothing touches no file.
bool putText(const std::wstring& key, const std::wstring& name, const std::wstring& value) {
    host::Registry& registry = host::userRegistry();
    const auto present = registry.text(key, name);
    return (present && *present == value) || registry.set(key, name, value).empty();
}
} // namespace

AcadAppInfo::AppStatus AcadAppInfo::writeGroupNameToRegistry(const ACHAR* group) {
    return putText(kApplicationsKey + name_ + L"\\Groups", group, group) ? eOk : eError;
}
AcadAppInfo::AppStatus AcadAppInfo::writeCommandNameToRegistry(const ACHAR* global, const ACHAR* local) {
    return putText(kApplicationsKey + name_ + L"\\Commands", local, global) ? eOk : eError;
}

namespace host {

std::wstring demandLoadModule(const std::wstring& command) {
    Registry& registry = userRegistry();
    for (const std::wstring& application : registry.subkeys(kApplicationsKey)) {
        const std::wstring key = kApplicationsKey + application;
        bool offers = registry.text(key + L"\\Commands", command).has_value();
        for (const std::wstring& local : registry.names(key + L"\\Commands"))
            offers |= equalNoCase(registry.text(key + L"\\Commands", local).value_or(L""), command);
        if (offers) return registry.text(key, L"LOADER").value_or(L"");
    }
    return {};
}

} // namespace host

AcLocale acrxProductLocale() {
    const std::wstring tag = host::wide(host::languageTag());
    const size_t dash = tag.find(L'-');
    return AcLocale(tag.substr(0, dash),
                    dash == tag.npos ? std::wstring() : host::upper(tag.substr(dash + 1)));
}
int acdbHostMajorRelease() { return kMajorRelease; }
