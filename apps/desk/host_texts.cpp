// Rows and patterns of the host's texts, and finding the one that fits.
#include "apps/desk/host_texts.h"

#include <algorithm>
#include <filesystem>

#include "host/ed/application.h"
#include "host/os/files.h"
#include "host/os/text.h"

namespace desk {
namespace {

constexpr int kDeepest = 2; // values that are looked up in turn, one inside another
constexpr std::wstring_view kPlaceholders = L"dst";

struct Brackets {
    size_t open = std::wstring_view::npos, close = 0;
    explicit operator bool() const { return open != std::wstring_view::npos; }
};

Brackets bracketsIn(std::wstring_view text) {
    const size_t open = text.find(L'['), close = text.find(L']', open == text.npos ? 0 : open);
    return open == text.npos || close == text.npos ? Brackets() : Brackets{open, close};
}

bool serves(wchar_t kind, std::wstring_view value) {
    if (kind == L's') return true;
    if (kind == L't') return !value.empty();
    return value.find_first_of(L"0123456789") != value.npos &&
           value.find_first_not_of(L"0123456789+-.eE") == value.npos;
}

} // namespace

std::vector<std::wstring> optionsOf(std::wstring_view prompt) {
    std::vector<std::wstring> options;
    const Brackets brackets = bracketsIn(prompt);
    if (!brackets) return options;
    std::wstring_view rest = prompt.substr(brackets.open + 1, brackets.close - brackets.open - 1);
    for (;;) {
        const size_t slash = rest.find(L'/');
        options.emplace_back(rest.substr(0, slash));
        if (slash == rest.npos) return options;
        rest.remove_prefix(slash + 1);
    }
}

HostTexts::Form::Form(std::wstring_view text) : literals(1) {
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'%' && i + 1 < text.size() && kPlaceholders.find(text[i + 1]) != text.npos) {
            kinds += text[++i];
            literals.emplace_back();
        } else {
            literals.back() += text[i];
            ++literalLength;
        }
    }
}

bool HostTexts::Form::matches(std::wstring_view text, std::vector<std::wstring_view>& values) const {
    const std::wstring &first = literals.front(), &last = literals.back();
    if (text.size() < literalLength || !text.starts_with(first) || !text.ends_with(last)) return false;
    std::wstring_view rest = text.substr(first.size(), text.size() - first.size() - last.size());
    values.clear();
    for (size_t i = 0; i < kinds.size(); ++i) {
        const bool atEnd = i + 1 == kinds.size();
        const size_t end = atEnd ? rest.size() : rest.find(literals[i + 1]);
        if (end == rest.npos || !serves(kinds[i], rest.substr(0, end))) return false;
        values.push_back(rest.substr(0, end));
        if (!atEnd) rest.remove_prefix(end + literals[i + 1].size());
    }
    return true;
}

void HostTexts::read(std::string_view utf8) {
    while (!utf8.empty()) {
        const size_t end = utf8.find('\n');
        std::string_view line = utf8.substr(0, end);
        utf8 = end == utf8.npos ? std::string_view() : utf8.substr(end + 1);
        if (line.ends_with('\r')) line.remove_suffix(1);
        const size_t equals = line.find('=');
        if (line.starts_with(';') || equals == line.npos) continue;
        const std::wstring key = host::wide(line.substr(0, equals));
        const std::wstring value = host::wide(line.substr(equals + 1));
        if (key == L"en")
            rows_.push_back({value, {}});
        else if (!rows_.empty() && !value.empty())
            rows_.back().said[key] = value;
    }
}

void HostTexts::speak(const std::wstring& code) {
    plain_.clear();
    patterns_.clear();
    const std::wstring primary = code.substr(0, code.find(L'-'));
    for (const Row& row : rows_) {
        auto said = row.said.find(code);
        if (said == row.said.end()) said = row.said.find(primary);
        if (said == row.said.end()) continue;
        Pattern pattern{Form(row.english), Form(said->second)};
        if (pattern.english.kinds.empty())
            plain_[row.english] = said->second;
        else if (pattern.english.kinds == pattern.said.kinds)
            patterns_.push_back(std::move(pattern));
    }
    std::stable_sort(patterns_.begin(), patterns_.end(), [](const Pattern& a, const Pattern& b) {
        return a.english.literalLength > b.english.literalLength;
    });
}

std::wstring HostTexts::say(const std::wstring& text) const { return plain_.empty() ? text : sayAt(text, 0); }

std::wstring HostTexts::sayAt(std::wstring_view text, int depth) const {
    const std::wstring_view inner = host::trimmed(text);
    if (inner.empty()) return std::wstring(text);
    const size_t lead = size_t(inner.data() - text.data());
    return std::wstring(text.substr(0, lead)) + core(inner, depth) +
           std::wstring(text.substr(lead + inner.size()));
}

// Options are said one by one, and put where the row has "[]", unless the row has them itself.
std::wstring HostTexts::core(std::wstring_view text, int depth) const {
    const Brackets in = bracketsIn(text);
    if (in && plain_.find(text) == plain_.end()) {
        std::wstring bare(text.substr(0, in.open + 1));
        std::wstring said = fromRow(bare.append(text.substr(in.close)), depth);
        const size_t place = said.find(L"[]");
        if (place == said.npos) return std::wstring(text);
        std::wstring options;
        for (const std::wstring& option : optionsOf(text)) {
            const auto found = plain_.find(option);
            options += L'/' + (found == plain_.end() ? option : found->second);
        }
        return said.insert(place + 1, options, 1);
    }
    std::wstring said = fromRow(text, depth);
    return said.empty() ? std::wstring(text) : said;
}

std::wstring HostTexts::fromRow(std::wstring_view text, int depth) const {
    if (const auto found = plain_.find(text); found != plain_.end()) return found->second;
    std::vector<std::wstring_view> values;
    for (const Pattern& pattern : patterns_) {
        if (!pattern.english.matches(text, values)) continue;
        std::wstring said = pattern.said.literals.front();
        for (size_t i = 0; i < values.size(); ++i) {
            const bool inTurn = pattern.said.kinds[i] == L't' && depth < kDeepest;
            said += inTurn ? sayAt(values[i], depth + 1) : std::wstring(values[i]);
            said += pattern.said.literals[i + 1];
        }
        return said;
    }
    return {};
}

HostTexts readHostTexts() {
    HostTexts texts;
    for (const std::wstring& module : acrxDynamicLinker->loaded()) {
        const std::filesystem::path folder = std::filesystem::path(host::utf8(module)).parent_path();
        host::MappedFile file;
        if (file.open(folder / "HostLang.ini")) continue;
        texts.read(file.bytes());
        break;
    }
    return texts;
}

} // namespace desk
