// A drawing file as a stream of groups with texts in UTF-8: the scanner, the decoder, progress and
// the look-ahead, and the exceptions by which reading ends early.
#pragma once
#include "host/dxf/dxf.h"
#include "host/dxf/scanner.h"
#include "host/dxf/strings.h"

namespace host::dxf {

// Thrown inside the reader, never out of it.
struct Fault {
    std::string sentence;
};
struct Cancelled {};

class GroupStream {
public:
    GroupStream(std::string_view bytes, const FileProgress& progress)
        : bytes_(bytes), scanner_(bytes), progress_(progress) {}

    // The current group. At the end of the file its code is kEnd.
    static constexpr int kEnd = -32769;
    const Group& now() const { return now_; }
    bool atEnd() const { return now_.code == kEnd; }
    bool at(std::string_view kind) const { return now_.code == 0 && now_.text == kind; }
    void advance();
    // Up to the next group with code 0, or to the end.
    void skipToObject() {
        while (now_.code != 0 && !atEnd()) advance();
    }

    // Visits the groups behind the current one up to the next code 0, texts as they stand in the file,
    // and comes back.
    template <class Visit> void lookAhead(Visit visit) {
        const Scanner::Place place = scanner_.place();
        Group group;
        while (scanner_.next(group) == Scanner::Step::group && group.code != 0) visit(group);
        scanner_.rewind(place);
    }

    std::string_view bytes() const { return bytes_; }
    TextDecoder& decoder() { return decoder_; }
    const Scanner& scanner() const { return scanner_; }
    const char* repair() const { return repair_; }
    long line() const { return line_; }

private:
    void report();
    std::string_view bytes_;
    Scanner scanner_;
    TextDecoder decoder_;
    const FileProgress& progress_;
    size_t nextReport_ = 0;
    Group now_;
    long line_ = 0;
    const char* repair_ = nullptr;
};

// What the head of a file tells before it is read: version (unknown when it names none) and code page.
struct FileHead {
    AcDb::AcDbDwgVersion version = AcDb::kDHL_Unknown;
    std::string versionText, codePage;
};
FileHead lookAtHead(std::string_view bytes);

} // namespace host::dxf
