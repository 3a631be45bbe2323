// Cuts the bytes of a drawing file, text or binary, into groups. It knows codes, types and line ends;
// code pages and escapes stand in strings.h, what the groups mean in reader.h.
#pragma once
#include <string>
#include <string_view>

#include "host/db/groups.h"

namespace host::dxf {

// The type of a code's value, as groupType() tells it, looked up in a table.
GroupType typeOf(int code);

class Scanner {
public:
    enum class Step { group, end, fault };
    // A place between two groups, to come back to.
    struct Place {
        size_t at = 0;
        long line = 0;
    };

    // The bytes of a whole file; they must outlive the scanner and, for text, the groups.
    explicit Scanner(std::string_view bytes);

    bool binary() const { return binary_; }
    bool marked() const { return marked_; } // begins with the byte order mark of UTF-8
    size_t size() const { return bytes_.size(); }
    size_t offset() const { return at_; }

    // The next group; comments (999) are passed over. Texts are the file's own bytes; the text of a
    // handle stands beside its number. Bytes are valid up to the next call.
    Step next(Group& group);
    // What was wrong, after a fault.
    const std::string& fault() const { return fault_; }
    // The sentence about a value that had to be put right in the last group, or null.
    const char* repair() const { return repair_; }
    // Where the last group stands: the line of its code, counted from 1, in text; the byte in binary.
    long line() const { return line_; }
    const char* lineWord() const { return binary_ ? "byte" : "line"; }

    Place place() const { return {at_, lines_}; }
    void rewind(const Place& place) { at_ = place.at, lines_ = place.line; }

private:
    Step nextText(Group& group);
    Step nextBinary(Group& group);
    bool takePlainCode(int& code);
    Step takeCode(int& code);
    bool takeLine(std::string_view& line);
    bool onlyPaddingLeft() const;
    Step fail(std::string sentence) { return fault_ = std::move(sentence), Step::fault; }
    Step failValue(const char* expected, int code, std::string_view found);
    bool readReal(Group& group, std::string_view text);
    bool readInteger(Group& group, std::string_view text);
    void readHandle(Group& group, std::string_view text);
    void readHex(Group& group, std::string_view text);
    bool binaryCode(int& code);
    bool binaryText(std::string_view& text);
    template <class T> bool binaryNumber(T& value);

    std::string_view bytes_;
    size_t at_ = 0;
    long lines_ = 0; // lines read so far
    long line_ = 0;
    char lineEnd_ = '\n';
    bool binary_ = false, shortCodes_ = false, marked_ = false;
    const char* repair_ = nullptr;
    std::string fault_, chunk_;
};

// Text without blanks, tabs and control characters around it.
std::string_view bare(std::string_view text);

} // namespace host::dxf
