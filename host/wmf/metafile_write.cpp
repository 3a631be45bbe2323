// Sheets to the bytes of a placeable metafile.
#include <algorithm>
#include <cmath>
#include <map>

#include "host/wmf/metafile.h"

namespace host {
namespace {

using Point = AcGePoint2d;
constexpr int kMargin = 1500; // steps beyond the sheet that are still drawn
constexpr int kPerInch = kMetafileSteps / 10;
constexpr size_t kMostPoints = 60000;  // in one contour
constexpr size_t kMostContours = 4000; // in one record

struct Bounds {
    double low[2], high[2];
};

// One side of the bounds: what lies within `coordinate * sign <= limit * sign`.
struct Side {
    int axis;
    double sign, limit;
    double beyond(const Point& p) const { return (p[unsigned(axis)] - limit) * sign; }
    Point cross(const Point& a, const Point& b) const {
        const double t = beyond(a) / (beyond(a) - beyond(b));
        return a + (b - a) * t;
    }
};
std::vector<Side> sidesOf(const Bounds& bounds) {
    return {{0, -1, bounds.low[0]}, {0, 1, bounds.high[0]}, {1, -1, bounds.low[1]}, {1, 1, bounds.high[1]}};
}

// A polygon cut by one side after the other (Sutherland and Hodgman, 1974).
std::vector<Point> cutPolygon(std::vector<Point> points, const Bounds& bounds) {
    for (const Side& side : sidesOf(bounds)) {
        std::vector<Point> kept;
        for (size_t i = 0; i < points.size(); ++i) {
            const Point &a = points[i], &b = points[(i + 1) % points.size()];
            if (side.beyond(a) <= 0) kept.push_back(a);
            if ((side.beyond(a) <= 0) != (side.beyond(b) <= 0)) kept.push_back(side.cross(a, b));
        }
        points = std::move(kept);
    }
    return points;
}

// The paths of a polyline that lie on one side, appended.
void cutPath(const std::vector<Point>& path, const Side& side, std::vector<std::vector<Point>>& out) {
    std::vector<Point> run;
    const auto finish = [&] {
        if (run.size() > 1) out.push_back(run);
        run.clear();
    };
    for (size_t i = 0; i < path.size(); ++i) {
        const bool inside = side.beyond(path[i]) <= 0;
        if (i > 0 && inside != (side.beyond(path[i - 1]) <= 0)) {
            run.push_back(side.cross(path[i - 1], path[i]));
            if (!inside) finish();
        }
        if (inside) run.push_back(path[i]);
    }
    finish();
}
std::vector<std::vector<Point>> cutPolyline(std::vector<Point> points, const Bounds& bounds) {
    std::vector<std::vector<Point>> paths{std::move(points)};
    for (const Side& side : sidesOf(bounds)) {
        std::vector<std::vector<Point>> kept;
        for (const auto& path : paths) cutPath(path, side, kept);
        paths = std::move(kept);
    }
    return paths;
}

class Writer {
public:
    explicit Writer(const Metafile& sheet)
        : sheet_(sheet), scale_(kMetafileSteps / std::max(sheet.width, sheet.height)),
          across_(int(std::ceil(sheet.width * scale_))), down_(int(std::ceil(sheet.height * scale_))) {}

    std::string run() {
        setUp();
        for (const MetafileShape& shape : sheet_.shapes) draw(shape);
        record(wmf::kEnd, {});
        return header() + body_;
    }

private:
    static void word(std::string& out, unsigned value) {
        out += char(value & 0xFF);
        out += char(value >> 8 & 0xFF);
    }
    static void dword(std::string& out, std::uint32_t value) {
        word(out, value & 0xFFFF);
        word(out, value >> 16);
    }
    void record(wmf::Record kind, const std::vector<unsigned>& words) {
        const auto size = std::uint32_t(3 + words.size());
        largest_ = std::max(largest_, size);
        dword(body_, size);
        word(body_, kind);
        for (unsigned w : words) word(body_, w);
    }

    std::string header() const {
        std::string placeable;
        dword(placeable, wmf::kPlaceableKey);
        for (unsigned w : {0u, 0u, 0u, unsigned(across_), unsigned(down_), unsigned(kPerInch), 0u, 0u})
            word(placeable, w);
        unsigned sum = 0;
        for (size_t i = 0; i < placeable.size(); i += 2)
            sum ^= unsigned(std::uint8_t(placeable[i])) | unsigned(std::uint8_t(placeable[i + 1])) << 8;
        word(placeable, sum);
        std::string own;
        for (unsigned w : {1u, 9u, 0x300u}) word(own, w); // in memory, words of header, version
        dword(own, std::uint32_t(9 + body_.size() / 2));
        word(own, objects_);
        dword(own, largest_);
        word(own, 0);
        return placeable + own;
    }

    // All pens and brushes are made first, so that their numbers are known.
    void setUp() {
        record(wmf::kSetMapMode, {wmf::kAnisotropic});
        record(wmf::kSetWindowOrigin, {0, 0});
        record(wmf::kSetWindowExtent, {unsigned(down_), unsigned(across_)});
        record(wmf::kSetBackgroundMode, {1});
        createPen(wmf::kNullPen, 0, 0);
        createBrush(wmf::kHollowBrush, 0);
        for (const MetafileShape& shape : sheet_.shapes) {
            const Tool tool = toolOf(shape);
            if (objects_ == 0xFFFF || tools_.contains(tool)) continue;
            tools_[tool] = objects_;
            tool.pen ? createPen(0, tool.width, tool.rgb) : createBrush(0, tool.rgb);
        }
    }
    void createPen(unsigned style, unsigned width, std::uint32_t rgb) {
        record(wmf::kCreatePen, {style, width, 0, (rgb >> 16 & 0xFF) | (rgb & 0xFF00), rgb & 0xFF});
        ++objects_;
    }
    void createBrush(unsigned style, std::uint32_t rgb) {
        record(wmf::kCreateBrush, {style, (rgb >> 16 & 0xFF) | (rgb & 0xFF00), rgb & 0xFF, 0});
        ++objects_;
    }

    struct Tool {
        bool pen;
        unsigned width;
        std::uint32_t rgb;
        auto operator<=>(const Tool&) const = default;
    };
    Tool toolOf(const MetafileShape& shape) const {
        const bool pen = shape.kind == MetafileShape::Kind::stroke;
        const double width = std::clamp(std::round(shape.width * scale_), 0.0, 30000.0);
        return {pen, pen ? unsigned(width) : 0, shape.rgb & 0xFFFFFF};
    }

    void select(unsigned pen, unsigned brush) {
        if (pen != pen_) record(wmf::kSelectObject, {pen});
        if (brush != brush_) record(wmf::kSelectObject, {brush});
        pen_ = pen, brush_ = brush;
    }

    std::vector<Point> contour(const MetafileShape& shape, size_t index) const {
        std::vector<Point> out;
        for (size_t i = index == 0 ? 0 : shape.ends[index - 1]; i < shape.ends[index]; ++i)
            out.push_back({shape.points[i].x * scale_, (sheet_.height - shape.points[i].y) * scale_});
        return out;
    }
    static unsigned step(double value) { return unsigned(std::uint16_t(std::int16_t(std::lround(value)))); }
    static void append(std::vector<unsigned>& words, const std::vector<Point>& points, size_t from,
                       size_t to) {
        for (size_t i = from; i < to; ++i)
            words.push_back(step(points[i].x)), words.push_back(step(points[i].y));
    }

    void draw(const MetafileShape& shape) {
        const auto tool = tools_.find(toolOf(shape));
        const unsigned object = tool == tools_.end() ? objects_ - 1u : tool->second;
        if (shape.kind == MetafileShape::Kind::stroke) {
            select(object, 1);
            for (size_t i = 0; i < shape.ends.size(); ++i) stroke(contour(shape, i));
        } else {
            select(0, object);
            fill(shape);
        }
    }
    void stroke(std::vector<Point> points) {
        if (points.size() == 1) points.push_back(points.front()); // a dot
        for (const auto& path : cutPolyline(std::move(points), bounds_))
            for (size_t from = 0; from + 1 < path.size(); from += kMostPoints - 1) {
                const size_t to = std::min(path.size(), from + kMostPoints);
                std::vector<unsigned> words{unsigned(to - from)};
                append(words, path, from, to);
                record(wmf::kPolyline, words);
            }
    }
    void fill(const MetafileShape& shape) {
        const unsigned rule = shape.kind == MetafileShape::Kind::oddEven ? wmf::kAlternate : wmf::kWinding;
        if (rule != rule_) record(wmf::kSetPolygonFill, {rule});
        rule_ = rule;
        std::vector<unsigned> counts, places;
        const auto flush = [&] {
            if (counts.empty()) return;
            std::vector<unsigned> words{unsigned(counts.size())};
            words.insert(words.end(), counts.begin(), counts.end());
            words.insert(words.end(), places.begin(), places.end());
            record(wmf::kPolyPolygon, words);
            counts.clear(), places.clear();
        };
        for (size_t i = 0; i < shape.ends.size(); ++i) {
            const std::vector<Point> ring = cutPolygon(contour(shape, i), bounds_);
            if (ring.size() < 3) continue;
            const size_t count = std::min(ring.size(), kMostPoints);
            if (counts.size() == kMostContours) flush();
            counts.push_back(unsigned(count));
            append(places, ring, 0, count);
        }
        flush();
    }

    const Metafile& sheet_;
    double scale_;
    int across_, down_;
    Bounds bounds_{{-kMargin, -kMargin}, {double(across_ + kMargin), double(down_ + kMargin)}};
    std::string body_;
    std::uint32_t largest_ = 0;
    unsigned objects_ = 0, pen_ = ~0u, brush_ = ~0u, rule_ = 0;
    std::map<Tool, unsigned> tools_;
};

} // namespace

std::string metafileBytes(const Metafile& sheet) {
    if (!(sheet.width > 0 && sheet.height > 0) || !std::isfinite(sheet.width + sheet.height)) return {};
    return Writer(sheet).run();
}

} // namespace host
