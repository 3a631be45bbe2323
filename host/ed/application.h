// Modules: loading a library through its entry point, the messages it gets, and the record by
// which it is loaded on demand.
#pragma once
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "host/db/rx.h"

namespace AcRx {
enum AppMsgCode {
    kNullMsg = 0,
    kInitAppMsg = 1,
    kUnloadAppMsg = 2,
    kLoadDwgMsg = 3,
    kUnloadDwgMsg = 4,
    kInvkSubrMsg = 5,
    kCfgMsg = 6,
    kEndMsg = 7,
    kQuitMsg = 8,
    kSaveMsg = 9,
    kDependencyMsg = 10,
    kNoDependencyMsg = 11,
    kOleUnloadAppMsg = 12,
    kPreQuitMsg = 13,
    kInitDialogMsg = 14,
    kEndDialogMsg = 15
};
enum AppRetCode { kRetOK = 0, kRetError = 3 };
} // namespace AcRx
inline constexpr unsigned kHostApiVersion = 1; // what acrxGetApiVersion of a module must give

class AcRxDynamicLinker : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcRxDynamicLinker)
public:
    // Loads a library and sends it kInitAppMsg, then kLoadDwgMsg for every open drawing. False when it can't
    // be loaded, was built for another host or answers with an error; why() tells.
    bool loadModule(const ACHAR* path, bool printing = true, bool asCommand = false);
    // Sends kUnloadAppMsg when the module is unlocked. The library's code stays mapped.
    bool unloadModule(const ACHAR* path, bool asCommand = false);
    bool isApplicationLocked(const ACHAR* name) const;
    void unlockApplication(void* package);
    void registerAppMDIAware(void* package);
    const std::wstring& why() const { return why_; }
    // To all loaded modules, in the order of loading.
    void broadcast(AcRx::AppMsgCode message);
    std::vector<std::wstring> loaded() const;
    // An exported symbol of the first loaded module that has it, or null.
    void* symbol(const char* name) const;

private:
    struct Module {
        std::wstring path;
        void* handle = nullptr;
        AcRx::AppRetCode (*entry)(AcRx::AppMsgCode, void*) = nullptr;
        bool locked = true, active = false;
    };
    std::vector<Module> modules_;
    std::wstring why_;
};
AcRxDynamicLinker* acrxDynamicLinkerPtr();
#define acrxDynamicLinker acrxDynamicLinkerPtr()

// The demand-load record of an application, kept in the host's registry.
class AcadAppInfo {
public:
    enum AppStatus { eOk = 0, eError = 1 };
    void setAppName(const ACHAR* name) { name_ = name; }
    void setModuleName(const ACHAR* path) { module_ = path; }
    void setAppDesc(const ACHAR* text) { description_ = text; }
    void setLoadReason(int reasons) { reasons_ = reasons; }
    AppStatus writeToRegistry(bool overwrite = true, bool underUser = true);
    AppStatus writeGroupNameToRegistry(const ACHAR* group);
    AppStatus writeCommandNameToRegistry(const ACHAR* global, const ACHAR* local);

private:
    std::wstring name_, module_, description_;
    int reasons_ = 0;
};

namespace host {
// The recorded application that offers this command, by global or local name: its module's path, or empty.
std::wstring demandLoadModule(const std::wstring& command);
} // namespace host

// The locale of the product: ISO names of language and country, and the numeric language id (0 when unknown).
class AcLocale {
public:
    AcLocale(std::wstring language = {}, std::wstring country = {}, int id = 0)
        : language_(std::move(language)), country_(std::move(country)), id_(id) {}
    const ACHAR* iso2LangName() const { return language_.c_str(); }
    const ACHAR* iso2CountryName() const { return country_.c_str(); }
    operator int() const { return id_; }

private:
    std::wstring language_, country_;
    int id_;
};
AcLocale acrxProductLocale();
// The host's major release number (25 here).
int acdbHostMajorRelease();
