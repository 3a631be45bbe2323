// Resource scripts: from tokens to templates. An error leaves out the dialog it stands in; reading goes on
// behind it.
#include "host/os/text.h"
#include "host/ui/rc_lexer.h"
#include "host/ui/rc_styles.h"
#include "host/ui/template.h"

namespace host {
namespace {

using rc::Token;
using Kind = Token::Kind;

constexpr std::size_t kMostControls = 4096;
constexpr std::size_t kMostErrors = 50;

// How a statement makes its control.
struct Statement {
    std::wstring_view name, className;
    DWORD style;
    bool hasText;
};
constexpr DWORD kShown = WS_CHILD | WS_VISIBLE;
constexpr Statement kStatements[] = {
    {L"LTEXT", L"Static", kShown | SS_LEFT | WS_GROUP, true},
    {L"CTEXT", L"Static", kShown | SS_CENTER | WS_GROUP, true},
    {L"RTEXT", L"Static", kShown | SS_RIGHT | WS_GROUP, true},
    {L"ICON", L"Static", kShown | SS_ICON, true},
    {L"PUSHBUTTON", L"Button", kShown | BS_PUSHBUTTON | WS_TABSTOP, true},
    {L"DEFPUSHBUTTON", L"Button", kShown | BS_DEFPUSHBUTTON | WS_TABSTOP, true},
    {L"CHECKBOX", L"Button", kShown | BS_CHECKBOX | WS_TABSTOP, true},
    {L"AUTOCHECKBOX", L"Button", kShown | BS_AUTOCHECKBOX | WS_TABSTOP, true},
    {L"RADIOBUTTON", L"Button", kShown | BS_RADIOBUTTON, true},
    {L"AUTORADIOBUTTON", L"Button", kShown | BS_AUTORADIOBUTTON, true},
    {L"STATE3", L"Button", kShown | BS_3STATE | WS_TABSTOP, true},
    {L"AUTO3STATE", L"Button", kShown | BS_AUTO3STATE | WS_TABSTOP, true},
    {L"GROUPBOX", L"Button", kShown | BS_GROUPBOX, true},
    {L"EDITTEXT", L"Edit", kShown | ES_LEFT | WS_BORDER | WS_TABSTOP, false},
    {L"COMBOBOX", L"ComboBox", kShown | WS_TABSTOP, false},
    {L"LISTBOX", L"ListBox", kShown | LBS_NOTIFY | WS_BORDER, false},
    {L"SCROLLBAR", L"ScrollBar", kShown, false},
};

class Parser {
public:
    explicit Parser(std::string_view text) : tokens_(rc::tokens(text, complaints_)) {}

    ResourceScript run() {
        while (!is(Kind::end)) resource();
        for (const rc::Complaint& complaint : complaints_) {
            if (script_.errors.size() >= kMostErrors) break;
            script_.errors.push_back("line " + std::to_string(complaint.line) + ": " + complaint.what);
        }
        return std::move(script_);
    }

private:
    struct Failure {};

    const Token& now() const { return tokens_[at_]; }
    bool is(Kind kind) const { return now().kind == kind; }
    bool isWord(std::wstring_view word) const { return is(Kind::word) && equalNoCase(now().text, word); }
    Token take() { return at_ + 1 < tokens_.size() ? tokens_[at_++] : tokens_[at_]; }
    bool pass(Kind kind) { return is(kind) && (take(), true); }
    [[noreturn]] void fail(const std::string& what) { failAt(now().line, what); }
    [[noreturn]] void failBehind(const std::string& what) { failAt(tokens_[at_ - 1].line, what); }
    [[noreturn]] void failAt(int line, const std::string& what) {
        complaints_.push_back({line, what});
        throw Failure{};
    }
    std::string found() const {
        switch (now().kind) {
        case Kind::end: return "the end of the file";
        case Kind::number: return std::to_string(now().number);
        case Kind::word:
        case Kind::text: return "\"" + utf8(now().text) + "\"";
        default: return "a sign";
        }
    }

    void resource() {
        const std::size_t start = at_;
        const std::size_t before = complaints_.size();
        try {
            if (isWord(L"LANGUAGE")) return language();
            const Token name = take();
            if (name.kind != Kind::number)
                fail("a resource begins with its number, not with " +
                     (name.kind == Kind::word
                          ? "\"" + utf8(name.text) + "\" (which no #define makes a number)"
                          : std::string("this")));
            if (!is(Kind::word)) fail("the kind of resource " + std::to_string(name.number) + " is missing");
            if (isWord(L"DIALOG") || isWord(L"DIALOGEX"))
                dialog(UINT(name.number & 0xFFFF), before);
            else
                file(UINT(name.number & 0xFFFF));
        } catch (const Failure&) {
            at_ = std::max(at_, start + 1);
            passBlock();
        }
    }
    // To behind the next closing END, or the next line that looks like a resource.
    void passBlock() {
        for (; !is(Kind::end); take()) {
            if (is(Kind::close) || isWord(L"END")) {
                take();
                return;
            }
            const Token& next = tokens_[std::min(at_ + 1, tokens_.size() - 1)];
            const bool dialogHead = next.kind == Kind::word && lower(next.text).starts_with(L"dialog");
            if (now().startsLine && is(Kind::number) && dialogHead) return;
        }
    }
    void language() {
        take();
        for (int line = now().line; now().line == line && !is(Kind::end);) take();
    }
    void file(UINT id) {
        FileResource resource{id, upper(take().text), {}};
        // Memory options of old scripts stand before the name and mean nothing any more.
        while (is(Kind::word) && !now().startsLine && tokens_[at_ + 1].line == now().line &&
               (tokens_[at_ + 1].kind == Kind::text || tokens_[at_ + 1].kind == Kind::word))
            take();
        if (!is(Kind::text) && !is(Kind::word))
            fail("the file of resource " + std::to_string(id) + " is missing");
        resource.file = utf8(take().text);
        script_.files.push_back(std::move(resource));
    }

    void comma(const char* behind) {
        if (!pass(Kind::comma))
            fail(std::string("a comma is missing behind ") + behind + ", before " + found());
    }
    int number(const char* what) {
        const bool minus = pass(Kind::minus);
        if (!is(Kind::number)) fail(std::string(what) + " must be a number, not " + found());
        const long long value = take().number;
        if (value > 65535) failBehind(std::string(what) + " is too large");
        return minus ? -int(value) : int(value);
    }
    CRect rectangle() {
        const int x = number("the left edge");
        comma("the left edge");
        const int y = number("the top edge");
        comma("the top edge");
        const int width = number("the width");
        comma("the width");
        const int height = number("the height");
        if (width < 0 || height < 0) failBehind("the size must not be negative");
        if (std::abs(x) > 32767 || std::abs(y) > 32767 || width > 32767 || height > 32767)
            failBehind("coordinates go up to 32767");
        return CRect(CPoint(x, y), CSize(width, height));
    }
    // Names and numbers joined by |; NOT takes bits away from `bits`.
    DWORD style(DWORD bits) {
        bool any = false;
        for (bool more = true; more; more = pass(Kind::bar) || pass(Kind::plus), any = true) {
            const bool without = isWord(L"NOT") && (take(), true);
            DWORD next = 0;
            if (is(Kind::number)) {
                next = DWORD(take().number);
            } else if (is(Kind::word)) {
                const auto known = rc::styleBits(now().text);
                if (!known) fail("the style " + found() + " is not known");
                next = *known, take();
            } else if (any || without) {
                fail("a style is missing before " + found());
            }
            bits = without ? bits & ~next : bits | next;
        }
        return bits;
    }

    void dialog(UINT id, std::size_t complaintsBefore) {
        take();
        DialogTemplate made;
        made.id = id;
        made.style = WS_POPUP | WS_BORDER | WS_SYSMENU;
        while (is(Kind::word) && !now().startsLine) take(); // memory options
        made.rect = rectangle();
        if (pass(Kind::comma)) number("the help number");
        while (!is(Kind::open) && !isWord(L"BEGIN")) head(made);
        take();
        while (!is(Kind::close) && !isWord(L"END")) {
            if (is(Kind::end)) fail("dialog " + std::to_string(id) + " has no END");
            if (made.controls.size() >= kMostControls) fail("a dialog has at most 4096 controls");
            made.controls.push_back(control());
        }
        take();
        if (complaints_.size() == complaintsBefore) script_.dialogs.push_back(std::move(made));
    }
    void head(DialogTemplate& made) {
        if (!is(Kind::word)) fail("STYLE, CAPTION, FONT or BEGIN is expected, not " + found());
        const std::wstring name = upper(take().text);
        if (name == L"STYLE")
            made.style = style(0);
        else if (name == L"EXSTYLE")
            made.exStyle = style(0);
        else if (name == L"CAPTION")
            made.caption = text("the caption");
        else if (name == L"CLASS")
            made.className = text("the class");
        else if (name == L"FONT")
            font(made);
        else if (name == L"LANGUAGE" || name == L"VERSION" || name == L"CHARACTERISTICS" || name == L"MENU")
            for (const int line = tokens_[at_ - 1].line; now().line == line && !is(Kind::end);) take();
        else
            fail("\"" + utf8(name) + "\" is no part of a dialog's head");
    }
    std::wstring text(const char* what) {
        if (!is(Kind::text)) fail(std::string(what) + " must be a text in quotes, not " + found());
        return take().text;
    }
    void font(DialogTemplate& made) {
        made.pointSize = number("the font's size");
        if (made.pointSize < 1 || made.pointSize > 200)
            failBehind("the font's size must be from 1 to 200 points");
        comma("the font's size");
        made.typeface = text("the font's name");
        if (pass(Kind::comma)) made.weight = number("the font's weight");
        if (pass(Kind::comma)) made.italic = number("the font's slant") != 0;
        if (pass(Kind::comma)) number("the font's character set");
        if (made.weight == 0) made.weight = 400;
    }

    UINT identifier() {
        if (is(Kind::word)) {
            if (now().text == L"IDC_STATIC") return take(), 0xFFFF;
            if (now().text == L"IDOK") return take(), 1;
            if (now().text == L"IDCANCEL") return take(), 2;
            fail("the name " + found() + " is not defined as a number");
        }
        return UINT(number("the control's number")) & 0xFFFF;
    }
    std::wstring title() {
        if (is(Kind::number)) return take(), std::wstring(); // a picture by number
        return text("the control's text");
    }
    ControlTemplate control() {
        if (!is(Kind::word)) fail("a control is expected, not " + found());
        if (isWord(L"CONTROL")) return generalControl();
        for (const Statement& statement : kStatements)
            if (isWord(statement.name)) return namedControl(statement);
        fail("the control " + found() + " is not known");
    }
    ControlTemplate namedControl(const Statement& statement) {
        take();
        ControlTemplate made;
        made.className = statement.className;
        if (statement.hasText) {
            made.text = title();
            comma("the control's text");
        }
        made.id = identifier();
        comma("the control's number");
        made.rect = rectangle();
        made.style = pass(Kind::comma) ? style(statement.style) : statement.style;
        tail(made);
        return made;
    }
    // CONTROL "text", id, class, style, x, y, width, height [, extended style]
    ControlTemplate generalControl() {
        take();
        ControlTemplate made;
        made.text = title();
        comma("the control's text");
        made.id = identifier();
        comma("the control's number");
        if (!is(Kind::text) && !is(Kind::word)) fail("the control's class must be a name, not " + found());
        made.className = take().text;
        comma("the control's class");
        made.style = style(WS_CHILD | WS_VISIBLE);
        comma("the control's style");
        made.rect = rectangle();
        tail(made);
        return made;
    }
    void tail(ControlTemplate& made) {
        if (pass(Kind::comma)) made.exStyle = style(0);
        if (pass(Kind::comma)) number("the help number");
    }

    std::vector<rc::Complaint> complaints_;
    std::vector<Token> tokens_;
    std::size_t at_ = 0;
    ResourceScript script_;
};

} // namespace

ResourceScript parseResourceScript(std::string_view text) { return Parser(text).run(); }

} // namespace host
