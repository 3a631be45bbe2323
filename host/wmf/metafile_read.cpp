// Metafiles to sheets. Every count is checked against its record before it is believed.
#include <algorithm>
#include <cmath>
#include <optional>

#include "host/wmf/metafile.h"

namespace host {
namespace {

// A window on the file in words of 16 bits, low byte first.
class Words {
public:
    explicit Words(std::string_view bytes) : bytes_(bytes) {}
    size_t size() const { return bytes_.size() / 2; }
    unsigned at(size_t i) const {
        return i < size()
                   ? unsigned(std::uint8_t(bytes_[2 * i])) | unsigned(std::uint8_t(bytes_[2 * i + 1])) << 8
                   : 0;
    }
    int number(size_t i) const { return std::int16_t(std::uint16_t(at(i))); }
    std::uint32_t wide(size_t i) const { return at(i) | std::uint32_t(at(i + 1)) << 16; }
    Words part(size_t from, size_t count) const { return Words(bytes_.substr(2 * from, 2 * count)); }

private:
    std::string_view bytes_;
};

struct Tool {
    enum class Kind { none, pen, brush, other } kind = Kind::none;
    bool draws = true;
    std::uint32_t rgb = 0;
    double width = 0;
};

struct State {
    Tool pen{Tool::Kind::pen}, brush{Tool::Kind::brush, true, 0xFFFFFF};
    bool winding = false;
    AcGePoint2d place;
    double originX = 0, originY = 0, acrossX = 1, downY = 1;
};

class Reader {
public:
    explicit Reader(Words words) : words_(words) {}

    MetafileReading run() {
        size_t at = 0;
        const bool placeable = words_.size() >= 11 && words_.wide(0) == wmf::kPlaceableKey;
        if (placeable) at = 11;
        if (words_.size() < at + 9 || (words_.at(at) != 1 && words_.at(at) != 2) || words_.at(at + 1) != 9)
            return failed("this is no Windows metafile");
        for (at += 9; at + 3 <= words_.size();) {
            const size_t size = words_.wide(at);
            if (size < 3 || size > words_.size() - at)
                return failed("a record runs beyond the end of the file");
            const unsigned kind = words_.at(at + 2);
            if (kind == wmf::kEnd) break;
            play(kind, words_.part(at + 3, size - 3));
            at += size;
        }
        return finished(placeable);
    }

private:
    static MetafileReading failed(const char* why) { return {{}, why}; }

    // The window of the file becomes the sheet; a placeable file without one has its frame.
    MetafileReading finished(bool placeable) {
        if (!window_ && placeable) {
            state_.originX = words_.number(3), state_.originY = words_.number(4);
            state_.acrossX = words_.number(5) - state_.originX,
            state_.downY = words_.number(6) - state_.originY;
            window_ = state_;
        }
        if (!window_) return failed("the metafile doesn't tell its size");
        MetafileReading reading{std::move(sheet_), {}};
        reading.sheet.width = std::abs(window_->acrossX), reading.sheet.height = std::abs(window_->downY);
        if (reading.sheet.width == 0 || reading.sheet.height == 0) return failed("the metafile has no size");
        for (MetafileShape& shape : reading.sheet.shapes)
            for (AcGePoint2d& p : shape.points) {
                const double x = (p.x - window_->originX) / window_->acrossX;
                const double y = (p.y - window_->originY) / window_->downY;
                p.set(x * reading.sheet.width, (1 - y) * reading.sheet.height);
            }
        return reading;
    }

    void play(unsigned kind, Words data) {
        switch (kind) {
        case wmf::kSetWindowOrigin:
            state_.originY = data.number(0), state_.originX = data.number(1);
            if (window_ && sheet_.shapes.empty()) window_ = state_;
            break;
        case wmf::kSetWindowExtent:
            state_.downY = data.number(0), state_.acrossX = data.number(1);
            if (!window_ || sheet_.shapes.empty()) window_ = state_;
            break;
        case wmf::kSetPolygonFill: state_.winding = data.at(0) == wmf::kWinding; break;
        case wmf::kSaveDc: saved_.push_back(state_); break;
        case wmf::kRestoreDc:
            if (!saved_.empty()) state_ = saved_.back(), saved_.pop_back();
            break;
        case wmf::kCreatePen:
            make({Tool::Kind::pen, data.at(0) % 16 != wmf::kNullPen, color(data, 3), double(data.number(1))});
            break;
        case wmf::kCreateBrush:
            make({Tool::Kind::brush, data.at(0) != wmf::kHollowBrush, color(data, 1), 0});
            break;
        case wmf::kSelectObject: select(data.at(0)); break;
        case wmf::kDeleteObject:
            if (data.at(0) < tools_.size()) tools_[data.at(0)] = {};
            break;
        default: draw(kind, data);
        }
    }

    void draw(unsigned kind, Words data) {
        switch (kind) {
        case wmf::kMoveTo: state_.place.set(data.number(1), data.number(0)); break;
        case wmf::kLineTo: lineTo({double(data.number(1)), double(data.number(0))}); break;
        case wmf::kPolyline: shapes(points(data, 1, data.at(0)), {}, false); break;
        case wmf::kPolygon: shapes(points(data, 1, data.at(0)), {}, true); break;
        case wmf::kPolyPolygon: polyPolygon(data); break;
        case wmf::kRectangle: rectangle(data); break;
        default: other(kind);
        }
    }

    // Objects take the lowest free number, also those of kinds that aren't understood; the high nibble tells
    // records that draw.
    void other(unsigned kind) {
        const bool creates =
            kind == 0x00F7 || kind == 0x01F9 || kind == 0x02FB || kind == 0x0142 || kind == 0x06FF;
        if (creates) return make({Tool::Kind::other});
        constexpr unsigned kDrawing[] = {0x0418, 0x0419, 0x041F, 0x0521, 0x061C, 0x061D, 0x062F, 0x081A,
                                         0x0817, 0x0830, 0x0922, 0x0940, 0x0A32, 0x0B23, 0x0B41, 0x0F43};
        sheet_.skipped += size_t(std::count(std::begin(kDrawing), std::end(kDrawing), kind));
    }

    static std::uint32_t color(Words data, size_t at) {
        return (data.at(at) & 0xFF) << 16 | (data.at(at) & 0xFF00) | (data.at(at + 1) & 0xFF);
    }
    void make(const Tool& tool) {
        const auto free = std::find_if(tools_.begin(), tools_.end(),
                                       [](const Tool& t) { return t.kind == Tool::Kind::none; });
        free == tools_.end() ? tools_.push_back(tool) : void(*free = tool);
    }
    void select(unsigned index) {
        if (index >= tools_.size()) return;
        if (tools_[index].kind == Tool::Kind::pen) state_.pen = tools_[index];
        if (tools_[index].kind == Tool::Kind::brush) state_.brush = tools_[index];
    }

    static std::vector<AcGePoint2d> points(Words data, size_t from, size_t count) {
        std::vector<AcGePoint2d> out;
        count = std::min(count, data.size() > from ? (data.size() - from) / 2 : 0);
        for (size_t i = 0; i < count; ++i)
            out.push_back({double(data.number(from + 2 * i)), double(data.number(from + 2 * i + 1))});
        return out;
    }

    // Filled by the brush when they are closed, then stroked by the pen.
    void shapes(std::vector<AcGePoint2d> all, std::vector<std::uint32_t> ends, bool closed) {
        if (all.empty()) return;
        if (ends.empty()) ends.push_back(std::uint32_t(all.size()));
        using Kind = MetafileShape::Kind;
        if (closed && state_.brush.draws)
            sheet_.shapes.push_back(
                {state_.winding ? Kind::nonZero : Kind::oddEven, state_.brush.rgb, 0, all, ends});
        if (!state_.pen.draws) return;
        MetafileShape stroke{Kind::stroke, state_.pen.rgb, state_.pen.width, {}, {}};
        std::uint32_t from = 0;
        for (const std::uint32_t end : ends) {
            if (end > from) {
                stroke.points.insert(stroke.points.end(), all.begin() + from, all.begin() + end);
                if (closed) stroke.points.push_back(all[from]);
                stroke.ends.push_back(std::uint32_t(stroke.points.size()));
            }
            from = end;
        }
        sheet_.shapes.push_back(std::move(stroke));
    }
    void polyPolygon(Words data) {
        const size_t contours = std::min<size_t>(data.at(0), data.size());
        size_t total = 0;
        std::vector<std::uint32_t> ends;
        for (size_t i = 0; i < contours; ++i) ends.push_back(std::uint32_t(total += data.at(1 + i)));
        std::vector<AcGePoint2d> all = points(data, 1 + contours, total);
        if (all.size() == total) shapes(std::move(all), std::move(ends), true);
    }
    void rectangle(Words data) {
        const double bottom = data.number(0), right = data.number(1), top = data.number(2),
                     left = data.number(3);
        shapes({{left, top}, {right, top}, {right, bottom}, {left, bottom}}, {}, true);
    }
    // Lines that go on from one another become one path.
    void lineTo(const AcGePoint2d& to) {
        MetafileShape* last = sheet_.shapes.empty() ? nullptr : &sheet_.shapes.back();
        if (state_.pen.draws && last && last->kind == MetafileShape::Kind::stroke &&
            last->rgb == state_.pen.rgb && last->width == state_.pen.width && last->ends.size() == 1 &&
            last->points.back() == state_.place) {
            last->points.push_back(to);
            ++last->ends.back();
        } else {
            shapes({state_.place, to}, {}, false);
        }
        state_.place = to;
    }

    Words words_;
    Metafile sheet_;
    State state_;
    std::vector<State> saved_;
    std::vector<Tool> tools_;
    std::optional<State> window_; // as it is set before anything is drawn
};

} // namespace

MetafileReading readMetafile(std::string_view bytes) { return Reader(Words(bytes)).run(); }

} // namespace host
