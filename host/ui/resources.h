// What lies beside a module: dialog templates (dialogs/*.rc) and the pictures they name. A module is known by
// its folder; the one in use is switched as at the host.
#pragma once

#include <string>
#include <vector>

#include "host/ui/template.h"

namespace host {

// The handle of the module whose resources lie in the folder, or in "resources" below it or below one of the
// six folders above; the same folder gives the same handle. Nothing is read before it is asked for.
HINSTANCE resourceModule(const std::string& folder);

// The template of a dialog; null when there is none, and `error` tells why: no file has it, or it is broken.
const DialogTemplate* dialogTemplate(HINSTANCE module, UINT id, std::string& error);
// The bytes of a resource that a line `ID TYPE "file"` of a template file names; nothing when there is none.
struct ResourceBytes {
    std::string bytes, error;
    explicit operator bool() const { return error.empty(); }
};
ResourceBytes resourceBytes(HINSTANCE module, UINT id, const std::wstring& type);
// Complaints about the module's template files: path, line, reason.
const std::vector<std::string>& resourceErrors(HINSTANCE module);

} // namespace host

// The module in use; that of the folder which the running program or library lies in until one is set.
HINSTANCE AfxGetResourceHandle();
void AfxSetResourceHandle(HINSTANCE module);

// Switches the module in use for as long as it lives.
class CAcModuleResourceOverride {
public:
    explicit CAcModuleResourceOverride(HINSTANCE module) : before_(AfxGetResourceHandle()) {
        AfxSetResourceHandle(module);
    }
    ~CAcModuleResourceOverride() { AfxSetResourceHandle(before_); }
    CAcModuleResourceOverride(const CAcModuleResourceOverride&) = delete;
    CAcModuleResourceOverride& operator=(const CAcModuleResourceOverride&) = delete;

private:
    HINSTANCE before_;
};
