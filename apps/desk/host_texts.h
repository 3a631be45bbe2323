// What the host says, in the user's language. Its prompts and messages are English, and stay so in scripts;
// at the window they are looked up here, with the numbers and names that they carry. The rows stand in
// resources/HostLang.ini. The module's texts and the window's own come translated, see texts.h.
#pragma once
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace desk {

class HostTexts {
public:
    // Adds the rows of a file's text, UTF-8; lines that say nothing are passed over. What "%d", "%s", "%t"
    // and
    // "[]" mean in a row stands at the head of the file.
    void read(std::string_view utf8);
    bool empty() const { return rows_.empty(); }
    // From now on in that language, such as "de" or "zh-cn"; one without rows leaves texts as they are.
    void speak(const std::wstring& code);
    // The text as it is said; blanks and line ends around it stay. One that no row fits comes back as it is.
    std::wstring say(const std::wstring& text) const;

private:
    // A text's fixed parts, and between them the letters of its placeholders.
    struct Form {
        explicit Form(std::wstring_view text);
        bool matches(std::wstring_view text, std::vector<std::wstring_view>& values) const;
        std::vector<std::wstring> literals;
        std::wstring kinds;
        size_t literalLength = 0;
    };
    struct Pattern {
        Form english, said;
    };
    struct Row {
        std::wstring english;
        std::map<std::wstring, std::wstring> said; // by language
    };
    std::wstring sayAt(std::wstring_view text, int depth) const;
    std::wstring core(std::wstring_view text, int depth) const;
    std::wstring fromRow(std::wstring_view text, int depth) const; // empty when none fits
    std::vector<Row> rows_;
    std::map<std::wstring, std::wstring, std::less<>> plain_; // without placeholders
    std::vector<Pattern> patterns_;                           // the longest literals first
};

// The rows that lie beside the modules that are loaded.
HostTexts readHostTexts();

// The options of a prompt, such as those of "Specify next point or [Close/Undo]: ".
std::vector<std::wstring> optionsOf(std::wstring_view prompt);

} // namespace desk
