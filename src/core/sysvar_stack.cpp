// System variables: typed reads and writes, and the stack that restores them.
#include "core/sysvar_stack.h"

#include <algorithm>

#include "core/language.h"

namespace corvane {
namespace {

constexpr int kUnreadable = -999;

int write(const wchar_t* name, resbuf& value) {
    const int status = acedSetVar(name, &value);
    if (status != RTNORM) AfxMessageBox(TranslateFormat(L"Could not set system variable \"%s\".", name));
    return status;
}

// Reads a variable whose value has one of two types; the buffer's text, if any, is freed by the chain.
int read(const wchar_t* name, std::initializer_list<int> types, resbuf*& value) {
    value = acutNewRb(RTNONE);
    if (acedGetVar(name, value) != RTNORM) return RTERROR;
    return std::find(types.begin(), types.end(), value->restype) != types.end() ? RTNORM : RTERROR;
}

} // namespace

SdSysVarNode::SdSysVarNode(std::wstring name) : name_(std::move(name)), saved_(acutNewRb(RTNONE), acutRelRb) {
    if (acedGetVar(name_.c_str(), saved_.get()) == RTNORM) return;
    saved_.reset();
    AfxMessageBox(TranslateFormat(L"Could not save state of system variable \"%s\".", name_));
}

SdSysVarNode::~SdSysVarNode() {
    if (saved_) acedSetVar(name_.c_str(), saved_.get());
}

SdSysVarStack::~SdSysVarStack() {
    while (!nodes_.empty()) nodes_.pop_back();
}

void SdSysVarStack::Push(const std::wstring& name) { nodes_.push_back(std::make_unique<SdSysVarNode>(name)); }
void SdSysVarStack::Push(const std::wstring& name, const wchar_t* value) {
    Push(name), WriteSysVar(name.c_str(), value);
}
void SdSysVarStack::Push(const std::wstring& name, const AcGePoint2d& value) {
    Push(name), WriteSysVar(name.c_str(), value);
}
void SdSysVarStack::Push(const std::wstring& name, const AcGePoint3d& value) {
    Push(name), WriteSysVar(name.c_str(), value);
}
void SdSysVarStack::Push(const std::wstring& name, short value) {
    Push(name), WriteSysVar(name.c_str(), value);
}
void SdSysVarStack::Push(const std::wstring& name, double value) {
    Push(name), WriteSysVar(name.c_str(), value);
}

bool SdSysVarStack::Remove(const std::wstring& name) {
    const auto last = std::find_if(nodes_.rbegin(), nodes_.rend(),
                                   [&](const auto& node) { return host::equalNoCase(node->name(), name); });
    if (last == nodes_.rend()) return false;
    nodes_.erase(std::next(last).base());
    return true;
}

int SetSysVarInt(const wchar_t* name, int value) { return WriteSysVar(name, short(value)); }
int SetSysVarReal(const wchar_t* name, double value) { return WriteSysVar(name, value); }

int GetSysVarInt(const wchar_t* name) {
    short value = 0;
    return ReadSysVar(name, value) == RTNORM ? value : kUnreadable;
}
double GetSysVarReal(const wchar_t* name) {
    double value = 0;
    return ReadSysVar(name, value) == RTNORM ? value : kUnreadable;
}

int ReadSysVar(const wchar_t* name, short& value) {
    resbuf* buffer = nullptr;
    const int status = read(name, {RTSHORT, RTLONG}, buffer);
    host::ResbufChain owner(buffer);
    if (status == RTNORM)
        value = buffer->restype == RTLONG ? short(buffer->resval.rlong) : buffer->resval.rint;
    return status;
}
int ReadSysVar(const wchar_t* name, double& value) {
    resbuf* buffer = nullptr;
    const int status = read(name, {RTREAL, RTANG, RTORINT}, buffer);
    host::ResbufChain owner(buffer);
    if (status == RTNORM) value = buffer->resval.rreal;
    return status;
}
int ReadSysVar(const wchar_t* name, std::wstring& value) {
    resbuf* buffer = nullptr;
    const int status = read(name, {RTSTR}, buffer);
    host::ResbufChain owner(buffer);
    if (status == RTNORM) value = buffer->resval.rstring ? buffer->resval.rstring : L"";
    return status;
}
int ReadSysVar(const wchar_t* name, AcGePoint3d& value) {
    resbuf* buffer = nullptr;
    const int status = read(name, {RTPOINT, RT3DPOINT}, buffer);
    host::ResbufChain owner(buffer);
    if (status == RTNORM)
        value.set(buffer->resval.rpoint[X], buffer->resval.rpoint[Y],
                  buffer->restype == RT3DPOINT ? buffer->resval.rpoint[Z] : 0);
    return status;
}

int WriteSysVar(const wchar_t* name, short value) {
    resbuf buffer;
    buffer.restype = RTSHORT, buffer.resval.rint = value;
    return write(name, buffer);
}
int WriteSysVar(const wchar_t* name, double value) {
    resbuf buffer;
    buffer.restype = RTREAL, buffer.resval.rreal = value;
    return write(name, buffer);
}
int WriteSysVar(const wchar_t* name, const wchar_t* value) {
    std::wstring text(value);
    resbuf buffer;
    buffer.restype = RTSTR, buffer.resval.rstring = text.data();
    return write(name, buffer);
}
int WriteSysVar(const wchar_t* name, const AcGePoint2d& value) {
    resbuf buffer;
    buffer.restype = RTPOINT, buffer.resval.rpoint[X] = value.x, buffer.resval.rpoint[Y] = value.y;
    return write(name, buffer);
}
int WriteSysVar(const wchar_t* name, const AcGePoint3d& value) {
    resbuf buffer;
    buffer.restype = RT3DPOINT;
    buffer.resval.rpoint[X] = value.x, buffer.resval.rpoint[Y] = value.y, buffer.resval.rpoint[Z] = value.z;
    return write(name, buffer);
}

} // namespace corvane
