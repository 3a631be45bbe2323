// Advancing through a file, and the first look at its header.
#include "host/dxf/stream.h"

#include <charconv>

namespace host::dxf {

void GroupStream::advance() {
    const Scanner::Step step = scanner_.next(now_);
    line_ = scanner_.line();
    repair_ = scanner_.repair();
    if (step == Scanner::Step::fault) throw Fault{scanner_.fault()};
    if (step == Scanner::Step::end) {
        now_ = {};
        now_.code = kEnd;
        return;
    }
    if (now_.type == GroupType::text && !now_.text.empty()) now_.text = decoder_.decode(now_.text);
    if (progress_ && scanner_.offset() >= nextReport_) report();
}

void GroupStream::report() {
    constexpr size_t kEvery = size_t(1) << 19;
    nextReport_ = scanner_.offset() + kEvery;
    if (!progress_(double(scanner_.offset()) / double(scanner_.size()))) throw Cancelled{};
}

FileHead lookAtHead(std::string_view bytes) {
    Scanner scanner(bytes);
    FileHead head;
    Group group;
    std::string variable;
    bool inHeader = false;
    while (scanner.next(group) == Scanner::Step::group) {
        if (group.code == 2 && bare(group.text) == "HEADER") inHeader = true;
        if (group.code == 0 && (inHeader || group.text != "SECTION")) break;
        if (group.code == 9) variable = bare(group.text);
        if (group.code == 1 && variable == "$ACADVER") head.versionText = bare(group.text);
        if (group.code == 3 && variable == "$DWGCODEPAGE") head.codePage = bare(group.text);
    }
    head.version = versionByName(head.versionText);
    // A later version than any known is read as the latest.
    const std::string_view text = head.versionText;
    int number = 0;
    if (head.version == AcDb::kDHL_Unknown && text.starts_with("AC") &&
        std::from_chars(text.data() + 2, text.data() + text.size(), number).ec == std::errc())
        head.version = number > 1032                    ? AcDb::kDHL_1032
                       : number > 1000 && number < 1009 ? AcDb::kDHL_AC1006
                                                        : AcDb::kDHL_Unknown;
    return head;
}

} // namespace host::dxf
