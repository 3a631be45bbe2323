// The scanner's binary form: codes of one byte in R12 and before (255 announces two more), of two
// since; numbers little-endian, texts ended by a zero byte.
#include "host/dxf/scanner.h"

#include <bit>
#include <cmath>
#include <cstring>

namespace host::dxf {

static_assert(std::endian::native == std::endian::little, "binary drawings are read in place");

template <class T> bool Scanner::binaryNumber(T& value) {
    if (bytes_.size() - at_ < sizeof(T)) return false;
    std::memcpy(&value, bytes_.data() + at_, sizeof(T));
    at_ += sizeof(T);
    return true;
}

bool Scanner::binaryCode(int& code) {
    std::uint16_t wide = 0;
    if (!shortCodes_) {
        if (!binaryNumber(wide)) return false;
        return code = static_cast<std::int16_t>(wide), true;
    }
    std::uint8_t narrow = 0;
    if (!binaryNumber(narrow)) return false;
    if (narrow != 255) return code = narrow, true;
    if (!binaryNumber(wide)) return false;
    return code = wide, true;
}

bool Scanner::binaryText(std::string_view& text) {
    const char* from = bytes_.data() + at_;
    const void* end = std::memchr(from, 0, bytes_.size() - at_);
    if (!end) return false;
    text = {from, size_t(static_cast<const char*>(end) - from)};
    at_ += text.size() + 1;
    return true;
}

Scanner::Step Scanner::nextBinary(Group& group) {
    if (at_ >= bytes_.size()) return Step::end;
    line_ = long(at_);
    if (!binaryCode(group.code)) return onlyPaddingLeft() ? Step::end : fail("the file ends in a group code");
    group.type = typeOf(group.code);
    group.text = {};
    group.integer = 0;
    bool whole = true;
    auto integer = [&](auto value) {
        whole = binaryNumber(value);
        group.integer = value;
    };
    switch (group.type) {
    case GroupType::real:
        whole = binaryNumber(group.real);
        if (whole && !std::isfinite(group.real)) {
            group.real = 0;
            repair_ = "a value that is no finite number was replaced by 0";
        }
        break;
    case GroupType::boolean: integer(std::uint8_t{}); break;
    case GroupType::int16: integer(std::int16_t{}); break;
    case GroupType::int32: integer(std::int32_t{}); break;
    case GroupType::int64: integer(std::int64_t{}); break;
    case GroupType::bytes: {
        std::uint8_t length = 0;
        whole = binaryNumber(length) && bytes_.size() - at_ >= length;
        if (whole) group.text = bytes_.substr(at_, length), at_ += length;
        break;
    }
    default:
        whole = binaryText(group.text);
        if (group.type == GroupType::handle) readHandle(group, group.text);
        if (group.code == 0) group.text = bare(group.text);
    }
    if (whole) return Step::group;
    return fail("the file ends inside the value of group code " + std::to_string(group.code));
}

} // namespace host::dxf
