// A part of a picture and what paints into them: thin lines, wide lines, filled areas, all smoothed at
// their edges. Knows pixels alone; list_painter.cpp brings drawings here.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace desk {

// Rows [top, bottom) and columns [left, right) of a picture. Coordinates are pixels of the whole picture, x
// to the right, y down, whole numbers at the corners of pixels; they may lie anywhere within 1e12, what is
// outside is cut off. The same strokes give the same pixels however a picture is parted into bands.
class RasterBand {
public:
    struct Point {
        double x = 0, y = 0;
    };

    struct Place {
        int left = 0, right = 0, top = 0, bottom = 0;
    };

    // `pixels` is the whole picture's first one, 0xFFRRGGBB; `stride` counts pixels from row to row.
    RasterBand(std::uint32_t* pixels, std::ptrdiff_t stride, const Place& place);

    void setInk(std::uint32_t rgb, std::uint8_t opacity);

    void dot(Point at); // the pixel there
    // One pixel wide; each column, of steep lines each row, gets the share of it that is covered (Wu 1991,
    // widened to the line's true thickness). Level and upright ones keep to one row or column.
    void thinLine(Point from, Point to);
    // A path with round corners and ends; a width of at least a pixel.
    void wideLine(std::span<const Point> path, double width);
    // Adds a side of an area, and paints the area of all sides added since. Coverage is exact but for sides
    // that cross within a pixel: signed areas, summed along each row (after Levien's font rasterizer, 2016).
    void side(Point from, Point to);
    void contour(std::span<const Point> closed); // all sides of a loop
    void fill(bool oddEven);

private:
    struct Reach {
        int from = 0, to = 0; // columns that hold sums, [from, to)
    };
    void blend(std::uint32_t& pixel, std::uint32_t share) const;
    void mark(int column, int row, std::uint32_t share);
    bool cut(Point& from, Point& to) const;
    void flat(Point from, Point to);
    void steep(Point from, Point to);
    void sideInRow(int row, double fromX, double toX, double height);
    void add(int row, int column, double area);
    void fillRow(int row, bool oddEven);
    void disc(Point middle, double radius);
    void beam(Point from, Point to, double half);
    std::uint32_t* row(int y) const { return pixels_ + y * stride_; }
    float* sums(int y) { return &sums_[std::size_t(y - top_) * std::size_t(right_ - left_ + 2)]; }

    std::uint32_t* pixels_;
    std::ptrdiff_t stride_;
    int left_, right_, top_, bottom_;
    std::uint32_t redBlue_ = 0, green_ = 0, opacity_ = 256; // of the ink; opacity of 256
    std::vector<float> sums_;                               // one row after the other, two columns wider
    std::vector<Reach> reach_;                              // by row
    int firstRow_, lastRow_;                                // rows with sums, [first, last)
};

} // namespace desk
