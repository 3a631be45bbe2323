// How wide text is and what its letters look like, asked by entities and answered by whoever knows
// fonts (host/picture). Until someone does, a plain fixed-width face answers, so nobody asks in vain.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/ge/point2d.h"

namespace host {

// A font and how it is set, as a text style and an entity together say.
struct TextFace {
    std::wstring fontFile{};    // "txt.shx", "arial.ttf"; used when there is no typeface
    std::wstring bigFontFile{}; // for characters of the Far East
    std::wstring typeface{};    // "Arial"; empty when the file rules
    bool bold = false, italic = false;
    double widthFactor = 1.0;
    double oblique = 0.0;  // radians to the right
    double tracking = 1.0; // factor of the distance between characters
    bool vertical = false, backward = false, upsideDown = false;

    bool operator==(const TextFace&) const = default;
};

// One line of text from the start of its baseline, in drawing units; height is that of a capital.
struct TextExtents {
    double advance = 0;    // to where the next character would stand
    AcGePoint2d low, high; // the tight box of what is drawn; both zero when nothing is
    double ascent = 0;     // of the font above the baseline, letters with accents included
    double descent = 0;    // below it, as a positive number
};

// Closed contours to be filled by the odd-even rule.
struct TextOutline {
    enum class Step : std::uint8_t { move, line, quadratic, cubic, close }; // takes 1, 1, 2, 3 and 0 points
    std::vector<Step> steps;
    std::vector<AcGePoint2d> points;
};

class TextMetrics {
public:
    virtual ~TextMetrics() = default;
    // `text` is one line without control codes. A height that isn't above 0, or no number, measures nothing.
    virtual TextExtents measure(const TextFace& face, double height, std::wstring_view text) = 0;
    virtual TextOutline outlines(const TextFace& face, double height, std::wstring_view text) = 0;
};

// Never null. Setting null gives the plain face back.
TextMetrics* textMetrics();
void setTextMetrics(TextMetrics* metrics);

// One line with its control codes taken out: %%d degree, %%p plus-minus, %%c diameter, %%% percent,
// %%nnn the character of that number, \U+XXXX; %%u, %%o and %%k switch lines below, above and through,
// whose places are told by character. A caret code (^I tab) becomes a blank.
struct PlainLine {
    struct Mark {
        enum class Kind : std::uint8_t { under, over, through } kind;
        std::size_t from, to; // characters [from, to) of `text`
    };
    std::wstring text;
    std::vector<Mark> marks;
};
PlainLine plainLine(std::wstring_view coded);

} // namespace host
