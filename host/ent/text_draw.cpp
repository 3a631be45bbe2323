// Single-line text: where it lies, how it moves and how it is drawn.
#include <cmath>
#include <numbers>

#include "host/ent/filing.h"
#include "host/ent/text.h"
#include "host/ent/text_layout.h"
#include "host/gi/draw.h"

host::TextFace AcDbText::face() const {
    host::TextFace face = host::faceOf(style_);
    face.widthFactor = widthFactor_ > 0 ? widthFactor_ : 1;
    face.oblique = oblique_;
    face.backward = isMirroredInX(), face.upsideDown = isMirroredInY();
    return face;
}

Adesk::Boolean AcDbText::subWorldDraw(AcGiWorldDraw* context) const {
    const host::TextFrame frame = host::textFrame(position_, normal_, rotation_);
    if (thickness_ != 0) context->subEntityTraits().setThickness(thickness_);
    context->geometry().text(frame.origin, normal_, frame.right, shownText().c_str(), -1, false,
                             AcGiTextStyle(face(), height_));
    return true;
}

Acad::ErrorStatus AcDbText::subGetGeomExtents(AcDbExtents& extents) const {
    if (!(height_ > 0) || !host::finite(position_)) return Acad::eInvalidExtents;
    extents = host::textExtents(host::textFrame(position_, normal_, rotation_), face(), height_, shownText());
    return Acad::eOk;
}

namespace {

// How far the justified place lies from the start of the baseline, in the text's own frame.
AcGeVector2d justification(AcDb::TextHorzMode horizontal, AcDb::TextVertMode vertical,
                           const host::TextExtents& size, double height) {
    AcGeVector2d at;
    if (horizontal == AcDb::kTextCenter || horizontal == AcDb::kTextMid) at.x = 0.5 * size.advance;
    if (horizontal == AcDb::kTextRight) at.x = size.advance;
    if (horizontal == AcDb::kTextMid || vertical == AcDb::kTextVertMid) at.y = 0.5 * height;
    if (vertical == AcDb::kTextBottom) at.y = -size.descent;
    if (vertical == AcDb::kTextTop) at.y = height;
    return at;
}

} // namespace

// Aligned text fills the stretch between its points with its height, fitted text with its width.
Acad::ErrorStatus AcDbText::adjustAlignment(const AcDbDatabase*) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    if (isDefaultAlignment()) return alignment_ = position_, Acad::eOk;
    const host::TextFace set = face();
    host::TextFace plain = set;
    plain.backward = plain.upsideDown = false;
    const host::TextExtents size =
        host::textMetrics()->measure(plain, height_, host::plainLine(shownText()).text);
    if (horizontal_ == AcDb::kTextAlign || horizontal_ == AcDb::kTextFit) {
        const AcGeVector3d along = AcGeMatrix3d::worldToPlane(normal_) * (alignment_ - position_);
        const double length = std::hypot(along.x, along.y);
        if (!(length > 0) || !(size.advance > 0)) return Acad::eOk;
        rotation_ = std::atan2(along.y, along.x);
        (horizontal_ == AcDb::kTextAlign ? height_ : widthFactor_) *= length / size.advance;
        return Acad::eOk;
    }
    const AcGeVector2d at = justification(horizontal_, vertical_, size, height_);
    const host::TextFrame frame = host::textFrame(alignment_, normal_, rotation_);
    position_ = frame.at(set.backward ? at.x : -at.x, set.upsideDown ? at.y : -at.y);
    return Acad::eOk;
}

// Height and width follow the images of the baseline and of the upright stems, whose lean is the
// obliquing; mirrored text is marked as such and keeps its reading direction where it can.
Acad::ErrorStatus AcDbText::subTransformBy(const AcGeMatrix3d& matrix) {
    AcGeVector3d normal = normal_;
    double elevation = (AcGeMatrix3d::worldToPlane(normal_) * position_).z;
    const AcGeMatrix2d local = matrix.convertToLocal(normal, elevation);
    const AcGeVector2d along(std::cos(rotation_), std::sin(rotation_));
    const AcGeVector2d stem = local * (along.perpVector() + along * std::tan(oblique_));
    AcGeVector2d base = local * along;
    const double stretch = base.length();
    const bool mirrored = local.det() < 0;
    base *= (mirrored ? -1 : 1) / stretch;
    const double rise = base.perpVector().dotProduct(stem);
    if (!(rise > 0) || !(stretch > 0)) return Acad::eDegenerateGeometry;
    if (auto es = willModify(); es != Acad::eOk) return es;
    if (mirrored) generation_ ^= 2;
    if (thickness_ != 0) thickness_ *= (matrix * normal_).length();
    oblique_ = std::atan((mirrored ? -1 : 1) * base.dotProduct(stem) / rise);
    if (std::fabs(oblique_) < 1e-12) oblique_ = 0;
    height_ *= rise;
    if (std::fabs(stretch / rise - 1) > 1e-12) widthFactor_ *= stretch / rise;
    rotation_ = base.angle();
    position_ = matrix * position_, alignment_ = matrix * alignment_, normal_ = normal;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::subGetGripPoints(AcGePoint3dArray& points) const {
    points.append(position_);
    if (!isDefaultAlignment()) points.append(alignment_);
    return Acad::eOk;
}

// Either point moves the whole text, but for aligned and fitted text, which lies between the two.
Acad::ErrorStatus AcDbText::subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    const bool between = horizontal_ == AcDb::kTextAlign || horizontal_ == AcDb::kTextFit;
    if (!between || indices.contains(0)) position_ += offset;
    if (!between || indices.contains(1)) alignment_ += offset;
    return between ? adjustAlignment() : Acad::eOk;
}

Acad::ErrorStatus AcDbText::subGetOsnapPoints(AcDb::OsnapMode mode, const AcGePoint3d&, const AcGePoint3d&,
                                              AcGePoint3dArray& points) const {
    if (mode == AcDb::kOsModeIns) points.append(isDefaultAlignment() ? position_ : alignment_);
    return Acad::eOk;
}
