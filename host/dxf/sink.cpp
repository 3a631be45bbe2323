// Both forms side by side, so that they can be compared; scanner.cpp and scanner_binary.cpp read them.
#include "host/dxf/sink.h"

#include <charconv>
#include <cmath>
#include <cstring>

#include "host/dxf/scanner.h"
#include "host/dxf/sentinel.h"
#include "host/os/numbers.h"

namespace host::dxf {
namespace {

void appendInteger(std::string& out, std::int64_t value) {
    char digits[24];
    out.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

void appendHandle(std::string& out, std::uint64_t value) {
    char digits[16];
    char* end = std::to_chars(digits, digits + sizeof digits, value, 16).ptr;
    for (char* c = digits; c != end; ++c)
        if (*c >= 'a') *c = static_cast<char>(*c - 'a' + 'A');
    out.append(digits, end);
}

void appendHex(std::string& out, std::string_view bytes) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    for (char c : bytes) {
        const auto value = static_cast<unsigned char>(c);
        out += kDigits[value >> 4];
        out += kDigits[value & 15];
    }
}

void appendCode(std::string& out, int code) {
    if (code >= 0 && code < 100) out += code < 10 ? "  " : " ";
    appendInteger(out, code);
    out += '\n';
}

template <class T> void appendRaw(std::string& out, T value) {
    char bytes[sizeof(T)];
    std::memcpy(bytes, &value, sizeof(T));
    out.append(bytes, sizeof(T));
}

} // namespace

void GroupSink::close() {
    closed_ += current_.size();
    full_.push_back(std::move(current_));
    current_ = {};
    open();
}

std::vector<std::string_view> GroupSink::chunks() {
    std::vector<std::string_view> all(full_.begin(), full_.end());
    all.emplace_back(current_);
    return all;
}

void TextSink::write(const Group& group) {
    std::string& out = room();
    appendCode(out, group.code);
    switch (group.type) {
    case GroupType::text: encoder_.append(group.text, out); break;
    case GroupType::real: appendReal(out, group.real); break;
    case GroupType::handle: appendHandle(out, group.handle()); break;
    case GroupType::bytes: appendHex(out, group.text); break;
    default: appendInteger(out, group.integer);
    }
    out += '\n';
}

BinarySink::BinarySink(TextEncoder encoder, bool shortCodes, bool first)
    : GroupSink(std::move(encoder)), shortCodes_(shortCodes) {
    if (first) room() += kBinarySentinel;
}

void BinarySink::code(std::string& out, int code) {
    if (!shortCodes_) return appendRaw(out, static_cast<std::int16_t>(code));
    if (code >= 0 && code < 255) return appendRaw(out, static_cast<std::uint8_t>(code));
    out += '\xFF';
    appendRaw(out, static_cast<std::int16_t>(code));
}

// The width goes by the code, as the reader will see it.
void BinarySink::integer(std::string& out, const Group& group) {
    auto put = [&](auto narrow) {
        // A bit pattern above the signed range reads back as its negative twin; that isn't lost.
        using Narrow = decltype(narrow);
        if constexpr (sizeof(Narrow) < 8) {
            constexpr std::int64_t kMost = (std::int64_t(1) << (8 * sizeof(Narrow))) - 1;
            if (group.integer > kMost || group.integer < -(kMost / 2) - 1) ++cut_;
        }
        appendRaw(out, static_cast<Narrow>(group.integer));
    };
    switch (typeOf(group.code)) {
    case GroupType::boolean: return put(std::uint8_t{});
    case GroupType::int16: return put(std::int16_t{});
    case GroupType::int32: return put(std::int32_t{});
    default: return put(std::int64_t{});
    }
}

void BinarySink::chunk(std::string& out, const Group& group) {
    constexpr size_t kLongest = 255;
    std::string_view rest = group.text;
    do {
        const std::string_view piece = rest.substr(0, kLongest);
        code(out, group.code);
        out += static_cast<char>(piece.size());
        out += piece;
        rest.remove_prefix(piece.size());
    } while (!rest.empty());
}

void BinarySink::write(const Group& group) {
    std::string& out = room();
    const GroupType form = typeOf(group.code);
    if (form == GroupType::bytes) return chunk(out, group);
    code(out, group.code);
    switch (form) {
    case GroupType::real: appendRaw(out, std::isfinite(group.real) ? group.real : 0.0); break;
    case GroupType::text:
    case GroupType::handle:
        // Some old variables hold names under the codes of handles.
        if (group.type == GroupType::handle)
            appendHandle(out, group.handle());
        else
            encoder_.append(group.text, out);
        out += '\0';
        break;
    default: integer(out, group);
    }
}

} // namespace host::dxf
