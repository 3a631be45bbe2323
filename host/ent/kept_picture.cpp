// Kept entities drawn and measured, by their block or by the picture beside them.
#include "host/ent/kept_picture.h"

#include "host/db/kept.h"
#include "host/ent/blockreference.h"
#include "host/ent/multileader_picture.h"
#include "host/ent/proxy_graphics.h"
#include "host/ent/tolerance_picture.h"
#include "host/gi/gathering.h"

namespace host {
namespace {

// A drawing context that keeps nothing but the box of what is drawn into it.
class Measure final : public GatheringDraw {
public:
    using GatheringDraw::GatheringDraw;
    const AcDbExtents& box() const { return box_; }

    AcGiRegenType regenType() const override { return kAcGiForExtents; }
    AcGiSubEntityTraits& subEntityTraits() const override { return traits_; }
    double deviation(AcGiDeviationType, const AcGePoint3d&) const override { return 0; }

    Adesk::Boolean polyline(Adesk::UInt32 count, const AcGePoint3d* points, const AcGeVector3d*,
                            Adesk::GsMarker) override {
        return polygon(count, points);
    }
    Adesk::Boolean polygon(Adesk::UInt32 count, const AcGePoint3d* points) override {
        const AcGeMatrix3d matrix = place();
        for (Adesk::UInt32 i = 0; i < count; ++i) box_.addPoint(matrix * points[i]);
        return false;
    }
    Adesk::Boolean xline(const AcGePoint3d&, const AcGePoint3d&) override { return false; }
    Adesk::Boolean ray(const AcGePoint3d&, const AcGePoint3d&) override { return false; }
    Adesk::Boolean draw(const AcGiDrawable*) override { return false; }

private:
    AcDbExtents box_;
    mutable StoredTraits traits_;
};

class Picture final : public KeptPicture {
public:
    void draw(const KeptEntity& entity, AcGiWorldDraw* context) override {
        if (!entity.referencedBlock().isNull())
            shown(entity).worldDraw(context);
        else
            drawAlone(entity, *context);
    }
    bool extents(const KeptEntity& entity, AcDbExtents& box) override {
        if (!entity.referencedBlock().isNull()) return shown(entity).getGeomExtents(box) == Acad::eOk;
        Measure measure(entity.database());
        if (!drawAlone(entity, measure) || !measure.box().isValid()) return false;
        return box = measure.box(), true;
    }

private:
    static bool drawAlone(const KeptEntity& entity, AcGiWorldDraw& context) {
        if (drawProxyGraphics(graphicsOf(entity), context)) return true;
        const std::string kind = entity.dxfName();
        return (kind == "MULTILEADER" && drawMultileader(entity, context)) ||
               (kind == "TOLERANCE" && drawTolerance(entity, context));
    }
    // Tables stand at their first point; the blocks of dimensions where they are.
    static AcDbBlockReference shown(const KeptEntity& entity) {
        AcGePoint3d place;
        if (Group part; entity.dxfName() == "ACAD_TABLE")
            for (int axis = 0; axis < 3; ++axis)
                if (entity.groups().find(10 + 10 * axis, part)) place[unsigned(axis)] = part.real;
        return AcDbBlockReference(place, entity.referencedBlock());
    }
    // Among what every entity may have, or in a proxy's own data.
    static std::string graphicsOf(const KeptEntity& entity) {
        std::string picture = entity.tail() ? proxyGraphics(entity.tail()->kept) : std::string();
        if (picture.empty() && entity.dxfName() == "ACAD_PROXY_ENTITY")
            picture = proxyGraphics(entity.groups());
        return picture;
    }
};

} // namespace

void showKeptEntities() {
    static Picture picture;
    setKeptPicture(&picture);
}

} // namespace host
