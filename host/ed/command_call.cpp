// Commands from code: the answers come from the call, all else from the front end behind it.
#include <cstdarg>
#include <deque>

#include "host/ed/editor.h"
#include "host/ed/frontend.h"
#include "host/ed/interpreter.h"
#include "host/ed/prompting.h"
#include "host/ed/selection.h"
#include "host/ed/sysvars.h"
#include "host/os/numbers.h"
#include "host/os/text.h"

namespace host {
namespace {

constexpr wchar_t kPause[] = L"\\"; // the user answers this prompt

// Answers prompts from a list; prints only while CMDECHO is on.
class CallFrontEnd final : public FrontEnd {
public:
    CallFrontEnd(FrontEnd& behind, std::deque<PromptReply> answers)
        : behind_(behind), answers_(std::move(answers)) {}
    PromptReply ask(const PromptRequest& request) override {
        if (answers_.empty()) {
            PromptReply reply;
            reply.kind = PromptReply::Kind::exhausted;
            return reply;
        }
        PromptReply reply = std::move(answers_.front());
        answers_.pop_front();
        if (reply.kind == PromptReply::Kind::text && reply.text == kPause) return behind_.ask(request);
        return reply;
    }
    void print(const std::wstring& text) override {
        if (systemVariableText(*findSystemVariable(L"CMDECHO")) != L"0") behind_.print(text);
    }
    int messageBox(const MessageBox& box) override { return behind_.messageBox(box); }
    void open(const std::wstring& target) override { behind_.open(target); }
    bool progress(const std::wstring& caption, double share) override {
        return behind_.progress(caption, share);
    }
    void redraw() override { behind_.redraw(); }

private:
    FrontEnd& behind_;
    std::deque<PromptReply> answers_;
};

// The front end in use for the length of a call.
class FrontEndScope {
public:
    explicit FrontEndScope(FrontEnd& inner) : outer_(frontEnd()) { setFrontEnd(&inner); }
    ~FrontEndScope() { setFrontEnd(&outer_); }
    FrontEndScope(const FrontEndScope&) = delete;
    FrontEndScope& operator=(const FrontEndScope&) = delete;

private:
    FrontEnd& outer_;
};

PromptReply textReply(std::wstring text) {
    PromptReply reply;
    reply.kind = text.empty() ? PromptReply::Kind::enter : PromptReply::Kind::text;
    reply.text = std::move(text);
    return reply;
}

std::wstring pointText(const double* p) {
    return wide(formatReal(p[0]) + "," + formatReal(p[1]) + "," + formatReal(p[2]));
}

// Selection sets answer object prompts one entity at a time, then end the selection.
void appendSet(std::deque<PromptReply>& answers, const ads_name set) {
    Adesk::Int32 length = 0;
    acedSSLength(set, &length);
    for (Adesk::Int32 i = 0; i < length; ++i) {
        ads_name entity;
        PromptReply reply;
        reply.kind = PromptReply::Kind::entity;
        if (acedSSName(set, i, entity) == RTNORM && acdbGetObjectId(reply.entity, entity) == Acad::eOk)
            answers.push_back(reply);
    }
}

bool appendAnswer(std::deque<PromptReply>& answers, const resbuf& item) {
    const auto& value = item.resval;
    switch (item.restype) {
    case RTSTR: answers.push_back(textReply(value.rstring ? value.rstring : L"")); return true;
    case RTREAL:
    case RTANG:
    case RTORINT: answers.push_back(textReply(wide(formatReal(value.rreal)))); return true;
    case RTSHORT: answers.push_back(textReply(std::to_wstring(value.rint))); return true;
    case RTLONG: answers.push_back(textReply(std::to_wstring(value.rlong))); return true;
    case RTPOINT:
    case RT3DPOINT: answers.push_back(textReply(pointText(value.rpoint))); return true;
    case RTPICKS: appendSet(answers, value.rlname); return true;
    case RTENAME: {
        PromptReply reply;
        reply.kind = PromptReply::Kind::entity;
        if (acdbGetObjectId(reply.entity, value.rlname) == Acad::eOk) answers.push_back(reply);
        return true;
    }
    case RTLB:
    case RTLE: return true;
    default: return false;
    }
}

} // namespace
} // namespace host

int acedCmdS(const resbuf* items) {
    std::deque<host::PromptReply> answers;
    for (; items && items->restype != RTNONE; items = items->rbnext)
        if (!host::appendAnswer(answers, *items)) return RTERROR;
    if (answers.empty() || answers.front().kind != host::PromptReply::Kind::text) return RTERROR;
    const std::wstring name = answers.front().text;
    answers.pop_front();
    host::CallFrontEnd inner(host::frontEnd(), std::move(answers));
    const host::FrontEndScope scope(inner);
    return host::runCommand(name) == host::CommandResult::ended ? RTNORM : RTERROR;
}

int acedCommandS(int restype, ...) {
    va_list arguments;
    va_start(arguments, restype);
    host::ResbufChain chain;
    resbuf** tail = chain.address();
    bool known = true;
    for (int type = restype; type != RTNONE && type != 0 && known; type = va_arg(arguments, int)) {
        resbuf* item = *tail = acutNewRb(type);
        tail = &item->rbnext;
        switch (type) {
        case RTSTR: acutNewString(va_arg(arguments, const ACHAR*), item->resval.rstring); break;
        case RTREAL:
        case RTANG:
        case RTORINT: item->resval.rreal = va_arg(arguments, double); break;
        case RTSHORT: item->resval.rint = short(va_arg(arguments, int)); break;
        case RTLONG: item->resval.rlong = va_arg(arguments, int); break;
        case RTPOINT:
        case RT3DPOINT: {
            const double* p = va_arg(arguments, const double*);
            item->resval.rpoint[0] = p[0], item->resval.rpoint[1] = p[1],
            item->resval.rpoint[2] = type == RT3DPOINT ? p[2] : 0;
            break;
        }
        case RTENAME:
        case RTPICKS: ads_name_set(va_arg(arguments, const std::int64_t*), item->resval.rlname); break;
        case RTLB:
        case RTLE: break;
        default: known = false;
        }
    }
    va_end(arguments);
    return known ? acedCmdS(chain.get()) : RTERROR;
}
