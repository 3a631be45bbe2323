// Colours as drawings know them: by layer, by block, by index 1 to 255, or red, green and blue.
#pragma once
#include "host/db/adesk.h"

class AcCmEntityColor {
public:
    enum ColorMethod {
        kByLayer = 0xC0,
        kByBlock = 0xC1,
        kByColor = 0xC2,
        kByACI = 0xC3,
        kForeground = 0xC5,
        kNone = 0xC8
    };
    enum ACIcolorMethod { kACIbyBlock = 0, kACIforeground = 7, kACIbyLayer = 256 };

    // The red, green and blue of an index 1 to 255, as 0xRRGGBB; index 7 is white.
    static Adesk::UInt32 lookUpRGB(Adesk::UInt8 index);
    // The index 1 to 255 whose colour is nearest to the one given.
    static Adesk::UInt8 lookUpACI(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue);
};

// A fresh colour is by layer.
class AcCmColor {
public:
    AcCmColor() = default;

    AcCmEntityColor::ColorMethod colorMethod() const { return method_; }
    bool isByLayer() const { return method_ == AcCmEntityColor::kByLayer; }
    bool isByBlock() const { return method_ == AcCmEntityColor::kByBlock; }
    bool isByACI() const { return method_ == AcCmEntityColor::kByACI; }
    bool isByColor() const { return method_ == AcCmEntityColor::kByColor; }
    bool isForeground() const { return method_ == AcCmEntityColor::kByACI && value_ == 7; }
    bool isNone() const { return method_ == AcCmEntityColor::kNone; }

    // 0 by block, 1 to 255, 256 by layer; the nearest index for a true colour.
    Adesk::UInt16 colorIndex() const;
    // 0 is by block, 256 by layer, 257 none; other values above 257 give eInvalidInput.
    Acad::ErrorStatus setColorIndex(Adesk::UInt16 index);
    void setByLayer() { method_ = AcCmEntityColor::kByLayer, value_ = 256; }
    void setByBlock() { method_ = AcCmEntityColor::kByBlock, value_ = 0; }
    Acad::ErrorStatus setRGB(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue);
    // The components; those of the index for an indexed colour, 0 for by-layer and by-block.
    Adesk::UInt8 red() const { return Adesk::UInt8(rgb() >> 16); }
    Adesk::UInt8 green() const { return Adesk::UInt8(rgb() >> 8); }
    Adesk::UInt8 blue() const { return Adesk::UInt8(rgb()); }
    Adesk::UInt32 rgb() const;

    bool operator==(const AcCmColor&) const = default;

private:
    AcCmEntityColor::ColorMethod method_ = AcCmEntityColor::kByLayer;
    Adesk::UInt32 value_ = 256; // the index, or 0xRRGGBB
};
