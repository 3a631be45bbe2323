// The command stack: every command that can be typed, in groups.
#pragma once
#include <memory>
#include <string>
#include <vector>

#include "host/db/rx.h"

class AcEdUIContext;
using AcRxFunctionPtr = void (*)();
enum {
    ACRX_CMD_MODAL = 0x0,
    ACRX_CMD_TRANSPARENT = 0x1,
    ACRX_CMD_USEPICKSET = 0x2,
    ACRX_CMD_REDRAW = 0x4,
    ACRX_CMD_SESSION = 0x200000
};

// The module that a command's resources come from.
class AcRxResourceInstance {
public:
    AcRxResourceInstance() = default;
    explicit AcRxResourceInstance(void* module) : module_(module) {}
    void* hModule() const { return module_; }

private:
    void* module_ = nullptr;
};

class AcEdCommand : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcEdCommand)
public:
    const ACHAR* globalName() const { return global_.c_str(); }
    const ACHAR* localName() const { return local_.c_str(); }
    const ACHAR* groupName() const { return group_.c_str(); }
    Adesk::Int32 commandFlags() const { return flags_; }
    AcRxFunctionPtr functionAddr() const { return function_; }
    bool isTransparent() const { return flags_ & ACRX_CMD_TRANSPARENT; }

private:
    friend class AcEdCommandStack;
    std::wstring group_, global_, local_;
    Adesk::Int32 flags_ = 0;
    AcRxFunctionPtr function_ = nullptr;
};

// Reached as acrxSysRegistry()->at(ACRX_COMMAND_DOCK).
class AcEdCommandStack : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcEdCommandStack)
public:
    // eDuplicateKey when the group has a command of that global name already, or another group one of that
    // global or local name; the earlier command stays.
    Acad::ErrorStatus addCommand(const ACHAR* group, const ACHAR* global, const ACHAR* local,
                                 Adesk::Int32 flags, AcRxFunctionPtr function,
                                 AcEdUIContext* context = nullptr, int functionCode = -1,
                                 const AcRxResourceInstance& resources = {}, AcEdCommand** command = nullptr);
    Acad::ErrorStatus removeCmd(const ACHAR* group, const ACHAR* global);
    Acad::ErrorStatus removeGroup(const ACHAR* group);
    // By global or local name, without regard to case; "_" and "." before the name are passed over, and
    // behind "_" only global names count. Null when unknown.
    const AcEdCommand* lookUpCmd(const ACHAR* name) const;
    // In the order they were added.
    const std::vector<std::unique_ptr<AcEdCommand>>& commands() const { return commands_; }

private:
    std::vector<std::unique_ptr<AcEdCommand>> commands_;
};
#define ACAD_REGISTERED_COMMANDS ACRX_COMMAND_DOCK
