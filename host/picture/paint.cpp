// PNG and PDF through Qt's painter.
#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPdfWriter>

#include <cstdio>
#include <string_view>

#include "host/os/clock.h"
#include "host/picture/backends.h"
#include "host/picture/outline_path.h"
#include "host/picture/toolkit.h"

namespace host {
namespace {

constexpr int kPdfDotsPerInch = 1200;

QColor qt(std::uint32_t rgb, int alpha = 255) {
    return QColor(int(rgb >> 16 & 255), int(rgb >> 8 & 255), int(rgb & 255), alpha);
}

QPainterPath pathOf(const PageShape& shape) {
    QPainterPath path;
    path.setFillRule(shape.fill == PageShape::Fill::oddEven ? Qt::OddEvenFill : Qt::WindingFill);
    std::uint32_t from = 0;
    for (std::uint32_t end : shape.ends) {
        for (std::uint32_t i = from; i < end; ++i) {
            const QPointF p(shape.points[i].x, shape.points[i].y);
            if (i == from)
                path.moveTo(p);
            else
                path.lineTo(p);
        }
        if (shape.fill != PageShape::Fill::stroke) path.closeSubpath();
        from = end;
    }
    return path;
}

QPainterPath pathOf(const PlacedText& text) {
    return outlinePath(textMetrics()->outlines(*text.face, 1, text.text), [&](const AcGePoint2d& p) {
        const AcGePoint2d at = text.place(p);
        return QPointF(at.x, at.y);
    });
}

void paint(QPainter& painter, const PageShape& shape) {
    const QColor color = qt(shape.rgb, shape.opacity);
    if (shape.text) {
        painter.fillPath(pathOf(*shape.text), color);
    } else if (shape.fill != PageShape::Fill::stroke) {
        painter.fillPath(pathOf(shape), color);
    } else {
        painter.setPen(QPen(color, shape.width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        std::uint32_t from = 0;
        for (std::uint32_t end : shape.ends) { // one by one: long paths are stroked faster in pieces
            QList<QPointF> points;
            points.reserve(qsizetype(end - from));
            for (; from < end; ++from) points.emplace_back(shape.points[from].x, shape.points[from].y);
            if (points.size() == 1)
                painter.drawPoint(points.front());
            else if (points.size() > 3 && points.front() == points.back())
                painter.drawPolygon(points.constData(), int(points.size()) - 1);
            else
                painter.drawPolyline(points.constData(), int(points.size()));
        }
    }
}

void paint(QPainter& painter, const Page& page) {
    painter.setRenderHint(QPainter::Antialiasing);
    if (const auto ground = page.ground())
        painter.fillRect(QRectF(0, 0, page.width(), page.height()), qt(*ground));
    for (const PagePanel& panel : page.panels()) {
        const auto draw = [&](const PageShape& shape) { paint(painter, shape); };
        painter.save();
        painter.setClipRect(QRectF(panel.frame.x, panel.frame.y, panel.frame.width, panel.frame.height));
        page.forEachShape(panel, draw);
        page.forEachMark(panel, draw);
        painter.restore();
        page.forEachFrame(panel, draw);
        page.forEachCaption(panel, draw);
    }
}

std::string taken(const QByteArray& bytes) { return {bytes.constData(), std::size_t(bytes.size())}; }

// Puts the date over those that follow the mark; anything that doesn't look like one is left alone.
void overwrite(std::string& bytes, std::string_view mark, std::string_view date) {
    for (std::size_t at = bytes.find(mark); at != std::string::npos; at = bytes.find(mark, at + 1)) {
        const std::size_t from = at + mark.size();
        const std::string_view old = std::string_view(bytes).substr(from, date.size());
        if (old.size() == date.size() && old.find_first_not_of("0123456789-T:") == std::string_view::npos)
            bytes.replace(from, date.size(), date);
    }
}

// Qt dates the file by the system's clock; the same drawing shall give the same bytes. Nothing changes its
// length, so the file's table of places stays right.
void makeRepeatable(std::string& pdf) {
    const LocalTime now = localTime();
    char date[64];
    std::snprintf(date, sizeof date, "%04d%02d%02d%02d%02d%02d", now.year, now.month, now.day, now.hour,
                  now.minute, now.second);
    overwrite(pdf, "/CreationDate (D:", date);
    overwrite(pdf, "/ModDate (D:", date);
}

} // namespace

PictureBytes pngBytes(const Page& page) {
    ensureToolkit();
    QImage image(int(page.width()), int(page.height()), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) return {{}, "there is not enough memory for the picture"};
    image.fill(Qt::transparent);
    image.setDotsPerMeterX(3780); // 96 to the inch
    image.setDotsPerMeterY(3780);
    {
        QPainter painter(&image);
        paint(painter, page);
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    const QImage stored = page.ground() ? image.convertToFormat(QImage::Format_RGB32) : image;
    if (!stored.save(&buffer, "PNG")) return {{}, "the picture could not be encoded"};
    return {taken(bytes), {}};
}

PictureBytes pdfBytes(const Page& page) {
    ensureToolkit();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setCreator("Corvane");
        writer.setResolution(kPdfDotsPerInch);
        writer.setPageSize(
            QPageSize(QSizeF(page.width(), page.height()), QPageSize::Millimeter, {}, QPageSize::ExactMatch));
        writer.setPageMargins(QMarginsF(0, 0, 0, 0));
        QPainter painter(&writer);
        if (!painter.isActive()) return {{}, "the picture could not be begun"};
        painter.scale(kPdfDotsPerInch / 25.4, kPdfDotsPerInch / 25.4);
        paint(painter, page);
    }
    std::string out = taken(bytes);
    makeRepeatable(out);
    return {std::move(out), {}};
}

} // namespace host
