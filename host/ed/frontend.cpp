// The front end in use, and the silent one that stands in when there is none.
#include "host/ed/frontend.h"

namespace host {
namespace {

class SilentFrontEnd final : public FrontEnd {
public:
    PromptReply ask(const PromptRequest&) override {
        PromptReply reply;
        reply.kind = PromptReply::Kind::exhausted;
        return reply;
    }
    void print(const std::wstring&) override {}
    int messageBox(const MessageBox& box) override { return box.style == 4 ? 7 : 1; } // no, or OK
    void open(const std::wstring&) override {}
    bool progress(const std::wstring&, double) override { return true; }
};

FrontEnd* current = nullptr;

} // namespace

bool PromptRequest::pointing() const {
    switch (kind) {
    case Kind::command:
    case Kind::text:
    case Kind::line:
    case Kind::keyword:
    case Kind::file:
    case Kind::dialog: return false;
    default: return true;
    }
}

FrontEnd& frontEnd() {
    static SilentFrontEnd silent;
    return current ? *current : silent;
}
void setFrontEnd(FrontEnd* newOne) { current = newOne; }

} // namespace host
