// How text lies.
#include "host/ent/text_layout.h"

#include <algorithm>
#include <cmath>

#include "host/ge/matrix3d.h"

namespace host {

TextFace faceOf(AcDbObjectId style) {
    TextFace face;
    const auto* record = style.isNull() ? nullptr : AcDbTextStyleTableRecord::cast(style.cell()->object);
    face.fontFile = record ? record->fileName() : L"txt";
    if (!record) return face;
    face.bigFontFile = record->bigFontFileName();
    record->font(face.typeface, face.bold, face.italic);
    face.vertical = record->isVertical();
    face.widthFactor = record->xScale() > 0 ? record->xScale() : 1;
    face.oblique = record->obliquingAngle();
    return face;
}

TextFrame textFrame(const AcGePoint3d& origin, const AcGeVector3d& normal, double rotation) {
    const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(normal);
    const double c = std::cos(rotation), s = std::sin(rotation);
    return {origin, toWorld * AcGeVector3d(c, s, 0), toWorld * AcGeVector3d(-s, c, 0)};
}

AcDbExtents textExtents(const TextFrame& frame, const TextFace& face, double height,
                        const std::wstring& coded) {
    TextFace plain = face;
    plain.backward = plain.upsideDown = false;
    const TextExtents size = textMetrics()->measure(plain, height, plainLine(coded).text);
    const double alongX = face.backward ? -1 : 1, alongY = face.upsideDown ? -1 : 1;
    AcDbExtents box;
    for (double x : {size.low.x, size.high.x})
        for (double y : {size.low.y, size.high.y}) box.addPoint(frame.at(x * alongX, y * alongY));
    return box;
}

namespace {

double widthOf(const std::wstring& line, const TextFace& face, double height) {
    return textMetrics()->measure(face, height, plainLine(line).text).advance;
}

bool standsAlone(wchar_t c) { return c >= 0x2E80; }

// The words of a line with the blanks behind them.
std::vector<std::wstring> wordsOf(const std::wstring& line) {
    std::vector<std::wstring> words;
    bool fresh = true;
    for (size_t i = 0; i < line.size(); ++i) {
        if (fresh || standsAlone(line[i])) words.emplace_back();
        words.back() += line[i];
        const bool blankNext = i + 1 < line.size() && line[i + 1] == L' ';
        fresh = !blankNext && (line[i] == L' ' || standsAlone(line[i]));
    }
    return words;
}

std::wstring withoutBlanksBehind(std::wstring line) {
    line.erase(line.find_last_not_of(L' ') + 1);
    return line;
}

void wrapLine(const std::wstring& line, const TextFace& face, double height, double width,
              std::vector<WrappedLine>& out) {
    std::wstring current;
    const auto flush = [&] {
        const std::wstring text = withoutBlanksBehind(current);
        out.push_back({text, widthOf(text, face, height)});
        current.clear();
    };
    for (const std::wstring& word : wordsOf(line)) {
        if (!current.empty() && width > 0 &&
            widthOf(withoutBlanksBehind(current + word), face, height) > width)
            flush();
        current += word;
    }
    flush();
}

} // namespace

std::vector<WrappedLine> wrapText(const std::wstring& text, const TextFace& face, double height,
                                  double width) {
    std::vector<WrappedLine> out;
    for (size_t from = 0; from <= text.size();) {
        const size_t end = std::min(text.find(L'\n', from), text.size());
        wrapLine(text.substr(from, end - from), face, height, width, out);
        from = end + 1;
    }
    return out;
}

} // namespace host
