// Depths, greys, the two reductions, flat regions.
#include "raster/colour.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace corvane::raster {
namespace {

struct Colour {
    Byte blue, green, red;
};

Colour fromPalette(const Bitmap& bitmap, int index) {
    const int entries = int(bitmap.palette.size() / 3);
    if (entries == 0) {
        const Byte level = Byte(index * 255 / ((1 << bitmap.bits) - 1));
        return {level, level, level};
    }
    const Byte* entry = bitmap.palette.data() + std::size_t(std::min(index, entries - 1)) * 3;
    return {entry[0], entry[1], entry[2]};
}

Colour from565(int value) {
    return {Byte((value & 31) * 255 / 31), Byte(((value >> 5) & 63) * 255 / 63),
            Byte((value >> 11) * 255 / 31)};
}

Colour colourAt(const Bitmap& bitmap, const Byte* row, std::int32_t x) {
    if (bitmap.bits == 16) return from565(row[2 * x] | row[2 * x + 1] << 8);
    if (bitmap.bits > 16) {
        const Byte* p = row + std::ptrdiff_t(x) * (bitmap.bits / 8);
        return {p[0], p[1], p[2]};
    }
    const int perByte = 8 / bitmap.bits, shift = (perByte - 1 - x % perByte) * bitmap.bits;
    return fromPalette(bitmap, row[x / perByte] >> shift & ((1 << bitmap.bits) - 1));
}

bool serves(const Bitmap& b) {
    constexpr std::array kDepths{1, 4, 8, 16, 24, 32};
    if (std::find(kDepths.begin(), kDepths.end(), b.bits) == kDepths.end()) return false;
    if (b.rows < 1 || b.cols < 1 || b.rows > kLongestSide || b.cols > kLongestSide) return false;
    const std::size_t rowBytes = (std::size_t(b.cols) * std::size_t(b.bits) + 7) / 8;
    return b.stride >= rowBytes && b.data.size() >= std::size_t(b.rows - 1) * b.stride + rowBytes;
}

int sumOf(const Byte* p) { return p[0] + p[1] + p[2]; }

bool darkRimmed(const RasterImage& image) {
    if (image.cols < 2 || image.rows < 2) return false;
    const std::int32_t right = image.cols - 1, bottom = image.rows - 1, midX = image.cols / 2,
                       midY = image.rows / 2;
    const PixelPoint rim[8] = {{0, 0},    {right, 0},     {0, bottom}, {right, bottom},
                               {midX, 0}, {midX, bottom}, {0, midY},   {right, midY}};
    const auto dark = std::count_if(std::begin(rim), std::end(rim), [&](PixelPoint p) {
        return sumOf(image.row(p.y) + std::ptrdiff_t(p.x) * 3) < 384;
    });
    return dark >= 5;
}

struct Hsv {
    double hue, saturation, value; // degrees, 0..1, 0..1
};
Hsv hsvOf(double red, double green, double blue) {
    const double most = std::max({red, green, blue}), least = std::min({red, green, blue}),
                 range = most - least;
    double hue = 0;
    if (range > 0) {
        if (most == red)
            hue = 60 * (green - blue) / range;
        else if (most == green)
            hue = 60 * (blue - red) / range + 120;
        else
            hue = 60 * (red - green) / range + 240;
        if (hue < 0) hue += 360;
    }
    return {hue, most > 0 ? 1 - least / most : 0, most};
}

double snapped(double value, double step) { return int(int(value / step + 0.5) + 0.5) * step; }

struct Channels {
    double red, green, blue;
};
Channels fromSextant(double sixths, double saturation, double value) {
    const int i = int(std::floor(sixths));
    const double f = sixths - i, p = (1 - saturation) * value, q = (1 - f * saturation) * value,
                 t = (1 - (1 - f) * saturation) * value;
    switch (i) {
    case 0: return {value, t, p};
    case 1: return {q, value, p};
    case 2: return {p, value, t};
    case 3: return {p, q, value};
    case 4: return {t, p, value};
    case 5: return {value, p, q};
    default: return {0, 0, 0};
    }
}

// Values snap up past the whole where the step doesn't divide 100: such channels are held at 255.
Byte channel(double value) { return Byte(std::min(int(value * 255), 255)); }

class ColourSteps {
public:
    explicit ColourSteps(int step)
        : hueStep_(360 / std::max(step, 1)), saturationStep_(100 / std::max(step, 1)),
          valueStep_(int((saturationStep_ - 12) / 1.4 + 23.0)) {}

    Colour operator()(Colour c) const {
        const Hsv in = hsvOf(c.red / 255.0, c.green / 255.0, c.blue / 255.0);
        const double value = snapped(in.value * 100, valueStep_) / 100,
                     saturation = snapped(in.saturation * 100, saturationStep_) / 100;
        if (saturation == 0) return {channel(value), channel(value), channel(value)};
        const Channels out = fromSextant(snapped(in.hue, hueStep_) / 60, saturation, value);
        return {channel(out.blue), channel(out.green), channel(out.red)};
    }

private:
    int hueStep_, saturationStep_, valueStep_;
};

} // namespace

RasterImage ToColour(const Bitmap& bitmap) {
    if (!serves(bitmap)) return {};
    RasterImage image(bitmap.rows, bitmap.cols, PixelKind::bgr);
    for (std::int32_t y = 0; y < image.rows; ++y) {
        const Byte* from = bitmap.data.data() + std::size_t(y) * bitmap.stride;
        Byte* to = image.row(y);
        for (std::int32_t x = 0; x < image.cols; ++x, to += 3) {
            const Colour c = colourAt(bitmap, from, x);
            to[0] = c.blue, to[1] = c.green, to[2] = c.red;
        }
    }
    return image;
}

RasterImage ToGrey(const RasterImage& image) {
    if (image.kind == PixelKind::grey || image.empty()) return image;
    RasterImage grey(image.rows, image.cols);
    const Byte* from = image.data.data();
    for (Byte& to : grey.data) {
        to = Byte((29 * from[0] + 150 * from[1] + 77 * from[2] + 128) >> 8);
        from += image.pixelSize();
    }
    return grey;
}

void ReduceToBlackAndWhite(RasterImage& image, int threshold) {
    const int limit = 3 * std::clamp(threshold, 5, 250);
    for (std::size_t i = 0; i < image.data.size(); i += 3)
        std::fill_n(&image.data[i], 3, Byte(sumOf(&image.data[i]) > limit ? 255 : 0));
    if (!darkRimmed(image)) return;
    for (Byte& channel : image.data) channel = Byte(255 - channel);
}

void ReduceColours(RasterImage& image, int step) {
    const ColourSteps snap(step);
    for (std::int32_t y = 1; y + 1 < image.rows; ++y) {
        Byte* p = image.row(y) + 3;
        // Neighbours are often of one colour.
        Colour last{p[0], p[1], p[2]}, result = snap(last);
        for (std::int32_t x = 1; x + 1 < image.cols; ++x, p += 3) {
            if (p[0] != last.blue || p[1] != last.green || p[2] != last.red) {
                last = {p[0], p[1], p[2]};
                result = snap(last);
            }
            p[0] = result.blue, p[1] = result.green, p[2] = result.red;
        }
    }
}

RasterImage FlatRegions(const RasterImage& image) {
    if (image.rows < 2 || image.cols < 2) return {};
    RasterImage flat(image.rows, image.cols, PixelKind::grey, 255);
    const auto differ = [](const Byte* a, const Byte* b) {
        return a[0] != b[0] || a[1] != b[1] || a[2] != b[2];
    };
    for (std::int32_t y = 0; y < image.rows; ++y) {
        const Byte* p = image.row(y);
        const Byte* below = y + 1 < image.rows ? image.row(y + 1) : nullptr;
        Byte* to = flat.row(y);
        Byte* toBelow = below ? flat.row(y + 1) : nullptr;
        for (std::int32_t x = 0; x < image.cols; ++x, p += 3) {
            if (x + 1 < image.cols && differ(p, p + 3)) to[x] = to[x + 1] = 0;
            if (below && differ(p, below + 3 * std::ptrdiff_t(x))) to[x] = toBelow[x] = 0;
        }
    }
    return flat;
}

} // namespace corvane::raster
