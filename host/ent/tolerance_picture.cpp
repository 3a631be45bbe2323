// Taking a tolerance's text apart into rows and cells, and drawing them.
#include "host/ent/tolerance_picture.h"

#include <vector>

#include "host/db/database.h"
#include "host/ent/filing.h"
#include "host/gi/textstyle.h"

namespace host {
namespace {

struct SymbolRow {
    wchar_t letter, symbol;
};
constexpr SymbolRow kSymbols[] = {
    {L'a', L'\u2220'}, {L'b', L'\u27c2'}, {L'c', L'\u23e5'}, {L'd', L'\u2313'}, {L'e', L'\u25cb'},
    {L'f', L'\u2225'}, {L'g', L'\u232d'}, {L'h', L'\u2197'}, {L'i', L'\u232f'}, {L'j', L'\u2316'},
    {L'k', L'\u2312'}, {L'l', L'\u24c1'}, {L'm', L'\u24c2'}, {L'n', L'\u2300'}, {L'p', L'\u24c5'},
    {L'r', L'\u25ce'}, {L's', L'\u24c8'}, {L't', L'\u2330'}, {L'u', L'\u23e4'},
};

std::vector<std::wstring> split(const std::wstring& text, const std::wstring& mark) {
    std::vector<std::wstring> parts(1);
    for (size_t at = 0; at < text.size();) {
        if (text.compare(at, mark.size(), mark) == 0)
            parts.emplace_back(), at += mark.size();
        else
            parts.back() += text[at++];
    }
    return parts;
}

// {\Fgdt;j} is a letter in the tolerance font.
std::wstring plain(std::wstring cell) {
    static const std::wstring kFont = L"{\\Fgdt;";
    for (size_t at = cell.find(kFont); at != std::wstring::npos; at = cell.find(kFont, at)) {
        const size_t end = cell.find(L'}', at);
        if (end == std::wstring::npos) break;
        std::wstring letters = cell.substr(at + kFont.size(), end - at - kFont.size());
        for (wchar_t& letter : letters)
            for (const SymbolRow& row : kSymbols)
                if (row.letter == letter) letter = row.symbol;
        cell.replace(at, end + 1 - at, letters);
    }
    return cell;
}

// The height of the dimension style's texts.
double heightOf(const KeptEntity& entity) {
    constexpr double kDefault = 0.18;
    Group name, height, scale;
    if (!entity.database() || !entity.groups().find(3, name)) return kDefault;
    const AcDbObjectId id = entity.database()->find(AcDbDimStyleTable::desc(), name.wide());
    AcDbObjectPointer<AcDbDimStyleTableRecord> style(id, AcDb::kForRead);
    if (!style || !style->tail() || !style->tail()->kept.find(140, height)) return kDefault;
    const bool scaled = style->tail()->kept.find(40, scale) && scale.real > 0;
    const double total = height.real * (scaled ? scale.real : 1);
    return finite(total) && total > 0 ? total : kDefault;
}

struct Frame {
    AcGePoint3d place;
    AcGeVector3d along = AcGeVector3d::kXAxis, normal = AcGeVector3d::kZAxis;
    double height = 0;
    AcGeVector3d up() const { return normal.crossProduct(along).normal(); }
};

void drawRow(const std::wstring& row, AcGePoint3d left, const Frame& frame, AcGiWorldDraw& context) {
    AcGiTextStyle style;
    style.setTextSize(frame.height);
    for (const std::wstring& raw : split(row, L"%%v")) {
        const std::wstring cell = plain(raw);
        if (cell.empty()) continue;
        const double width = style.extents(cell.c_str(), false, -1, false).x + frame.height;
        const AcGeVector3d across = frame.along * width, half = frame.up() * frame.height;
        const AcGePoint3d box[] = {left - half, left - half + across, left + half + across, left + half,
                                   left - half};
        context.geometry().polyline(5, box);
        const AcGePoint3d start = left + frame.along * (frame.height / 2) - half * 0.5;
        context.geometry().text(start, frame.normal, frame.along, cell.c_str(), -1, false, style);
        left += across;
    }
}

} // namespace

bool drawTolerance(const KeptEntity& entity, AcGiWorldDraw& context) {
    Frame frame;
    std::wstring text;
    for (const Group group : entity.groups()) {
        if (group.code == 1) text = group.wide();
        takeTriple(group, 10, frame.place) || takeTriple(group, 11, frame.along) ||
            takeTriple(group, 210, frame.normal);
    }
    frame.normal = unitNormal(frame.normal);
    if (!(frame.along.length() > 0)) frame.along = AcGeVector3d::kXAxis;
    frame.along = frame.along.normal();
    frame.height = heightOf(entity);
    AcGePoint3d left = frame.place;
    for (const std::wstring& row : split(text, L"^J")) {
        drawRow(row, left, frame, context);
        left -= frame.up() * (2 * frame.height);
    }
    return !text.empty();
}

} // namespace host
