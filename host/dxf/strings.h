// Texts of drawing files: from the file's code page and escapes to UTF-8, and back. Control
// characters and the ^-escapes that stand for them belong to the texts and are left as they are.
#pragma once
#include <string>
#include <string_view>

#include "host/db/adesk.h"
#include "host/os/codepage.h"

namespace host::dxf {

// Files since R2007 hold UTF-8, older ones the code page they declare.
inline bool holdsUtf8(AcDb::AcDbDwgVersion version) { return version >= AcDb::kDHL_1021; }

class TextDecoder {
public:
    TextDecoder() : page_(kDefaultPage) {}
    // Which bytes to expect. Text that isn't what the file says is taken for what it can be: UTF-8
    // when it is well-formed, else the declared code page, else ANSI_1252.
    void expect(std::string_view codePage, bool utf8);
    // The text in UTF-8, with \U+XXXX and \M+nXXXX replaced. A view of `raw` itself when there is
    // nothing to do, else of a buffer that the next call reuses.
    std::string_view decode(std::string_view raw);
    long misdeclared() const { return misdeclared_; } // texts that weren't what the file said
    // Another decoder that expects the same.
    TextDecoder fresh() const;

private:
    static constexpr std::string_view kDefaultPage = "ANSI_1252";
    void fromPage(std::string_view raw);
    std::string pageName_{kDefaultPage};
    CodePage page_;
    bool utf8_ = false;
    long misdeclared_ = 0;
    std::string buffer_;
};

class TextEncoder {
public:
    struct Form {
        std::string codePage;
        bool utf8 = true;
    };
    explicit TextEncoder(const Form& form) : page_(form.codePage), utf8_(form.utf8) {}
    // The bytes of a UTF-8 text as a file holds them, appended: characters that the code page lacks as
    // \U+XXXX, control characters as ^J and the like, which neither form of file can hold bare.
    void append(std::string_view text, std::string& out);

private:
    CodePage page_;
    bool utf8_;
};

} // namespace host::dxf
