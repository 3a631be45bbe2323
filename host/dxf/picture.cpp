// A drawing context that writes down the lines which are drawn into it.
#include "host/dxf/picture.h"

#include <cmath>

#include "host/gi/gathering.h"
#include "host/gi/textstyle.h"

namespace host::dxf {
namespace {

// Lines look as their entity does, whatever is asked for.
class NoTraits final : public AcGiSubEntityTraits {
public:
    void setColor(Adesk::UInt16) override {}
    void setTrueColor(const AcCmColor&) override {}
    void setLayer(AcDbObjectId) override {}
    void setLineType(AcDbObjectId) override {}
    void setSelectionMarker(Adesk::GsMarker) override {}
    void setFillType(AcGiFillType) override {}
    void setLineWeight(AcDb::LineWeight) override {}
    void setLineTypeScale(double) override {}
    void setThickness(double) override {}
    Adesk::UInt16 color() const override { return 256; }
    AcCmColor trueColor() const override { return {}; }
    AcDbObjectId layerId() const override { return {}; }
    AcDbObjectId lineTypeId() const override { return {}; }
    AcGiFillType fillType() const override { return kAcGiFillNever; }
    AcDb::LineWeight lineWeight() const override { return AcDb::kLnWtByLayer; }
    double lineTypeScale() const override { return 1; }
    double thickness() const override { return 0; }
    Adesk::GsMarker selectionMarker() const override { return 0; }
};

class Sketch final : public GatheringDraw {
public:
    Sketch(const AcDbEntity& entity, double reach) : GatheringDraw(entity.database()), reach_(reach) {
        AcDbExtents box;
        if (entity.getGeomExtents(box) == Acad::eOk)
            deviation_ = 1e-4 * box.minPoint().distanceTo(box.maxPoint());
    }
    Picture take() { return std::move(picture_); }

    AcGiRegenType regenType() const override { return kAcGiForExplode; }
    Adesk::Boolean regenAbort() const override { return !picture_.complete; }
    AcGiSubEntityTraits& subEntityTraits() const override { return traits_; }
    double deviation(AcGiDeviationType, const AcGePoint3d&) const override { return deviation_; }

    Adesk::Boolean polyline(Adesk::UInt32 count, const AcGePoint3d* points, const AcGeVector3d*,
                            Adesk::GsMarker) override {
        return add(count, points, count > 3 && points[0] == points[count - 1]);
    }
    Adesk::Boolean polygon(Adesk::UInt32 count, const AcGePoint3d* points) override {
        return add(count, points, true);
    }
    Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                        const AcGeVector3d& direction, double height, double width, double oblique,
                        const ACHAR* message) override {
        return add({position, normal, direction, height, width, oblique, message});
    }
    Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                        const AcGeVector3d& direction, const ACHAR* message, Adesk::Int32 length,
                        Adesk::Boolean, const AcGiTextStyle& style) override {
        const std::wstring content = length < 0 ? message : std::wstring(message, size_t(length));
        return add(
            {position, normal, direction, style.textSize(), style.xScale(), style.obliquingAngle(), content});
    }
    Adesk::Boolean xline(const AcGePoint3d& on, const AcGePoint3d& alsoOn) override {
        const AcGeVector3d way = (alsoOn - on).normal() * reach_;
        const AcGePoint3d ends[] = {on - way, on + way};
        return add(2, ends, false);
    }
    Adesk::Boolean ray(const AcGePoint3d& start, const AcGePoint3d& through) override {
        const AcGePoint3d ends[] = {start, start + (through - start).normal() * reach_};
        return add(2, ends, false);
    }
    Adesk::Boolean draw(const AcGiDrawable* drawable) override {
        constexpr int kDeepest = 32;
        if (!drawable || depth_ >= kDeepest) return false;
        ++depth_;
        drawable->worldDraw(this);
        --depth_;
        return false;
    }

protected:
    double chordError(double radius) const override {
        return deviation_ > 0 ? deviation_ : AcGiGeometry::chordError(radius);
    }

private:
    bool add(DrawnText text) {
        const AcGeMatrix3d matrix = place();
        const AcGeVector3d along = matrix * text.along;
        if (text.text.empty() || !(text.along.length() > 0) || !(along.length() > 0)) return false;
        text.height *= along.length() / text.along.length();
        text.place = matrix * text.place;
        text.along = along.normal();
        text.normal = (matrix * text.normal).normal();
        if (text.height > 0) picture_.texts.push_back(std::move(text));
        return false;
    }
    bool add(size_t count, const AcGePoint3d* points, bool closed) {
        constexpr size_t kMost = 1000000;
        if (closed && count > 1 && points[0] == points[count - 1]) --count;
        picture_.complete &= (taken_ += count) <= kMost;
        if (count < 2 || !picture_.complete) return false;
        DrawnLine line;
        line.closed = closed && count > 2;
        line.points.reserve(count);
        const AcGeMatrix3d matrix = place();
        for (size_t i = 0; i < count; ++i) line.points.push_back(matrix * points[i]);
        for (const AcGePoint3d& p : line.points)
            if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z)) return false;
        picture_.lines.push_back(std::move(line));
        return false;
    }

    double reach_, deviation_ = 0;
    mutable NoTraits traits_;
    Picture picture_;
    size_t taken_ = 0;
    int depth_ = 0;
};

} // namespace

Picture pictureOf(const AcDbEntity& entity, double reach) {
    Sketch sketch(entity, reach);
    entity.worldDraw(&sketch);
    return sketch.take();
}

} // namespace host::dxf
