// Paints primitives of display lists into a band of a picture, as a view shows them.
#pragma once
#include <QColor>
#include <QImage>
#include <memory>
#include <optional>
#include <vector>

#include "apps/desk/raster_band.h"
#include "apps/desk/screen_map.h"
#include "host/view/display_list.h"

namespace desk {

struct PaintLook {
    bool dark = true;
    bool lineWeights = true;          // false: all lines thin
    std::optional<std::uint32_t> ink; // 0xRRGGBB instead of the primitives' own colours
    double extraWidth = 0;            // pixels, added to the width of lines
};

// The outlines of a list's texts at a height of 1. They are made on the thread that shows the window, before
// others paint with them: fonts belong to the thread that has loaded them.
class TextOutlines {
public:
    // Those that can be read in the view and may show in the part of its pixels.
    void prepare(const host::DisplayList& list, const ScreenMap& map, const QRectF& part);
    const host::TextOutline* of(std::uint32_t text) const { // null: not prepared
        return text < outlines_.size() ? outlines_[text].get() : nullptr;
    }
    void clear() { outlines_.clear(); }

private:
    std::vector<std::unique_ptr<const host::TextOutline>> outlines_;
};

// What is smaller than a pixel becomes a dot, text that can't be read a line, points that lie closer than can
// be seen are passed over.
class ListPainter {
public:
    // `ratio`: the picture's pixels for one of the map's. `texts` belongs to the lists that are painted.
    ListPainter(RasterBand& band, const ScreenMap& map, double ratio, const PaintLook& look,
                const TextOutlines& texts);
    void paint(const host::DisplayList& list, const host::DisplayPrimitive& primitive) {
        paint(list, primitive, list.contours(primitive));
    }
    // With contours that stand for its own.
    void paint(const host::DisplayList& list, const host::DisplayPrimitive& primitive,
               const host::DisplayContours& contours);

private:
    using Point = RasterBand::Point;
    bool project(const AcGePoint3d& world, Point& out) const;
    bool projectInDepth(const AcGePoint3d& world, Point& out) const;
    void use(const host::DisplayStyle& style);
    bool paintTiny(const host::DisplayPrimitive& primitive);
    void paintLines(const host::DisplayContours& contours);
    void thinPath(std::span<const AcGePoint3d> world);
    void widePath(std::span<const AcGePoint3d> world);
    void paintArea(const host::DisplayContours& contours, bool oddEven);
    void paintEndless(std::span<const AcGePoint3d> given, bool bothWays);
    void paintText(const host::DisplayList& list, std::uint32_t text);
    void fillLetters(const host::TextOutline& outline, Point origin, Point right, Point up);

    RasterBand& band_;
    const ScreenMap& map_;
    bool inDepth_;           // in perspective
    double ratio_, perUnit_; // pixels of the picture for a unit of the drawing
    double toPixels_[2][4];  // for parallel projections
    PaintLook look_;
    const TextOutlines& texts_;
    double width_ = 1;
    const host::DisplayStyle* style_ = nullptr; // in use
    std::vector<Point> path_;
};

// All of a list, in its order.
void paintList(QImage& picture, const host::DisplayList& list, const ScreenMap& map, const PaintLook& look);

QColor groundColor(bool dark);
// The colour as given, 0xRRGGBB; or moved away from the ground's where they could hardly be told apart.
std::uint32_t readableInk(std::uint32_t rgb, bool dark);

} // namespace desk
