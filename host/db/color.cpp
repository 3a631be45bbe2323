// Colours: the palette of the 255 indices and the nearest index of a true colour.
#include "host/db/color.h"

#include <array>

namespace {

using Palette = std::array<Adesk::UInt32, 256>;

constexpr Adesk::UInt32 packed(int red, int green, int blue) {
    return Adesk::UInt32(red) << 16 | Adesk::UInt32(green) << 8 | Adesk::UInt32(blue);
}

// A hue in steps of 15 degrees, each component in quarters of the full value.
constexpr int component(int hue, int shift) {
    constexpr int ramp[24] = {4, 4, 4, 4, 4, 4, 4, 4, 4, 3, 2, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 2, 3};
    return ramp[(hue + shift) % 24];
}

// Indices 10 to 249: 24 hues in five shades of decreasing value, each also half way to grey.
constexpr Palette makePalette() {
    Palette p{};
    constexpr Adesk::UInt32 named[10] = {0,        0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF,
                                         0x0000FF, 0xFF00FF, 0xFFFFFF, 0x808080, 0xC0C0C0};
    for (int i = 0; i < 10; ++i) p[size_t(i)] = named[i];
    constexpr int percent[5] = {100, 65, 50, 30, 15};
    for (int i = 10; i < 250; ++i) {
        const int hue = (i - 10) / 10, value = 255 * percent[i % 10 / 2];
        auto shade = [&](int quarters) {
            return i % 2 ? value * (4 + quarters) / 800 : value * quarters / 400;
        };
        p[size_t(i)] = packed(shade(component(hue, 4)), shade(component(hue, 20)), shade(component(hue, 12)));
    }
    constexpr int greys[6] = {51, 91, 132, 173, 214, 255};
    for (int i = 0; i < 6; ++i) p[size_t(250 + i)] = packed(greys[i], greys[i], greys[i]);
    return p;
}
constexpr Palette kPalette = makePalette();

constexpr int squared(int d) { return d * d; }

} // namespace

Adesk::UInt32 AcCmEntityColor::lookUpRGB(Adesk::UInt8 index) { return kPalette[index]; }

Adesk::UInt8 AcCmEntityColor::lookUpACI(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue) {
    int best = 7, least = 1 << 30;
    for (int i = 1; i < 256; ++i) {
        const Adesk::UInt32 c = kPalette[size_t(i)];
        const int distance =
            squared(int(c >> 16) - red) + squared(int(c >> 8 & 255) - green) + squared(int(c & 255) - blue);
        if (distance < least) least = distance, best = i;
    }
    return Adesk::UInt8(best);
}

Adesk::UInt16 AcCmColor::colorIndex() const {
    switch (method_) {
    case AcCmEntityColor::kByBlock: return 0;
    case AcCmEntityColor::kByLayer: return 256;
    case AcCmEntityColor::kNone: return 257;
    case AcCmEntityColor::kByColor: return AcCmEntityColor::lookUpACI(red(), green(), blue());
    default: return Adesk::UInt16(value_);
    }
}

Acad::ErrorStatus AcCmColor::setColorIndex(Adesk::UInt16 index) {
    if (index > 257) return Acad::eInvalidInput;
    if (index == 0)
        setByBlock();
    else if (index == 256)
        setByLayer();
    else
        method_ = index == 257 ? AcCmEntityColor::kNone : AcCmEntityColor::kByACI, value_ = index;
    return Acad::eOk;
}

Acad::ErrorStatus AcCmColor::setRGB(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue) {
    method_ = AcCmEntityColor::kByColor;
    value_ = packed(red, green, blue);
    return Acad::eOk;
}

Adesk::UInt32 AcCmColor::rgb() const {
    if (method_ == AcCmEntityColor::kByColor) return value_;
    return method_ == AcCmEntityColor::kByACI ? kPalette[value_ & 255] : 0;
}
