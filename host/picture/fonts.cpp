// One entry a face: its raw fonts in order of preference, and the glyphs met so far.
#include "host/picture/fonts.h"

#include <QFont>
#include <QFontDatabase>
#include <QPainterPath>
#include <QRawFont>

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <set>
#include <span>

#include "host/os/text.h"
#include "host/picture/toolkit.h"

namespace host {
namespace {

constexpr int kPixels = 1000; // size at which outlines are taken; they are scaled afterwards

QString qt(std::wstring_view text) { return QString::fromWCharArray(text.data(), qsizetype(text.size())); }

struct Substitute {
    const wchar_t* wanted; // lower case, without suffix
    const char* family;
};

// Where names alone tell what was meant: stroke fonts by their look, file names by their family.
constexpr Substitute kSubstitutes[] = {
    {L"arial", "Liberation Sans"},
    {L"times", "Liberation Serif"},
    {L"times new roman", "Liberation Serif"},
    {L"cour", "Liberation Mono"},
    {L"courier new", "Liberation Mono"},
    {L"romans", "DejaVu Sans"},
    {L"romand", "DejaVu Serif"},
    {L"romanc", "DejaVu Serif"},
    {L"romant", "DejaVu Serif"},
    {L"monotxt", "DejaVu Sans Mono"},
    {L"simsun", "Noto Serif CJK SC"},
    {L"宋体", "Noto Serif CJK SC"},
    {L"simhei", "Noto Sans CJK SC"},
    {L"黑体", "Noto Sans CJK SC"},
    {L"gbcbig", "Noto Sans CJK SC"},
    {L"hztxt", "Noto Sans CJK SC"},
};
constexpr const char* kPlain[] = {"DejaVu Sans", "Liberation Sans", "Noto Sans CJK SC"};
constexpr const char* kFarEast[] = {"Noto Sans CJK SC", "Noto Serif CJK SC", "WenQuanYi Zen Hei",
                                    "DejaVu Sans"};

std::wstring stem(std::wstring_view file) {
    file.remove_prefix(std::min(file.find_last_of(L"/\\") + 1, file.size()));
    const std::size_t dot = file.rfind(L'.');
    return lower(dot == std::wstring_view::npos ? file : file.substr(0, dot));
}

const QStringList& families() {
    static const QStringList all = QFontDatabase::families();
    return all;
}

QString installed(const QString& family) {
    for (const QString& candidate : families())
        if (candidate.compare(family, Qt::CaseInsensitive) == 0) return candidate;
    return {};
}

QString firstInstalled(std::span<const char* const> wanted) {
    for (const char* family : wanted)
        if (const QString found = installed(family); !found.isEmpty()) return found;
    return families().isEmpty() ? QString() : families().front();
}

class Replacements {
public:
    FontListener listener;
    void tell(const std::wstring& wanted, const QString& used) {
        if (told_.insert(wanted).second && listener) listener({wanted, used.toStdWString()});
    }

private:
    std::set<std::wstring> told_;
};

Replacements& replacements() {
    static Replacements all;
    return all;
}

// The family for a name as drawings give it; told when it isn't the one.
QString familyFor(const std::wstring& wanted) {
    const std::wstring name = stem(wanted);
    if (name.empty()) return firstInstalled(kPlain);
    if (const QString own = installed(qt(name)); !own.isEmpty()) return own;
    QString used;
    for (const Substitute& substitute : kSubstitutes)
        if (name == substitute.wanted) used = installed(substitute.family);
    if (used.isEmpty()) used = firstInstalled(kPlain);
    // The host's own stroke fonts stand for "the plain font": nobody misses them.
    if (name != L"txt" && name != L"standard" && name != L"simplex") replacements().tell(wanted, used);
    return used;
}

struct Glyph {
    QPainterPath path; // y downwards, at kPixels
    double advance = 0;
    bool drawn = false;
};

class FaceFonts {
public:
    explicit FaceFonts(const TextFace& face) {
        const QString primary = familyFor(face.typeface.empty() ? face.fontFile : face.typeface);
        add(primary, face);
        if (!face.bigFontFile.empty()) add(familyFor(face.bigFontFile), face);
        for (const char* family : kPlain) add(installed(family), face);
        for (const char* family : kFarEast) add(installed(family), face);
        const QRectF capital = glyph(L'H').path.boundingRect();
        capital_ = capital.height() > 1 ? capital.height() : 0.7 * kPixels;
        ascent_ = fonts_.empty() ? kPixels : fonts_.front().ascent();
        descent_ = fonts_.empty() ? 0 : fonts_.front().descent();
    }

    const Glyph& glyph(wchar_t c) {
        const auto found = glyphs_.find(c);
        return found != glyphs_.end() ? found->second : glyphs_.emplace(c, make(c)).first->second;
    }
    double unit() const { return 1 / capital_; } // font pixels to heights of a capital
    double ascent() const { return ascent_ * unit(); }
    double descent() const { return descent_ * unit(); }

private:
    void add(const QString& family, const TextFace& face) {
        if (family.isEmpty()) return;
        QFont font(family);
        font.setPixelSize(kPixels);
        font.setBold(face.bold);
        font.setItalic(face.italic);
        font.setHintingPreference(QFont::PreferNoHinting);
        font.setStyleStrategy(QFont::NoFontMerging);
        const QRawFont raw = QRawFont::fromFont(font);
        if (raw.isValid() && std::find(fonts_.begin(), fonts_.end(), raw) == fonts_.end())
            fonts_.push_back(raw);
    }

    Glyph make(wchar_t c) const {
        Glyph glyph;
        const auto code = static_cast<char32_t>(c);
        const QString text = QString::fromUcs4(&code, 1);
        for (const QRawFont& font : fonts_) {
            const QList<quint32> indices = font.glyphIndexesForString(text);
            if (indices.isEmpty() || indices.front() == 0) continue;
            glyph.path = font.pathForGlyph(indices.front());
            const QList<QPointF> advances = font.advancesForGlyphIndexes({indices.front()});
            glyph.advance = advances.isEmpty() ? 0 : advances.front().x();
            glyph.drawn = !glyph.path.isEmpty();
            return glyph;
        }
        glyph.advance = 0.6 * kPixels; // nobody has it: an empty box
        glyph.path.addRect(0.05 * kPixels, -0.7 * kPixels, 0.5 * kPixels, 0.7 * kPixels);
        glyph.path.addRect(0.1 * kPixels, -0.65 * kPixels, 0.4 * kPixels, 0.6 * kPixels);
        glyph.drawn = true;
        return glyph;
    }

    std::vector<QRawFont> fonts_;
    std::map<wchar_t, Glyph> glyphs_;
    double capital_ = kPixels, ascent_ = kPixels, descent_ = 0;
};

struct FaceKey {
    std::wstring font, bigFont, typeface;
    bool bold, italic;
    auto operator<=>(const FaceKey&) const = default;
};

class QtMetrics final : public TextMetrics {
public:
    TextExtents measure(const TextFace& face, double height, std::wstring_view text) override {
        TextExtents result;
        if (!(height > 0) || !std::isfinite(height)) return result;
        FaceFonts& fonts = fontsOf(face);
        result.ascent = fonts.ascent() * height;
        result.descent = fonts.descent() * height;
        bool any = false;
        walk(face, height, text, [&](const Glyph& glyph, const QTransform& place, double advance) {
            result.advance = advance;
            if (!glyph.drawn) return;
            const QRectF box = place.map(glyph.path).boundingRect();
            if (!any) result.low.set(box.left(), box.top()), result.high.set(box.right(), box.bottom());
            result.low.set(std::min(result.low.x, box.left()), std::min(result.low.y, box.top()));
            result.high.set(std::max(result.high.x, box.right()), std::max(result.high.y, box.bottom()));
            any = true;
        });
        return result;
    }

    TextOutline outlines(const TextFace& face, double height, std::wstring_view text) override {
        TextOutline out;
        if (!(height > 0) || !std::isfinite(height)) return out;
        walk(face, height, text, [&](const Glyph& glyph, const QTransform& place, double) {
            if (glyph.drawn) append(out, place.map(glyph.path));
        });
        return out;
    }

private:
    FaceFonts& fontsOf(const TextFace& face) {
        auto& entry = faces_[{face.fontFile, face.bigFontFile, face.typeface, face.bold, face.italic}];
        if (!entry) entry = std::make_unique<FaceFonts>(face);
        return *entry;
    }

    // Calls `visit` with each glyph, the transformation that places it, and where the next one stands.
    template <class Visit>
    void walk(const TextFace& face, double height, std::wstring_view text, Visit&& visit) {
        FaceFonts& fonts = fontsOf(face);
        const double up = height * fonts.unit(), across = up * face.widthFactor;
        const double lean = std::clamp(std::tan(face.oblique), -4.0, 4.0);
        double x = 0;
        for (wchar_t c : text) {
            const Glyph& glyph = fonts.glyph(c);
            // Font paths grow downwards; leaning moves what is higher to the right.
            const QTransform place(across, 0, -lean * up, -up, x, 0);
            x += glyph.advance * across * face.tracking;
            visit(glyph, place, x);
        }
    }

    static void append(TextOutline& out, const QPainterPath& path) {
        using Step = TextOutline::Step;
        bool open = false;
        for (int i = 0; i < path.elementCount(); ++i) {
            const QPainterPath::Element e = path.elementAt(i);
            if (e.isMoveTo() && open) out.steps.push_back(Step::close);
            if (e.isMoveTo()) open = true;
            if (e.isMoveTo() || e.isLineTo()) out.steps.push_back(e.isMoveTo() ? Step::move : Step::line);
            if (e.isCurveTo()) out.steps.push_back(Step::cubic); // two more points follow
            out.points.emplace_back(e.x, e.y);
        }
        if (open) out.steps.push_back(Step::close);
    }

    std::map<FaceKey, std::unique_ptr<FaceFonts>> faces_;
};

} // namespace

void installTextMetrics(FontListener listener) {
    ensureToolkit();
    static QtMetrics* const metrics = new QtMetrics; // raw fonts must not outlive the toolkit's statics
    replacements().listener = std::move(listener);
    setTextMetrics(metrics);
}

} // namespace host
