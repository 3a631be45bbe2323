// Paints primitives of display lists with Qt's painter, in the pixels of a view.
#pragma once
#include <QColor>
#include <QList>
#include <QPainterPath>
#include <QPointF>
#include <optional>
#include <vector>

#include "apps/desk/screen_map.h"
#include "host/picture/clip.h"
#include "host/view/display_list.h"

class QPainter;

namespace desk {

struct PaintLook {
    bool dark = true;
    bool lineWeights = true;   // false: all lines thin
    std::optional<QColor> ink; // instead of the primitives' own colours
    double extraWidth = 0;     // pixels, added to the width of lines
};

// The outlines of a list's texts at a height of 1, made when they are first wanted.
class TextPaths {
public:
    const QPainterPath& of(const host::DisplayList& list, std::uint32_t text);
    void clear() { paths_.clear(); }

private:
    std::vector<std::optional<QPainterPath>> paths_;
};

class ListPainter {
public:
    // Nothing outside `area` needs to be painted. `texts` belongs to the lists that are painted.
    ListPainter(QPainter& painter, const ScreenMap& map, const QRectF& area, const PaintLook& look);
    void paint(const host::DisplayList& list, const host::DisplayPrimitive& primitive, TextPaths& texts);
    void paint(const host::DisplayList& list);

private:
    void paintContours(const host::DisplayList& list, const host::DisplayPrimitive& primitive);
    void paintEndless(const host::DisplayList& list, const host::DisplayPrimitive& primitive);
    void paintText(const host::DisplayText& text, const QPainterPath& path);
    bool paintTiny(const host::DisplayPrimitive& primitive);
    void clipContour(std::vector<AcGePoint2d>& flat, bool open);
    void stroke();
    void fill(bool oddEven);
    void use(const host::DisplayStyle& style);

    QPainter& painter_;
    const ScreenMap& map_;
    host::ClipBox clip_;
    PaintLook look_;
    QColor color_;
    double width_ = 0;
    std::optional<host::DisplayStyle> style_; // in use
    std::vector<AcGePoint2d> flat_, points_;
    std::vector<std::uint32_t> ends_;
    QList<QPointF> line_;
};

QColor groundColor(bool dark);

} // namespace desk
