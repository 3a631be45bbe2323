// Most texts are plain ASCII without a backslash and pass through untouched.
#include "host/dxf/strings.h"

#include "host/os/text.h"

namespace host::dxf {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

struct Look {
    bool ascii = true, escapes = false;
};

Look look(std::string_view text) {
    Look result;
    for (size_t i = 0; i < text.size(); ++i) {
        if (static_cast<unsigned char>(text[i]) >= 0x80) result.ascii = false;
        if (text[i] == '\\' && i + 2 < text.size() && text[i + 2] == '+') result.escapes = true;
    }
    return result;
}

bool isControl(char c) { return static_cast<unsigned char>(c) < 0x20 && c != '\t'; }

} // namespace

void TextDecoder::expect(std::string_view codePage, bool utf8) {
    pageName_ = codePage;
    page_ = CodePage(codePage);
    utf8_ = utf8;
}

TextDecoder TextDecoder::fresh() const {
    TextDecoder other;
    other.expect(pageName_, utf8_);
    return other;
}

void TextDecoder::fromPage(std::string_view raw) {
    page_.decode(raw, buffer_);
    if (page_.isUtf8() || buffer_.find(kReplacement) == std::string::npos) return;
    ++misdeclared_;
    if (isUtf8(raw)) {
        buffer_ = raw;
        return;
    }
    // Byte by byte, so that nothing is lost: what ANSI_1252 leaves open stands for itself.
    static const CodePage western("ANSI_1252");
    buffer_.clear();
    for (char c : raw) {
        const size_t before = buffer_.size();
        western.decode({&c, 1}, buffer_);
        if (std::string_view(buffer_).substr(before) != kReplacement) continue;
        buffer_.resize(before);
        buffer_ += host::utf8(std::wstring(1, static_cast<wchar_t>(static_cast<unsigned char>(c))));
    }
}

std::string_view TextDecoder::decode(std::string_view raw) {
    const Look found = look(raw);
    if (found.ascii && !found.escapes) return raw;
    std::string_view text = raw;
    if (!found.ascii && !(utf8_ && isUtf8(raw))) {
        if (utf8_) ++misdeclared_;
        buffer_.clear();
        fromPage(raw);
        text = buffer_;
    }
    if (!found.escapes) return text;
    buffer_ = decodeEscapes(text);
    return buffer_;
}

void TextEncoder::append(std::string_view text, std::string& out) {
    bool ascii = true, controls = false;
    for (char c : text) ascii &= static_cast<unsigned char>(c) < 0x80, controls |= isControl(c);
    std::string escaped;
    if (controls) {
        for (char c : text)
            if (isControl(c))
                escaped += {'^', static_cast<char>(c + 0x40)};
            else
                escaped += c;
        text = escaped;
    }
    if (ascii || utf8_)
        out += text;
    else
        out += page_.encode(text).bytes;
}

} // namespace host::dxf
