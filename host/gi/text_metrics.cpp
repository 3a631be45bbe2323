// The plain face, and control codes of single-line text.
#include "host/gi/text_metrics.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace host {
namespace {

// Capitals are 1 high and letters 0.9 apart, of which 0.7 is ink; those of the Far East fill a square.
constexpr double kAdvance = 0.9, kInk = 0.7, kWideAdvance = 1.3, kWideInk = 1.2, kDescent = 0.3;

bool isWide(wchar_t c) {
    return (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0xA4CF) || (c >= 0xAC00 && c <= 0xD7A3) ||
           (c >= 0xF900 && c <= 0xFAFF) || (c >= 0xFE30 && c <= 0xFE4F) || (c >= 0xFF00 && c <= 0xFF60) ||
           (c >= 0xFFE0 && c <= 0xFFE6) || (c >= 0x20000 && c <= 0x3FFFD);
}

bool isBlank(wchar_t c) { return c == L' ' || c == L'\t' || c == 0xA0 || c == 0x3000; }

class PlainMetrics final : public TextMetrics {
public:
    TextExtents measure(const TextFace& face, double height, std::wstring_view text) override {
        TextExtents result;
        if (!(height > 0) || !std::isfinite(height)) return result;
        result.ascent = height;
        result.descent = kDescent * height;
        forEachBox(face, height, text, [&](double x, double ink, bool drawn, double advance) {
            result.advance = x + advance;
            if (!drawn) return;
            if (result.high.y == 0) result.low.set(x, 0);
            result.high.set(x + ink + std::max(0.0, std::tan(face.oblique)) * height, height);
        });
        return result;
    }

    TextOutline outlines(const TextFace& face, double height, std::wstring_view text) override {
        TextOutline out;
        if (!(height > 0) || !std::isfinite(height)) return out;
        const double lean = std::tan(face.oblique) * height;
        forEachBox(face, height, text, [&](double x, double ink, bool drawn, double) {
            if (!drawn) return;
            using Step = TextOutline::Step;
            out.steps.insert(out.steps.end(), {Step::move, Step::line, Step::line, Step::line, Step::close});
            out.points.insert(out.points.end(),
                              {{x, 0}, {x + ink, 0}, {x + ink + lean, height}, {x + lean, height}});
        });
        return out;
    }

private:
    template <class Visit>
    static void forEachBox(const TextFace& face, double height, std::wstring_view text, Visit&& visit) {
        double x = 0;
        for (wchar_t c : text) {
            const double scale = height * face.widthFactor;
            const double advance = (isWide(c) ? kWideAdvance : kAdvance) * scale * face.tracking;
            visit(x, (isWide(c) ? kWideInk : kInk) * scale, !isBlank(c), advance);
            x += advance;
        }
    }
};

TextMetrics*& current() {
    static TextMetrics* metrics = nullptr;
    return metrics;
}

std::optional<unsigned> number(std::wstring_view text, std::size_t at, std::size_t digits, unsigned base) {
    if (at + digits > text.size()) return std::nullopt;
    unsigned value = 0;
    for (std::size_t i = at; i < at + digits; ++i) {
        const wchar_t c = text[i];
        const unsigned digit = c >= L'0' && c <= L'9'   ? unsigned(c - L'0')
                               : c >= L'a' && c <= L'f' ? unsigned(c - L'a') + 10
                               : c >= L'A' && c <= L'F' ? unsigned(c - L'A') + 10
                                                        : 99;
        if (digit >= base) return std::nullopt;
        value = value * base + digit;
    }
    return value;
}

class LineReader {
public:
    explicit LineReader(std::wstring_view coded) : coded_(coded) {}

    PlainLine read() {
        for (std::size_t i = 0; i < coded_.size();) i += step(i);
        for (auto& open : open_) end(open);
        return std::move(line_);
    }

private:
    using Mark = PlainLine::Mark;

    // Reads one character or code and gives its length.
    std::size_t step(std::size_t i) {
        if (coded_[i] == L'%' && i + 2 < coded_.size() && coded_[i + 1] == L'%')
            if (const std::size_t length = code(i)) return length;
        if (coded_[i] == L'\\' && i + 2 < coded_.size() && coded_[i + 2] == L'+' &&
            (coded_[i + 1] == L'U' || coded_[i + 1] == L'u')) {
            if (const auto value = number(coded_, i + 3, 4, 16)) return add(*value, 7);
        }
        if (coded_[i] == L'^' && i + 1 < coded_.size()) {
            const wchar_t next = coded_[i + 1];
            if (next == L' ') return add(L'^', 2);
            if (next >= L'@' && next <= L'_') return add(L' ', 2);
        }
        return add(static_cast<unsigned>(coded_[i] < 32 ? L' ' : coded_[i]), 1);
    }

    std::size_t code(std::size_t i) {
        switch (coded_[i + 2]) {
        case L'd':
        case L'D': return add(0xB0, 3);
        case L'p':
        case L'P': return add(0xB1, 3);
        case L'c':
        case L'C': return add(0x2205, 3);
        case L'%': return add(L'%', 3);
        case L'u':
        case L'U': return toggle(Mark::Kind::under);
        case L'o':
        case L'O': return toggle(Mark::Kind::over);
        case L'k':
        case L'K': return toggle(Mark::Kind::through);
        default: break;
        }
        for (std::size_t digits = 3; digits >= 1; --digits)
            if (const auto value = number(coded_, i + 2, digits, 10))
                return add(*value < 32 ? L' ' : *value, 2 + digits);
        return 0;
    }

    std::size_t add(unsigned character, std::size_t length) {
        line_.text += static_cast<wchar_t>(character);
        return length;
    }

    std::size_t toggle(Mark::Kind kind) {
        auto& open = open_[static_cast<std::size_t>(kind)];
        if (open)
            end(open);
        else
            open = Mark{kind, line_.text.size(), 0};
        return 3;
    }

    void end(std::optional<Mark>& open) {
        if (!open) return;
        open->to = line_.text.size();
        if (open->to > open->from) line_.marks.push_back(*open);
        open.reset();
    }

    std::wstring_view coded_;
    PlainLine line_;
    std::optional<Mark> open_[3];
};

} // namespace

TextMetrics* textMetrics() {
    static PlainMetrics plain;
    return current() ? current() : &plain;
}

void setTextMetrics(TextMetrics* metrics) { current() = metrics; }

PlainLine plainLine(std::wstring_view coded) { return LineReader(coded).read(); }

} // namespace host
