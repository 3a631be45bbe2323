// SVG by hand: small, with one group a layer and real sizes. Coordinates are whole micrometres, lines run
// in relative steps, neighbours that look alike share one path, and each letter is drawn once and used
// wherever it stands.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <utility>

#include "host/os/text.h"
#include "host/picture/backends.h"

namespace host {
namespace {

constexpr double kUnits = 1000;       // to a millimetre
constexpr double kLetterUnits = 1000; // to the height of a capital

long long unit(double mm) { return std::llround(mm * kUnits); }

std::string hexColor(std::uint32_t rgb) {
    char text[8];
    std::snprintf(text, sizeof text, "#%06x", rgb & 0xFFFFFFu);
    const bool repeats = text[1] == text[2] && text[3] == text[4] && text[5] == text[6];
    return repeats ? std::string{'#', text[1], text[3], text[5]} : text;
}

std::string escaped(std::wstring_view text) {
    std::string out;
    for (char c : utf8(text)) {
        if (c == '&')
            out += "&amp;";
        else if (c == '<')
            out += "&lt;";
        else if (c == '>')
            out += "&gt;";
        else if (static_cast<unsigned char>(c) >= 32 || c == '\t')
            out += c;
    }
    return out;
}

// Path data with the pen's place known, so that steps can be relative.
class PathData {
public:
    void moveTo(const AcGePoint2d& p) {
        const long long x = unit(p.x), y = unit(p.y);
        command('M');
        number(x);
        number(y);
        x_ = x;
        y_ = y;
        last_ = 'M';
    }
    void lineTo(const AcGePoint2d& p) {
        const long long x = unit(p.x), y = unit(p.y);
        if (x == x_ && y == y_) return;
        command('l');
        step(x, y);
    }
    void curveTo(char kind, const AcGePoint2d* points, int count) {
        command(kind);
        for (int i = 0; i < count; ++i) {
            number(unit(points[i].x) - x_);
            number(unit(points[i].y) - y_);
        }
        x_ = unit(points[count - 1].x);
        y_ = unit(points[count - 1].y);
    }
    // A step of a micrometre: some viewers draw no cap on none at all.
    void dot() {
        command('h');
        number(1);
        ++x_;
    }
    void close() {
        text_ += 'z';
        last_ = 'z';
    }
    const std::string& text() const { return text_; }

private:
    void command(char c) {
        if (c != last_ || c == 'M') text_ += c;
        last_ = c;
    }
    void step(long long x, long long y) {
        number(x - x_);
        number(y - y_);
        x_ = x;
        y_ = y;
    }
    // A minus sign parts numbers as well as a blank does.
    void number(long long value) {
        const bool afterDigit = !text_.empty() && text_.back() >= '0' && text_.back() <= '9';
        if (value >= 0 && afterDigit) text_ += ' ';
        text_ += std::to_string(value);
    }

    std::string text_;
    long long x_ = 0, y_ = 0;
    char last_ = 0;
};

void addContours(PathData& data, const PageShape& shape) {
    std::uint32_t from = 0;
    for (std::uint32_t end : shape.ends) {
        if (from == end) continue;
        const bool stroke = shape.fill == PageShape::Fill::stroke;
        const AcGePoint2d &first = shape.points[from], &last = shape.points[end - 1];
        const bool ring =
            stroke && end - from > 3 && unit(first.x) == unit(last.x) && unit(first.y) == unit(last.y);
        data.moveTo(first);
        for (std::uint32_t i = from + 1; i < end - ring; ++i) data.lineTo(shape.points[i]);
        if (end - from == 1) data.dot();
        if (!stroke || ring) data.close();
        from = end;
    }
}

void addOutline(PathData& data, const TextOutline& outline) {
    using Step = TextOutline::Step;
    const AcGePoint2d* p = outline.points.data();
    for (Step step : outline.steps) {
        switch (step) {
        case Step::move: data.moveTo(*p++); break;
        case Step::line: data.lineTo(*p++); break;
        case Step::quadratic: data.curveTo('q', p, 2), p += 2; break;
        case Step::cubic: data.curveTo('c', p, 3), p += 3; break;
        case Step::close: data.close(); break;
        }
    }
}

// The letters of a picture, each defined once, at a thousand units to the height of a capital.
class Letters {
public:
    struct Letter {
        std::string name; // empty when there is nothing to draw
        double advance = 0;
    };

    const Letter& letter(const TextFace& face, wchar_t c) {
        const auto known = std::find(faces_.begin(), faces_.end(), face);
        const auto index = static_cast<std::size_t>(known - faces_.begin());
        if (known == faces_.end()) faces_.push_back(face);
        const auto [entry, isNew] = letters_.try_emplace({index, c});
        if (isNew) define(face, c, entry->second);
        return entry->second;
    }
    const std::string& definitions() const { return definitions_; }

private:
    void define(const TextFace& face, wchar_t c, Letter& letter) {
        const std::wstring_view text(&c, 1);
        letter.advance = textMetrics()->measure(face, 1, text).advance;
        PathData data;
        addOutline(data, textMetrics()->outlines(face, 1, text));
        if (data.text().empty()) return;
        letter.name.append("c").append(std::to_string(letters_.size()));
        definitions_ += "<path id=\"" + letter.name + "\" d=\"";
        definitions_ += data.text();
        definitions_ += "\"/>\n";
    }

    std::vector<TextFace> faces_;
    std::map<std::pair<std::size_t, wchar_t>, Letter> letters_;
    std::string definitions_;
};

class SvgWriter {
public:
    explicit SvgWriter(const Page& page) : page_(page) {}

    std::string write() {
        const std::string w = std::to_string(unit(page_.width())), h = std::to_string(unit(page_.height()));
        for (std::size_t i = 0; i < page_.panels().size(); ++i) panel(i);
        std::string head =
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" "
            "xmlns:xlink=\"http://www.w3.org/1999/xlink\" width=\"" +
            formatFixed(page_.width(), 3, true) + "mm\" height=\"" + formatFixed(page_.height(), 3, true) +
            "mm\" viewBox=\"0 0 " + w + ' ' + h +
            "\" fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n";
        if (const auto ground = page_.ground())
            head += "<rect width=\"" + w + "\" height=\"" + h + "\" fill=\"" + hexColor(*ground) + "\"/>\n";
        if (!letters_.definitions().empty())
            head.append("<defs>\n").append(letters_.definitions()) += "</defs>\n";
        return head + out_ + "</svg>\n";
    }

private:
    void panel(std::size_t index) {
        const PagePanel& panel = page_.panels()[index];
        const bool several = page_.panels().size() > 1;
        if (several) clip(index, panel.frame);
        const DisplayList& list = *panel.content->list;
        for (std::uint32_t layer = 0; layer < list.layers.size(); ++layer) {
            const std::size_t start = out_.size();
            out_ += "<g class=\"layer\"><title>";
            out_ += escaped(list.layers[layer].name);
            out_ += "</title>\n";
            const std::size_t filled = out_.size();
            page_.forEachShape(panel, layer, [&](const PageShape& shape) { add(shape); });
            flush();
            if (out_.size() == filled)
                out_.resize(start); // nothing of this layer is seen
            else
                out_ += "</g>\n";
        }
        page_.forEachMark(panel, [&](const PageShape& shape) { add(shape); });
        flush();
        if (several) out_ += "</g>\n";
        page_.forEachFrame(panel, [&](const PageShape& shape) { add(shape); });
        page_.forEachCaption(panel, [&](const PageShape& shape) { add(shape); });
        flush();
    }

    // Lines and areas end at the frame already; letters are left to the viewer.
    void clip(std::size_t index, const PageRect& frame) {
        const std::string name = "panel" + std::to_string(index + 1);
        out_ += "<clipPath id=\"" + name + "\"><rect x=\"" + std::to_string(unit(frame.x)) + "\" y=\"" +
                std::to_string(unit(frame.y)) + "\" width=\"" + std::to_string(unit(frame.width)) +
                "\" height=\"" + std::to_string(unit(frame.height)) +
                "\"/></clipPath>\n<g clip-path=\"url(#" + name + ")\">\n";
    }

    static std::string lookOf(const PageShape& shape) {
        std::string look;
        const std::string color = hexColor(shape.rgb);
        const std::string opacity =
            shape.opacity == 255 ? std::string() : formatFixed(shape.opacity / 255.0, 3, true);
        if (shape.fill == PageShape::Fill::stroke) {
            look = " stroke=\"" + color + "\" stroke-width=\"" + std::to_string(unit(shape.width)) + '"';
            if (!opacity.empty()) look += " stroke-opacity=\"" + opacity + '"';
        } else {
            look = " fill=\"" + color + '"';
            if (shape.fill == PageShape::Fill::oddEven) look += " fill-rule=\"evenodd\"";
            if (!opacity.empty()) look += " fill-opacity=\"" + opacity + '"';
        }
        return look;
    }

    // Opaque lines of one look may share a path; areas may not, since their holes would mix.
    static bool mayShare(const PageShape& shape) {
        return shape.opacity == 255 && shape.fill == PageShape::Fill::stroke;
    }

    void add(const PageShape& shape) {
        const std::string look = lookOf(shape);
        if (look != look_ || !shared_ || !mayShare(shape)) flush();
        if (shape.text) {
            addText(*shape.text, look);
            return;
        }
        look_ = look;
        shared_ = mayShare(shape);
        addContours(data_, shape);
    }

    void addText(const PlacedText& text, const std::string& look) {
        const auto coefficient = [](double value) { return formatFixed(value, 5, true); };
        const double scale = kUnits / kLetterUnits;
        out_ += "<g" + look + " transform=\"matrix(" + coefficient(text.right.x * scale) + ' ' +
                coefficient(text.right.y * scale) + ' ' + coefficient(text.up.x * scale) + ' ' +
                coefficient(text.up.y * scale) + ' ' + std::to_string(unit(text.origin.x)) + ' ' +
                std::to_string(unit(text.origin.y)) + ")\">";
        double x = 0;
        for (wchar_t c : text.text) {
            const Letters::Letter& letter = letters_.letter(*text.face, c);
            if (!letter.name.empty())
                out_ += "<use xlink:href=\"#" + letter.name + "\" x=\"" + std::to_string(unit(x)) + "\"/>";
            x += letter.advance;
        }
        out_ += "</g>\n";
    }

    void flush() {
        if (!data_.text().empty()) {
            out_ += "<path";
            out_ += look_;
            out_ += " d=\"";
            out_ += data_.text();
            out_ += "\"/>\n";
        }
        data_ = {};
        look_.clear();
    }

    const Page& page_;
    std::string out_, look_;
    Letters letters_;
    PathData data_;
    bool shared_ = false;
};

} // namespace

std::string svgBytes(const Page& page) { return SvgWriter(page).write(); }

} // namespace host
