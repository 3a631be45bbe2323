// JSON as text.
#include "apps/corvane/json.h"

#include <cmath>
#include <cstdio>
#include <utility>

#include "host/os/numbers.h"

namespace app {

void JsonWriter::place(std::string_view key) {
    if (!first_) out_ += ',';
    if (depth_ > 0) out_ += '\n' + std::string(2 * size_t(depth_), ' ');
    first_ = false;
    if (key.empty()) return;
    quote(key);
    out_ += ": ";
}

void JsonWriter::open(std::string_view key, char bracket) {
    place(key);
    out_ += bracket;
    ++depth_;
    first_ = true;
}

void JsonWriter::close(char bracket) {
    --depth_;
    if (!first_) out_ += '\n' + std::string(2 * size_t(depth_), ' ');
    out_ += bracket;
    first_ = false;
}

void JsonWriter::quote(std::string_view value) {
    out_ += '"';
    for (const char c : value) {
        if (c == '"' || c == '\\') {
            out_ += '\\';
            out_ += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            char code[8];
            std::snprintf(code, sizeof code, "\\u%04x", unsigned(c));
            out_ += code;
        } else {
            out_ += c;
        }
    }
    out_ += '"';
}

void JsonWriter::text(std::string_view key, std::string_view value) { place(key), quote(value); }
void JsonWriter::whole(std::string_view key, long value) { place(key), out_ += std::to_string(value); }
void JsonWriter::real(std::string_view key, double value) {
    place(key);
    out_ += std::isfinite(value) ? host::formatReal(value + 0.0) : "null"; // no negative zero
}
void JsonWriter::truth(std::string_view key, bool value) { place(key), out_ += value ? "true" : "false"; }
void JsonWriter::null(std::string_view key) { place(key), out_ += "null"; }

std::string JsonWriter::take() { return std::exchange(out_, {}) + '\n'; }

} // namespace app
