// Cutting resource scripts into words, numbers and texts.
#include "host/ui/rc_lexer.h"

#include <utility>

#include "host/os/text.h"

namespace host::rc {
namespace {

bool isLetter(wchar_t c) {
    return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || c == L'_' || c >= 0x80;
}
bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

// Decimal or 0x, with the L that C allows behind; nothing when it is no number of 32 bits.
std::optional<long long> numberOf(std::wstring_view text) {
    if (!text.empty() && (text.back() == L'L' || text.back() == L'l')) text.remove_suffix(1);
    int base = 10;
    if (text.starts_with(L"0x") || text.starts_with(L"0X")) base = 16, text.remove_prefix(2);
    long long value = 0;
    if (text.empty()) return std::nullopt;
    for (const wchar_t c : lower(text)) {
        const int digit = isDigit(c) ? c - L'0' : c >= L'a' && c <= L'f' ? c - L'a' + 10 : 99;
        if (digit >= base) return std::nullopt;
        value = value * base + digit;
        if (value > 0xFFFFFFFFLL) return std::nullopt;
    }
    return value;
}

class Lexer {
public:
    Lexer(std::wstring text, std::vector<Complaint>& complaints)
        : text_(std::move(text)), complaints_(complaints) {}

    std::vector<Token> run() {
        while (at_ < text_.size()) step();
        add({Token::Kind::end});
        return std::move(out_);
    }

private:
    wchar_t peek(std::size_t ahead = 0) const {
        return at_ + ahead < text_.size() ? text_[at_ + ahead] : L'\0';
    }
    void complain(std::string what) { complaints_.push_back({line_, std::move(what)}); }
    void add(Token token) {
        token.line = line_;
        token.startsLine = std::exchange(fresh_, false);
        out_.push_back(std::move(token));
    }

    void step() {
        const wchar_t c = peek();
        if (c == L'\n') {
            ++line_, ++at_, fresh_ = true;
        } else if (c <= L' ' || c == 0xFEFF) {
            ++at_;
        } else if (c == L'/' && peek(1) == L'/') {
            passLine();
        } else if (c == L'/' && peek(1) == L'*') {
            passComment();
        } else if (c == L'#' && fresh_) {
            directive();
        } else if (c == L'"' || (c == L'L' && peek(1) == L'"')) {
            text();
        } else if (isLetter(c) || isDigit(c)) {
            word();
        } else {
            sign(c);
        }
    }
    void sign(wchar_t c) {
        using Kind = Token::Kind;
        ++at_;
        switch (c) {
        case L',': return add({Kind::comma});
        case L'|': return add({Kind::bar});
        case L'+': return add({Kind::plus});
        case L'-': return add({Kind::minus});
        case L'{': return add({Kind::open});
        case L'}': return add({Kind::close});
        case L'(':
        case L')': return; // around style expressions, where they change nothing
        default: complain("the character '" + utf8(std::wstring(1, c)) + "' means nothing here");
        }
    }
    void passLine() {
        while (at_ < text_.size() && text_[at_] != L'\n') ++at_;
    }
    void passComment() {
        const int from = line_;
        for (at_ += 2; at_ < text_.size(); ++at_) {
            if (text_[at_] == L'\n') ++line_, fresh_ = true;
            if (text_[at_] == L'*' && peek(1) == L'/') {
                at_ += 2;
                return;
            }
        }
        complaints_.push_back({from, "a comment has no end"});
    }
    std::wstring plainWord() {
        const std::size_t from = at_;
        // File names stand without quotes in old scripts.
        while (isLetter(peek()) || isDigit(peek()) || peek() == L'.' || peek() == L'\\' ||
               (peek() == L'/' && peek(1) != L'/' && peek(1) != L'*'))
            ++at_;
        return text_.substr(from, at_ - from);
    }
    void directive() {
        const std::size_t end = std::min(text_.find(L'\n', at_), text_.size());
        const std::wstring line = text_.substr(at_, end - at_);
        constexpr std::wstring_view kDefine = L"#define";
        if (line.starts_with(kDefine)) {
            std::wstring_view rest = trimmed(std::wstring_view(line).substr(kDefine.size()));
            const std::size_t gap = std::min(rest.find_first_of(L" \t"), rest.size());
            std::wstring_view value = trimmed(rest.substr(gap));
            value = trimmed(value.substr(0, value.find(L"//")));
            if (const auto number = numberOf(value)) defined_[std::wstring(rest.substr(0, gap))] = *number;
        }
        at_ = end;
    }
    void text() {
        if (peek() == L'L') ++at_;
        Token token{Token::Kind::text};
        const int from = line_;
        for (++at_; at_ < text_.size(); ++at_) {
            const wchar_t c = text_[at_];
            if (c == L'\n') break;
            if (c == L'"') {
                if (peek(1) != L'"') {
                    ++at_;
                    return add(std::move(token));
                }
                ++at_; // "" within a text is one "
            }
            token.text += c == L'\\' ? escaped() : c;
        }
        complaints_.push_back({from, "a text in quotes doesn't end in its line"});
    }
    wchar_t escaped() {
        const wchar_t c = peek(1);
        switch (c) {
        case L'n': return ++at_, L'\n';
        case L'r': return ++at_, L'\r';
        case L't': return ++at_, L'\t';
        case L'\\': return ++at_, L'\\';
        case L'"': return ++at_, L'"';
        default: return L'\\';
        }
    }
    void word() {
        Token token{Token::Kind::word, plainWord()};
        const auto known = defined_.find(token.text);
        if (known != defined_.end())
            token.kind = Token::Kind::number, token.number = known->second;
        else if (isDigit(token.text.front())) {
            const auto number = numberOf(token.text);
            if (!number) return complain("\"" + utf8(token.text) + "\" is no number");
            token.kind = Token::Kind::number, token.number = *number;
        }
        add(std::move(token));
    }

    std::wstring text_;
    std::vector<Complaint>& complaints_;
    std::vector<Token> out_;
    std::map<std::wstring, long long> defined_;
    std::size_t at_ = 0;
    int line_ = 1;
    bool fresh_ = true;
};

} // namespace

std::vector<Token> tokens(std::string_view bytes, std::vector<Complaint>& complaints) {
    return Lexer(wide(bytes), complaints).run();
}

} // namespace host::rc
