// Drawing recordings with Qt's painter. Text is drawn by the outlines of the metrics that measured it, so
// that it ends where the dialog thought it would.
#include "host/picture/dialog_pictures.h"
#include "host/picture/outline_path.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

#include "host/os/files.h"
#include "host/picture/images.h"
#include "host/picture/toolkit.h"
#include "host/ui/messages.h"

namespace host {
namespace {

constexpr int kLargestSide = 16384;
constexpr int kDeepest = 64; // recordings within recordings

QColor qt(COLORREF color) { return QColor(GetRValue(color), GetGValue(color), GetBValue(color)); }
QRectF box(const AcGePoint2d& a, const AcGePoint2d& b) {
    return QRectF(QPointF(a.x, a.y), QPointF(b.x, b.y));
}
QRectF box(const CRect& r) { return QRectF(r.left, r.top, r.Width(), r.Height()); }

QPen penOf(const StrokePen& stroke) {
    QPen pen(qt(stroke.color), stroke.width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    if (stroke.style == PS_DASH) pen.setStyle(Qt::DashLine);
    if (stroke.style == PS_DOT) pen.setStyle(Qt::DotLine);
    if (stroke.style == PS_DASHDOT) pen.setStyle(Qt::DashDotLine);
    if (stroke.width > 1 && pen.style() == Qt::SolidLine) {
        pen.setCapStyle(Qt::RoundCap);
        pen.setJoinStyle(Qt::RoundJoin);
    }
    return pen;
}

QPainterPath textPath(const Primitive& text) {
    const TextOutline outline = textMetrics()->outlines(text.face, text.height, text.text);
    const AcGePoint2d origin = text.points.front();
    QPainterPath path =
        outlinePath(outline, [&](const AcGePoint2d& p) { return QPointF(origin.x + p.x, origin.y - p.y); });
    if (text.underlined) {
        const double width = textMetrics()->measure(text.face, text.height, text.text).advance;
        path.addRect(origin.x, origin.y + text.height * 0.15, width, std::max(text.height * 0.09, 1.0));
    }
    return path;
}

QPainterPath polygonPath(const Primitive& area) {
    QPainterPath path;
    path.setFillRule(area.winding ? Qt::WindingFill : Qt::OddEvenFill);
    std::size_t from = 0;
    for (const std::uint32_t end : area.ends) {
        for (std::size_t i = from; i < end; ++i) {
            const QPointF p(area.points[i].x, area.points[i].y);
            i == from ? path.moveTo(p) : path.lineTo(p);
        }
        path.closeSubpath();
        from = end;
    }
    return path;
}

QImage wrap(const ImagePixels& pixels) {
    return QImage(pixels.rgba.data(), pixels.width, pixels.height, pixels.width * 4, QImage::Format_RGBA8888);
}

void drawImage(QPainter& painter, const Primitive& picture) {
    const QRectF place = box(picture.points[0], picture.points[1]);
    QImage image = wrap(*picture.image);
    QRectF source = box(picture.source);
    // Averaged when it gets smaller: the painter itself looks at four pixels only.
    const double scale = painter.worldTransform().m11();
    const QSize wanted(int(std::lround(place.width() * scale)), int(std::lround(place.height() * scale)));
    const bool shrinks = picture.smooth && wanted.width() > 0 && wanted.height() > 0 &&
                         (wanted.width() < source.width() || wanted.height() < source.height());
    if (shrinks) {
        image = image.copy(source.toRect()).scaled(wanted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        source = QRectF(QPointF(0, 0), QSizeF(image.size()));
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform, picture.smooth);
    painter.drawImage(place, image, source);
}

void draw(QPainter& painter, const Recording& recording, int depth);

void drawInner(QPainter& painter, const Primitive& inner, int depth) {
    const QRectF place = box(inner.points[0], inner.points[1]), source = box(inner.source);
    if (depth >= kDeepest || source.width() <= 0 || source.height() <= 0) return;
    painter.setClipRect(place, Qt::IntersectClip);
    painter.translate(place.topLeft());
    painter.scale(place.width() / source.width(), place.height() / source.height());
    painter.translate(-source.topLeft());
    draw(painter, *inner.recording, depth + 1);
}

void draw(QPainter& painter, const Primitive& primitive, int depth) {
    using Kind = Primitive::Kind;
    painter.setPen(primitive.pen ? penOf(*primitive.pen) : QPen(Qt::NoPen));
    painter.setBrush(primitive.fill && primitive.kind != Kind::text ? QBrush(qt(*primitive.fill)) : QBrush());
    switch (primitive.kind) {
    case Kind::polyline: {
        QList<QPointF> points;
        points.reserve(qsizetype(primitive.points.size()));
        for (const AcGePoint2d& p : primitive.points) points.emplace_back(p.x, p.y);
        painter.drawPolyline(points.constData(), int(points.size()));
        break;
    }
    case Kind::polygon: painter.drawPath(polygonPath(primitive)); break;
    case Kind::rectangle: {
        const QRectF place = box(primitive.points[0], primitive.points[1]);
        if (primitive.rounding > 0)
            painter.drawRoundedRect(place, primitive.rounding, primitive.rounding);
        else
            painter.drawRect(place);
        break;
    }
    case Kind::ellipse: painter.drawEllipse(box(primitive.points[0], primitive.points[1])); break;
    case Kind::text: painter.fillPath(textPath(primitive), qt(primitive.fill.value_or(0))); break;
    case Kind::image: drawImage(painter, primitive); break;
    case Kind::recording: drawInner(painter, primitive, depth); break;
    }
}

void draw(QPainter& painter, const Recording& recording, int depth) {
    for (const Primitive& primitive : recording.primitives) {
        painter.save();
        painter.setClipRect(box(primitive.clip), Qt::IntersectClip);
        draw(painter, primitive, depth);
        painter.restore();
    }
}

class Services final : public PictureServices {
public:
    ImagePixels decode(std::string_view bytes, std::string& error) override {
        LoadedImage image = decodeImage(bytes, "image");
        error = image.error;
        return {image.width, image.height, std::move(image.rgba)};
    }
    void draw(const Recording& recording, ImagePixels& onto) override {
        ensureToolkit();
        QImage image = wrap(onto).convertToFormat(QImage::Format_ARGB32_Premultiplied);
        {
            QPainter painter(&image);
            painter.setRenderHint(QPainter::Antialiasing);
            host::draw(painter, recording, 0);
        }
        const QImage plain = image.convertToFormat(QImage::Format_RGBA8888);
        const auto row = std::size_t(onto.width) * 4;
        for (int y = 0; y < onto.height; ++y)
            std::copy_n(plain.constScanLine(y), row, onto.rgba.data() + row * std::size_t(y));
    }
    std::string save(const Recording& recording, double scale, const std::string& path) override {
        ensureToolkit();
        const double width = recording.width * scale, height = recording.height * scale;
        if (!(width >= 1 && height >= 1 && width <= kLargestSide && height <= kLargestSide))
            return "the picture's size must be from 1 to 16384 pixels";
        QImage image(int(std::lround(width)), int(std::lround(height)), QImage::Format_RGB32);
        if (image.isNull()) return "there is not enough memory for the picture";
        image.fill(Qt::white);
        {
            QPainter painter(&image);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.scale(scale, scale);
            host::draw(painter, recording, 0);
        }
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        if (!image.save(&buffer, "PNG")) return "the picture could not be encoded";
        return writeWhole(path, std::string_view(bytes.constData(), std::size_t(bytes.size()))).message;
    }
};

} // namespace

void installDialogPictures() {
    static Services services;
    setPictureServices(&services);
}

} // namespace host
