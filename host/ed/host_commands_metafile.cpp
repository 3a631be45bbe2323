// WMFOUT and WMFIN: what the view shows as a metafile, and metafiles as blocks of polylines. The file's
// format is host/wmf's.
#include <algorithm>
#include <cmath>

#include "host/ed/host_command_tools.h"
#include "host/ed/prompting.h"
#include "host/ent/blockreference.h"
#include "host/ent/polyline.h"
#include "host/gi/text_metrics.h"
#include "host/os/files.h"
#include "host/os/text.h"
#include "host/view/collector.h"
#include "host/view/database_source.h"
#include "host/view/readable.h"
#include "host/view/screen.h"
#include "host/wmf/metafile.h"

namespace host {
namespace {

constexpr double kSheetMillimetres = 254; // of its longer side
constexpr int kMostChords = 64;           // of one curve of a letter

std::optional<std::wstring> askMetafile(const wchar_t* title, int flags) {
    resbuf answer;
    answer.restype = RTNONE;
    if (acedGetFileD(title, nullptr, L"wmf", flags, &answer) != RTNORM) return std::nullopt;
    std::wstring path = answer.resval.rstring;
    acutDelString(answer.resval.rstring);
    const size_t name = path.find_last_of(L'/') + 1;
    if (path.find(L'.', name) == std::wstring::npos) path += L".wmf";
    return path;
}

// -- WMFOUT -------------------------------------------------------------------------------------------

// What is seen in a view, as shapes of a sheet the size of the view.
class SheetMaker {
public:
    SheetMaker(const DisplayList& list, const ViewFrame& view) : list_(list), view_(view) {
        sheet_.width = view.width(), sheet_.height = view.height;
        chordError_ = 0.2 * std::max(sheet_.width, sheet_.height) / kMetafileSteps;
    }

    Metafile make() {
        for (const DisplayPrimitive& primitive : list_.primitives) {
            MetafileShape shape;
            const DisplayStyle& style = list_.styleOf(primitive);
            shape.rgb = style.color.foreground ? 0 : style.color.rgb; // paper is white
            shape.width = style.weight / 100.0 / kSheetMillimetres * std::max(sheet_.width, sheet_.height);
            if (fill(primitive, shape)) sheet_.shapes.push_back(std::move(shape));
        }
        return std::move(sheet_);
    }

private:
    using Primitive = DisplayPrimitive::Kind;

    bool fill(const DisplayPrimitive& primitive, MetafileShape& shape) const {
        switch (primitive.kind) {
        case Primitive::ray:
        case Primitive::xline: return false; // they have no end on any sheet
        case Primitive::text:
            shape.kind = MetafileShape::Kind::oddEven;
            return addText(list_.texts[primitive.first], shape);
        case Primitive::area: shape.kind = MetafileShape::Kind::oddEven; break;
        case Primitive::ribbon: shape.kind = MetafileShape::Kind::nonZero; break;
        case Primitive::line: break;
        }
        for (std::uint32_t i = primitive.first; i < primitive.first + primitive.count; ++i) {
            for (const AcGePoint3d& point : list_.contour(i))
                if (!place(point, shape)) return false;
            shape.ends.push_back(std::uint32_t(shape.points.size()));
        }
        return !shape.points.empty();
    }

    bool place(const AcGePoint3d& world, MetafileShape& shape) const {
        const auto seen = view_.seen(world);
        if (!seen) return false;
        shape.points.push_back(
            {seen->x - view_.center.x + 0.5 * sheet_.width, seen->y - view_.center.y + 0.5 * sheet_.height});
        return true;
    }

    // Letters, with their curves as chords that stay within a fraction of a step of the file.
    bool addText(const DisplayText& text, MetafileShape& shape) const {
        const TextOutline outline = textMetrics()->outlines(list_.faces[text.face], 1, text.text);
        const auto to = [&](const AcGePoint2d& p) {
            return place(text.origin + text.right * p.x + text.up * p.y, shape);
        };
        const double error = chordError_ / std::max(text.right.length(), text.up.length());
        using Step = TextOutline::Step;
        const AcGePoint2d* p = outline.points.data();
        AcGePoint2d at;
        const auto finish = [&] {
            if (shape.points.size() > (shape.ends.empty() ? 0 : shape.ends.back()))
                shape.ends.push_back(std::uint32_t(shape.points.size()));
        };
        for (const Step step : outline.steps) {
            bool seen = true;
            switch (step) {
            case Step::move: finish(), seen = to(at = *p++); break;
            case Step::line: seen = to(at = *p++); break;
            case Step::quadratic: {
                const AcGePoint2d c1 = at + (p[0] - at) * (2.0 / 3), c2 = p[1] + (p[0] - p[1]) * (2.0 / 3);
                seen = addCurve(at, c1, c2, p[1], error, to), at = p[1], p += 2;
                break;
            }
            case Step::cubic: seen = addCurve(at, p[0], p[1], p[2], error, to), at = p[2], p += 3; break;
            case Step::close: finish(); break;
            }
            if (!seen) return false;
        }
        return finish(), !shape.points.empty();
    }
    template <class To>
    static bool addCurve(const AcGePoint2d& a, const AcGePoint2d& b, const AcGePoint2d& c,
                         const AcGePoint2d& d, double error, To to) {
        // Chords of a cubic keep within an eighth of its second derivative, at most 6 times these.
        const double bend = std::max(((a - b) + (c - b)).length(), ((b - c) + (d - c)).length());
        const int chords =
            int(std::clamp(std::ceil(std::sqrt(0.75 * bend / error)), 1.0, double(kMostChords)));
        bool seen = true;
        for (int i = 1; i <= chords && seen; ++i) {
            const double t = double(i) / chords, s = 1 - t;
            seen = to(AcGePoint2d((a.x * s + 3 * b.x * t) * s * s + (3 * c.x * s + d.x * t) * t * t,
                                  (a.y * s + 3 * b.y * t) * s * s + (3 * c.y * s + d.y * t) * t * t));
        }
        return seen;
    }

    const DisplayList& list_;
    const ViewFrame& view_;
    Metafile sheet_;
    double chordError_ = 0;
};

DisplayList displayOf(const std::vector<AcDbObjectId>& ids, const ViewFrame& view) {
    screen(); // entities draw their blocks through it
    DatabaseSource source(&drawing());
    DisplayOptions options;
    options.view = view;
    options.chordError = 0.2 * std::max(view.width(), view.height) / kMetafileSteps;
    DisplayCollector collector(source, options);
    for (const AcDbObjectId id : ids)
        if (const auto* entity = readable<AcDbEntity>(id)) collector.add(*entity, id);
    return collector.take();
}

// -- WMFIN --------------------------------------------------------------------------------------------

AcCmColor colorOf(std::uint32_t rgb) {
    AcCmColor color, index;
    color.setRGB(Adesk::UInt8(rgb >> 16), Adesk::UInt8(rgb >> 8), Adesk::UInt8(rgb));
    index.setColorIndex(rgb == 0 ? Adesk::UInt16(7) : color.colorIndex()); // black stands for the foreground
    return rgb == 0 || index.rgb() == rgb ? index : color;
}

// A contour as a polyline, upper left corner of the sheet in the origin.
std::unique_ptr<AcDbPolyline> polylineOf(const MetafileShape& shape, size_t from, size_t to, double height,
                                         double unit) {
    std::vector<AcDbPolyline::Vertex> vertices;
    for (size_t i = from; i < to; ++i) {
        const AcGePoint2d point(shape.points[i].x * unit, (shape.points[i].y - height) * unit);
        if (vertices.empty() || vertices.back().point.distanceTo(point) > 1e-3 * unit)
            vertices.push_back({point});
    }
    bool closed = shape.kind != MetafileShape::Kind::stroke;
    if (vertices.size() > 2 && vertices.front().point.distanceTo(vertices.back().point) <= 1e-3 * unit)
        vertices.pop_back(), closed = true;
    if (vertices.size() < 2) return nullptr;
    auto polyline = std::make_unique<AcDbPolyline>();
    polyline->setVertices(std::move(vertices));
    polyline->setClosed(closed);
    return polyline;
}

std::wstring freeBlockName() {
    for (int i = 0;; ++i) {
        const std::wstring name = L"WMF" + std::to_wstring(i);
        if (drawing().find(AcDbBlockTable::desc(), name).isNull()) return name;
    }
}

AcDbObjectId blockOf(const Metafile& sheet, double unit) {
    auto made = std::make_unique<AcDbBlockTableRecord>();
    made->setName(freeBlockName().c_str());
    AcDbObjectPointer<AcDbBlockTable> table(drawing().blockTableId(), AcDb::kForWrite);
    AcDbObjectId id;
    if (!table || table->add(id, made.get()) != Acad::eOk) return {};
    AcDbBlockTableRecord* block = made.release();
    for (const MetafileShape& shape : sheet.shapes) {
        std::uint32_t from = 0;
        for (const std::uint32_t end : shape.ends) {
            auto polyline = polylineOf(shape, from, end, sheet.height, unit);
            from = end;
            if (!polyline) continue;
            polyline->setDatabaseDefaults(&drawing());
            polyline->setLayer(L"0");
            polyline->setColor(colorOf(shape.rgb));
            if (block->appendAcDbEntity(polyline.get()) == Acad::eOk) polyline.release()->close();
        }
    }
    block->close();
    return id;
}

// Drawing units to one of the sheet, so that at a scale of 2 the sheet fills the view, as it did when
// it was written from one of these proportions.
double sheetUnit(const Metafile& sheet, const ViewFrame& view) {
    const double across = view.width() / sheet.width, down = view.height / sheet.height;
    const bool wide = sheet.width >= sheet.height;
    const double longer = wide ? across : down, shorter = wide ? down : across;
    // The shorter side was rounded up to a step of the file.
    const double steps = std::min(sheet.width, sheet.height);
    return 0.5 * (longer * (steps - 1) <= shorter * steps ? longer : shorter);
}

} // namespace

void metafileOutCommand() {
    const auto path = askMetafile(L"Write metafile", 1);
    if (!path) return;
    const std::vector<AcDbObjectId> ids = askObjects(false);
    if (ids.empty()) return;
    const ViewFrame view = surroundings().view;
    const std::string bytes = metafileBytes(SheetMaker(displayOf(ids, view), view).make());
    if (bytes.empty()) return printLine(L"\nThe view has no size.");
    if (const FileError error = writeWhole(utf8(*path), bytes))
        printLine(L"\nNot written: " + wide(error.message));
}

void metafileInCommand() {
    const auto path = askMetafile(L"Read metafile", 0);
    if (!path) return;
    std::string bytes;
    if (const FileError error = readWhole(utf8(*path), bytes))
        return printLine(L"\nNot read: " + wide(error.message));
    const MetafileReading reading = readMetafile(bytes);
    if (!reading.error.empty())
        return printLine(L"\nNot read: \"" + *path + L"\": " + wide(reading.error) + L".");
    if (reading.sheet.skipped > 0)
        printLine(L"\nNote: " + std::to_wstring(reading.sheet.skipped) +
                  L" pictures, texts or curves of the metafile were left out.");
    const auto placing = askPlacing();
    if (!placing) return;
    const AcDbObjectId block = blockOf(reading.sheet, sheetUnit(reading.sheet, surroundings().view));
    if (!block.isNull()) placeBlock(block, *placing);
}

} // namespace host
