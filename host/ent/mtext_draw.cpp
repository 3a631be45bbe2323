// Multi-line text: its lines, how they move and how they are drawn. Formatting codes inside the text
// aren't shown; the style's face is used throughout.
#include <cmath>

#include "host/ent/filing.h"
#include "host/ent/text.h"
#include "host/ent/text_layout.h"
#include "host/gi/draw.h"

namespace {
// Baselines stand this far apart, in heights, at a spacing factor of 1.
constexpr double kLineStep = 5.0 / 3.0;
} // namespace

std::vector<AcDbMText::Line> AcDbMText::lines() const {
    const host::TextFace face = host::faceOf(style_);
    const auto wrapped = host::wrapText(plainText(), face, height_, width_);
    const double step = kLineStep * height_ * (lineSpacing_ > 0 ? lineSpacing_ : 1);
    const int column = (attachment_ - 1) % 3, row = (attachment_ - 1) / 3;
    const double whole = height_ + step * double(wrapped.size() - 1);
    host::TextFrame frame;
    frame.origin = location_, frame.right = direction_, frame.up = normal_.crossProduct(direction_);
    double y = 0.5 * row * whole - height_;
    std::vector<Line> out;
    for (const host::WrappedLine& line : wrapped) {
        out.push_back({line.text, frame.at(-0.5 * column * line.width, y)});
        y -= step;
    }
    return out;
}

Adesk::Boolean AcDbMText::subWorldDraw(AcGiWorldDraw* context) const {
    const AcGiTextStyle style(host::faceOf(style_), height_);
    for (const Line& line : lines())
        if (!line.text.empty())
            context->geometry().text(line.position, normal_, direction_, line.text.c_str(), -1, false, style);
    return true;
}

Acad::ErrorStatus AcDbMText::subGetGeomExtents(AcDbExtents& extents) const {
    if (!(height_ > 0) || !host::finite(location_)) return Acad::eInvalidExtents;
    const host::TextFace face = host::faceOf(style_);
    AcDbExtents box;
    for (const Line& line : lines())
        box.addExt(host::textExtents({line.position, direction_, normal_.crossProduct(direction_)}, face,
                                     height_, line.text));
    return extents = box, Acad::eOk;
}

// Mirrored text stays readable: it is hung up by the opposite side instead.
Acad::ErrorStatus AcDbMText::subTransformBy(const AcGeMatrix3d& matrix) {
    AcGeVector3d normal = normal_;
    double elevation = 0;
    const bool mirrored = matrix.convertToLocal(normal, elevation).det() < 0;
    AcGeVector3d along = matrix * direction_;
    const double stretch = along.length();
    along = along / stretch;
    const double rise =
        std::fabs((matrix * normal_.crossProduct(direction_)).dotProduct(normal.crossProduct(along)));
    if (!(stretch > 0) || !(rise > 0)) return Acad::eDegenerateGeometry;
    if (auto es = willModify(); es != Acad::eOk) return es;
    int column = (attachment_ - 1) % 3, row = (attachment_ - 1) / 3;
    if (mirrored && along.dotProduct(direction_) < 0)
        along = -along, column = 2 - column;
    else if (mirrored)
        row = 2 - row;
    attachment_ = AttachmentPoint(1 + 3 * row + column);
    location_ = matrix * location_, direction_ = along, normal_ = normal;
    height_ *= rise, width_ *= stretch;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subExplode(AcDbVoidPtrArray& parts) const {
    const host::TextFace face = host::faceOf(style_);
    for (const Line& line : lines()) {
        if (line.text.empty()) continue;
        auto text = std::make_unique<AcDbText>(line.position, line.text.c_str(), style_, height_, rotation());
        text->setNormal(normal_);
        text->setWidthFactor(face.widthFactor), text->setOblique(face.oblique);
        text->setPropertiesFrom(this);
        parts.append(text.release());
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subGetGripPoints(AcGePoint3dArray& points) const {
    return points.append(location_), Acad::eOk;
}
Acad::ErrorStatus AcDbMText::subMoveGripPointsAt(const AcGeIntArray&, const AcGeVector3d& offset) {
    return setLocation(location_ + offset);
}
Acad::ErrorStatus AcDbMText::subGetOsnapPoints(AcDb::OsnapMode mode, const AcGePoint3d&, const AcGePoint3d&,
                                               AcGePoint3dArray& points) const {
    if (mode == AcDb::kOsModeIns) points.append(location_);
    return Acad::eOk;
}
