// AcGiTextStyle: how a piece of text is set, in the host's form of host::TextFace. Loading one from a
// drawing's table is left to those who know tables.
#pragma once

#include <string>

#include "host/db/adesk.h"
#include "host/ge/point2d.h"
#include "host/gi/text_metrics.h"

class AcGiTextStyle {
public:
    AcGiTextStyle() = default;
    AcGiTextStyle(const ACHAR* fontFile, const ACHAR* bigFontFile, double textSize, double xScale,
                  double obliquingAngle, double trackingPercent, Adesk::Boolean isBackward,
                  Adesk::Boolean isUpsideDown, Adesk::Boolean isVertical, Adesk::Boolean isOverlined = false,
                  Adesk::Boolean isUnderlined = false);
    explicit AcGiTextStyle(const host::TextFace& face, double textSize = 1.0)
        : face_(face), size_(textSize) {}

    const ACHAR* fileName() const { return face_.fontFile.c_str(); }
    const ACHAR* bigFontFileName() const { return face_.bigFontFile.c_str(); }
    double textSize() const { return size_; }
    double xScale() const { return face_.widthFactor; }
    double obliquingAngle() const { return face_.oblique; }
    double trackingPercent() const { return face_.tracking; }
    Adesk::Boolean isBackward() const { return face_.backward; }
    Adesk::Boolean isUpsideDown() const { return face_.upsideDown; }
    Adesk::Boolean isVertical() const { return face_.vertical; }
    Adesk::Boolean isUnderlined() const { return underlined_; }
    Adesk::Boolean isOverlined() const { return overlined_; }
    void setFileName(const ACHAR* file) { face_.fontFile = file ? file : L""; }
    void setBigFontFileName(const ACHAR* file) { face_.bigFontFile = file ? file : L""; }
    void setTextSize(double size);
    void setXScale(double scale);
    void setObliquingAngle(double radians);
    void setTrackingPercent(double factor); // 1 is the font's own spacing
    void setBackward(Adesk::Boolean on) { face_.backward = on; }
    void setUpsideDown(Adesk::Boolean on) { face_.upsideDown = on; }
    void setVertical(Adesk::Boolean on) { face_.vertical = on; }
    void setUnderlined(Adesk::Boolean on) { underlined_ = on; }
    void setOverlined(Adesk::Boolean on) { overlined_ = on; }
    Acad::ErrorStatus setFont(const ACHAR* typeface, Adesk::Boolean bold, Adesk::Boolean italic,
                              int charset = 0, int pitchAndFamily = 0);
    int loadStyleRec() const { return 0; } // fonts are found when they are needed

    // Width and height of one line. `length` -1 takes all of the text; control codes are read unless raw.
    AcGePoint2d extents(const ACHAR* text, Adesk::Boolean penUps, int length, Adesk::Boolean raw) const;
    // The tight box of what is drawn, from the start of the baseline.
    Acad::ErrorStatus extentsBox(const ACHAR* text, Adesk::Boolean penUps, int length, Adesk::Boolean raw,
                                 AcGePoint2d& lowerLeft, AcGePoint2d& upperRight) const;

    const host::TextFace& face() const { return face_; }

private:
    host::TextFace face_;
    double size_ = 1.0;
    bool underlined_ = false, overlined_ = false;
};
