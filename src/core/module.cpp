// The module's one entry point and what it does on the host's messages.
#include "core/command_table.h"
#include "core/messages.h"
#include "core/module_parts.h"

#define CORVANE_EXPORT extern "C" __attribute__((visibility("default")))

namespace corvane {
namespace {

// The feature of link lines files its notify objects under this class; its behaviour comes with the feature.
constexpr wchar_t kLinkLineClass[] = L"CvLinkLineToNotify";

void load(void* package) {
    acrxDynamicLinker->unlockApplication(package);
    acrxDynamicLinker->registerAppMDIAware(package);
    RegisterCommands();
    if (!acrxFindAcRxClass(kLinkLineClass)) {
        newAcRxClass(kLinkLineClass, L"AcDbObject", 33, 427, 0, nullptr, nullptr, L"persreac");
        acrxBuildClassHierarchy();
    }
    LoadModuleParts();
    RegisterDemandLoad();
}

void unload() {
    UnloadModuleParts();
    if (auto* stack = static_cast<AcEdCommandStack*>(acrxSysRegistry()->at(ACAD_REGISTERED_COMMANDS)))
        stack->removeGroup(kCommandGroup);
    if (AcRxClass* cls = acrxFindAcRxClass(kLinkLineClass)) deleteAcRxClass(cls);
}

} // namespace
} // namespace corvane

CORVANE_EXPORT AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* package) {
    switch (message) {
    case AcRx::kInitAppMsg: corvane::load(package); break;
    case AcRx::kLoadDwgMsg: corvane::LoadMenuFile(); break;
    case AcRx::kUnloadAppMsg: corvane::unload(); break;
    default: break;
    }
    return AcRx::kRetOK;
}

CORVANE_EXPORT unsigned acrxGetApiVersion() { return kHostApiVersion; }

// For help and lists: the summary of a command in the active language, and whether it is built. False for
// commands of others.
CORVANE_EXPORT bool corvaneCommandNote(const wchar_t* globalName, std::wstring& summary, bool& built) {
    for (const corvane::CommandEntry& row : corvane::CommandTable()) {
        if (!host::equalNoCase(row.globalName, globalName)) continue;
        summary = corvane::Translate(row.summary).str();
        built = row.handler != nullptr;
        return true;
    }
    return false;
}
