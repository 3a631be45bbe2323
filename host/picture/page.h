// From display lists to a page: sizes, panels, and everything to be drawn as shapes in page units (pixels
// or millimetres, y downwards). The backends in svg.cpp and paint.cpp draw what is told here.
#pragma once

#include <functional>

#include "host/picture/picture.h"

namespace host {

struct PageRect {
    double x = 0, y = 0, width = 0, height = 0;
};

// A line of text in page units: its own axes, for text measured at a height of 1.
struct PlacedText {
    const TextFace* face;
    std::wstring_view text;
    AcGePoint2d origin;
    AcGeVector2d right, up;
    AcGePoint2d place(const AcGePoint2d& p) const { return origin + right * p.x + up * p.y; }
};

// Something to draw. Contours are in page units.
struct PageShape {
    enum class Fill { stroke, oddEven, nonZero } fill = Fill::stroke;
    std::uint32_t rgb = 0;
    std::uint8_t opacity = 255;
    double width = 0; // of a stroke
    std::vector<AcGePoint2d> points;
    std::vector<std::uint32_t> ends;
    std::optional<PlacedText> text{}; // instead of contours
};

struct PagePanel {
    PageRect frame; // where its picture goes; shapes are to be clipped to it
    const PicturePanel* content = nullptr;
};

class Page {
public:
    // `error()` tells what is wrong with the options, if anything.
    Page(std::span<const PicturePanel> panels, PictureFormat format, const PictureOptions& options);

    const std::string& error() const { return error_; }
    double width() const { return width_; }
    double height() const { return height_; }
    const std::vector<PagePanel>& panels() const { return panels_; }
    std::optional<std::uint32_t> ground() const; // 0xRRGGBB; nothing when transparent
    std::uint32_t ink() const;                   // of captions and colour 7

    using Visit = std::function<void(const PageShape&)>;
    // Shapes of the panel's primitives on one layer, in drawing order.
    void forEachShape(const PagePanel& panel, std::uint32_t layer, const Visit& visit) const;
    // Shapes of all its primitives, in drawing order.
    void forEachShape(const PagePanel& panel, const Visit& visit) const;
    // Vertex marks, within the frame; the frame itself where there are several; and captions, below it.
    void forEachMark(const PagePanel& panel, const Visit& visit) const;
    void forEachFrame(const PagePanel& panel, const Visit& visit) const;
    void forEachCaption(const PagePanel& panel, const Visit& visit) const;

private:
    void layOut(std::span<const PicturePanel> panels, const AcDbExtents2d& shown);
    AcDbExtents2d shownPart(std::span<const PicturePanel> panels) const;
    bool place(const PagePanel& panel, const AcGePoint3d& world, AcGePoint2d& out) const;
    void draw(const PagePanel& panel, const DisplayPrimitive& primitive, const Visit& visit) const;
    bool drawText(const PagePanel& panel, const DisplayText& text, PageShape& shape) const;
    bool addContours(const PagePanel& panel, const DisplayPrimitive& primitive, PageShape& shape) const;
    bool addEndless(const PagePanel& panel, const DisplayPrimitive& primitive, PageShape& shape) const;
    double strokeWidth(int weight) const;
    double clipBand(double strokeWidth) const;

    const PictureOptions& options_;
    std::string error_;
    double width_ = 0, height_ = 0, perMillimetre_ = 1; // page units to a millimetre
    double captionHeight_ = 0;
    AcGeMatrix3d toDisplay_;
    ViewFrame view_;
    double scale_ = 1; // page units to one of the drawing
    std::vector<PagePanel> panels_;
};

} // namespace host
