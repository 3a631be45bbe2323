// Bytes of a drawing's code page to UTF-8 and back, and the escapes that stand in drawings for
// characters their code page lacks. Conversion tables are the C library's.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace host {

// A code page by the name drawings give it ($DWGCODEPAGE): "ANSI_1250" to "ANSI_1258", "ANSI_874",
// "ANSI_932", "ANSI_936", "ANSI_949", "ANSI_950", "ANSI_1361", "DOS437", "DOS850" and others of the
// DOS family, "ASCII", "ISO8859-1" ..., "MACINTOSH", "UTF-8"; without regard to case. An unknown,
// empty or "undefined" name is taken as ANSI_1252. Cheap to keep, not to be shared between threads.
class CodePage {
public:
    explicit CodePage(std::string_view name);
    ~CodePage();
    CodePage(CodePage&&) noexcept;
    CodePage& operator=(CodePage&&) noexcept;

    bool isUtf8() const;
    bool wasKnown() const; // false when the name was replaced by ANSI_1252

    // To UTF-8; a byte that has no meaning becomes U+FFFD. Appends to `out`.
    void decode(std::string_view bytes, std::string& out) const;
    std::string decode(std::string_view bytes) const;

    // From UTF-8. A character the code page lacks is written as \U+XXXX (two of them, a surrogate pair,
    // above U+FFFF), which every reader of drawings understands; `lost` counts them.
    struct Encoded {
        std::string bytes;
        int lost = 0;
    };
    Encoded encode(std::string_view utf8) const;

private:
    struct Converters;
    std::unique_ptr<Converters> converters_;
};

// Replaces \U+XXXX (also in pairs of surrogates) and \M+nXXXX (n: 1 Shift-JIS, 2 Big5, 3 Korean,
// 4 Johab, 5 GBK) in UTF-8 text by the characters they mean; what is no whole escape stays.
std::string decodeEscapes(std::string_view utf8);

// The text of a file as people have them: UTF-8, UTF-16 of either order or GB18030, with a mark at the start
// or without. Without one, bytes that are well-formed UTF-8 are that; a file in which many bytes at even or
// at odd places are zero is UTF-16; all else is GB18030, which holds GBK and ASCII. Line ends stay as they
// are; bytes without a meaning become U+FFFD.
std::wstring textFileContents(std::string_view bytes);

} // namespace host
