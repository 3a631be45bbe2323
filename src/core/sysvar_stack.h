// Saved system variables, restored when the stack that holds them goes: whatever way a command ends.
#pragma once
#include <memory>
#include <string>
#include <vector>

#include "core/host/editor.h"
#include "core/host/geometry.h"

namespace corvane {

// One saved variable. Its destruction writes the saved value back; a variable that could not be read is shown
// in a message box and left alone.
class SdSysVarNode {
public:
    explicit SdSysVarNode(std::wstring name);
    virtual ~SdSysVarNode();
    SdSysVarNode(const SdSysVarNode&) = delete;
    SdSysVarNode& operator=(const SdSysVarNode&) = delete;
    const std::wstring& name() const { return name_; }

private:
    std::wstring name_;
    std::unique_ptr<resbuf, int (*)(resbuf*)> saved_;
};

// The variable pushed last is restored first.
class SdSysVarStack {
public:
    SdSysVarStack() { nodes_.reserve(10); }
    virtual ~SdSysVarStack();
    SdSysVarStack(const SdSysVarStack&) = delete;
    SdSysVarStack& operator=(const SdSysVarStack&) = delete;

    void Push(const std::wstring& name); // saves alone
    void Push(const std::wstring& name, const wchar_t* value);
    void Push(const std::wstring& name, const AcGePoint2d& value);
    void Push(const std::wstring& name, const AcGePoint3d& value);
    void Push(const std::wstring& name, short value);
    void Push(const std::wstring& name, double value);
    // Restores the variable of that name that was pushed last, early. False when there is none.
    bool Remove(const std::wstring& name);

private:
    std::vector<std::unique_ptr<SdSysVarNode>> nodes_;
};

// Whole numbers are written as shorts. -999 is read from variables that can't be.
int SetSysVarInt(const wchar_t* name, int value);
int SetSysVarReal(const wchar_t* name, double value);
int GetSysVarInt(const wchar_t* name);
double GetSysVarReal(const wchar_t* name);
// Typed reads and writes: RTNORM, or RTERROR with `value` untouched when the variable is missing or of
// another type. A write that fails says so in a message box.
int ReadSysVar(const wchar_t* name, short& value);
int ReadSysVar(const wchar_t* name, double& value);
int ReadSysVar(const wchar_t* name, std::wstring& value);
int ReadSysVar(const wchar_t* name, AcGePoint3d& value);
int WriteSysVar(const wchar_t* name, short value);
int WriteSysVar(const wchar_t* name, double value);
int WriteSysVar(const wchar_t* name, const wchar_t* value);
int WriteSysVar(const wchar_t* name, const AcGePoint2d& value);
int WriteSysVar(const wchar_t* name, const AcGePoint3d& value);

} // namespace corvane
