// The host's drawing interfaces in front of the sink.
#include "host/view/collector.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/gi/flatten.h"
#include "host/view/sink.h"

namespace host {
namespace {

constexpr double kCirclePart = 2e-4; // of the radius, that a circle's chords may keep from it

// Both kinds of geometry collect alike.
template <class Base> class Collecting : public Base {
public:
    Collecting(DisplaySink& sink, std::function<bool(const AcGiDrawable*)> draw)
        : sink_(sink), draw_(std::move(draw)) {}

    void getModelToWorldTransform(AcGeMatrix3d& matrix) const override { matrix = sink_.model(); }
    using Base::pushModelTransform;
    Adesk::Boolean pushModelTransform(const AcGeMatrix3d& matrix) override { return sink_.push(matrix); }
    Adesk::Boolean popModelTransform() override { return sink_.pop(); }

    Adesk::Boolean polyline(Adesk::UInt32 count, const AcGePoint3d* points, const AcGeVector3d* normal,
                            Adesk::GsMarker marker) override {
        sink_.polyline({points, count}, normal, marker);
        return false;
    }
    Adesk::Boolean polygon(Adesk::UInt32 count, const AcGePoint3d* points) override {
        sink_.polygon({&count, 1}, points);
        return false;
    }
    Adesk::Boolean polyPolygon(Adesk::UInt32 loops, const Adesk::UInt32* counts,
                               const AcGePoint3d* points) override {
        sink_.polygon({counts, loops}, points);
        return false;
    }
    Adesk::Boolean ellipArc(const EllipticArc& arc, AcGiArcType type) override {
        const bool whole = std::fabs(std::fabs(arc.end - arc.start) - 2 * M_PI) < 1e-9;
        const bool filled = sink_.traits.values.fill == kAcGiFillAlways && whole;
        return Base::ellipArc(arc, filled ? kAcGiArcChord : type);
    }
    Adesk::Boolean pline(const Pline& polyline) override {
        sink_.pline(polyline);
        return false;
    }
    using Base::text;
    Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                        const AcGeVector3d& direction, const ACHAR* message, Adesk::Int32 length,
                        Adesk::Boolean raw, const AcGiTextStyle& style) override {
        if (!message) return false;
        std::wstring_view all(message);
        if (length >= 0) all = all.substr(0, std::min(all.size(), std::size_t(length)));
        sink_.text(position, normal, direction, all, raw, style);
        return false;
    }
    Adesk::Boolean pushClipBoundary(const AcGiClipBoundary& boundary) override {
        return sink_.pushClip(boundary), true;
    }
    void popClipBoundary() override { sink_.popClip(); }
    Adesk::Boolean xline(const AcGePoint3d& on, const AcGePoint3d& alsoOn) override {
        sink_.endless(DisplayPrimitive::Kind::xline, on, alsoOn);
        return false;
    }
    Adesk::Boolean ray(const AcGePoint3d& start, const AcGePoint3d& through) override {
        sink_.endless(DisplayPrimitive::Kind::ray, start, through);
        return false;
    }
    Adesk::Boolean draw(const AcGiDrawable* drawable) override { return drawable && draw_(drawable); }

protected:
    double chordError(double radius) const override { return radius * kCirclePart; }
    DisplaySink& sink_;

private:
    std::function<bool(const AcGiDrawable*)> draw_;
};

using WorldGeometry = Collecting<AcGiWorldGeometry>;

// Eye and device coordinates are brought back to the world.
class ViewGeometry : public Collecting<AcGiViewportGeometry> {
public:
    using Collecting::Collecting;
    Adesk::Boolean polylineEye(Adesk::UInt32 count, const AcGePoint3d* points) override {
        return placed(sink_.options().view.displayToWorld(), [&] {
            sink_.polyline({points, count}, nullptr, -1);
        });
    }
    Adesk::Boolean polygonEye(Adesk::UInt32 count, const AcGePoint3d* points) override {
        return placed(sink_.options().view.displayToWorld(), [&] { sink_.polygon({&count, 1}, points); });
    }
    Adesk::Boolean polylineDc(Adesk::UInt32 count, const AcGePoint3d* points) override {
        return placed(deviceToWorld(), [&] { sink_.polyline({points, count}, nullptr, -1); });
    }
    Adesk::Boolean polygonDc(Adesk::UInt32 count, const AcGePoint3d* points) override {
        return placed(deviceToWorld(), [&] { sink_.polygon({&count, 1}, points); });
    }

private:
    // Pixels have their origin at the lower left corner of the picture.
    AcGeMatrix3d deviceToWorld() const {
        const ViewFrame& view = sink_.options().view;
        const double unit = view.width() / std::max(1.0, sink_.options().pixelsAcross);
        const AcGeVector3d corner(view.center.x - view.width() / 2, view.center.y - view.height / 2, 0);
        return view.displayToWorld() * AcGeMatrix3d::translation(corner) * AcGeMatrix3d::scaling(unit);
    }
    template <class Draw> Adesk::Boolean placed(const AcGeMatrix3d& toWorld, Draw&& drawIt) {
        if (!sink_.push(sink_.model().inverse() * toWorld)) return false;
        drawIt();
        sink_.pop();
        return false;
    }
};

class Context : public AcGiContext {
public:
    explicit Context(DisplaySink& sink) : sink_(sink) {}
    AcDbDatabase* database() const override { return sink_.source().database(); }
    bool isPlotGeneration() const override { return sink_.options().plotOnly; }

private:
    DisplaySink& sink_;
};

template <class Base> class Draw : public Base {
public:
    Draw(DisplaySink& sink, AcGiContext& context) : sink_(sink), context_(context) {}
    AcGiRegenType regenType() const override { return sink_.options().regenType; }
    Adesk::Boolean regenAbort() const override { return sink_.isFull(); }
    AcGiSubEntityTraits& subEntityTraits() const override { return sink_.traits; }
    Adesk::Boolean isDragging() const override { return sink_.options().dragging; }
    double deviation(AcGiDeviationType, const AcGePoint3d&) const override {
        return sink_.options().chordError;
    }
    Adesk::UInt32 numberOfIsolines() const override { return 4; }
    AcGiContext* context() override { return &context_; }

protected:
    DisplaySink& sink_;

private:
    AcGiContext& context_;
};

class WorldDraw : public Draw<AcGiWorldDraw> {
public:
    WorldDraw(DisplaySink& sink, AcGiContext& context, WorldGeometry& geometry)
        : Draw(sink, context), geometry_(geometry) {}
    AcGiWorldGeometry& geometry() const override { return geometry_; }

private:
    WorldGeometry& geometry_;
};

class Viewport : public AcGiViewport {
public:
    explicit Viewport(const DisplayOptions& options) : options_(options) {}
    void getWorldToEyeTransform(AcGeMatrix3d& matrix) const override {
        matrix = options_.view.worldToDisplay();
    }
    void getEyeToWorldTransform(AcGeMatrix3d& matrix) const override {
        matrix = options_.view.displayToWorld();
    }
    Adesk::Boolean isPerspective() const override { return options_.view.perspective; }
    AcGeVector3d viewDir() const override { return options_.view.direction.normal(); }
    void getCameraTarget(AcGePoint3d& target) const override { target = options_.view.target; }
    void getCameraUpVector(AcGeVector3d& up) const override {
        up = options_.view.displayToWorld() * AcGeVector3d::kYAxis;
    }
    void getNumPixelsInUnitSquare(const AcGePoint3d&, AcGePoint2d& pixels) const override {
        const double perUnit = options_.pixelsAcross / options_.view.width();
        pixels.set(perUnit, perUnit);
    }

private:
    const DisplayOptions& options_;
};

class ViewportDraw : public Draw<AcGiViewportDraw> {
public:
    ViewportDraw(DisplaySink& sink, AcGiContext& context, Viewport& viewport, ViewGeometry& geometry)
        : Draw(sink, context), viewport_(viewport), geometry_(geometry) {}
    AcGiViewport& viewport() const override { return viewport_; }
    AcGiViewportGeometry& geometry() const override { return geometry_; }

private:
    Viewport& viewport_;
    ViewGeometry& geometry_;
};

} // namespace

class DisplayCollector::Sink {
public:
    Sink(DrawingSource& source, const DisplayOptions& options)
        : sink(source, options), context_(sink),
          world_(sink, [this](const AcGiDrawable* d) { return draw(*d); }),
          view_(sink, [this](const AcGiDrawable* d) { return draw(*d); }), worldDraw_(sink, context_, world_),
          viewport_(options), viewportDraw_(sink, context_, viewport_, view_) {}

    bool draw(const AcGiDrawable& drawable) {
        sink.within(drawable, [&] {
            if (drawable.worldDraw(&worldDraw_)) return;
            viewMatters = true;
            drawable.viewportDraw(&viewportDraw_);
        });
        return false;
    }

    DisplaySink sink;
    bool viewMatters = false; // something has been drawn for the view

private:
    Context context_;
    WorldGeometry world_;
    ViewGeometry view_;
    WorldDraw worldDraw_;
    Viewport viewport_;
    ViewportDraw viewportDraw_;
};

DisplayCollector::DisplayCollector(DrawingSource& source, DisplayOptions options)
    : source_(source), options_(std::move(options)) {
    if (!(options_.chordError > 0)) options_.chordError = 0.01;
    sink_ = std::make_unique<Sink>(source_, options_);
}

DisplayCollector::~DisplayCollector() = default;

bool DisplayCollector::add(const AcGiDrawable& drawable, AcDbObjectId owner) {
    sink_->sink.beginOwner(owner);
    sink_->viewMatters = false;
    sink_->draw(drawable);
    return sink_->viewMatters;
}

void DisplayCollector::setView(const ViewFrame& view, double pixelsAcross) {
    options_.view = view;
    options_.pixelsAcross = pixelsAcross;
}

const DisplayList& DisplayCollector::list() const { return sink_->sink.list(); }

DisplayList DisplayCollector::take() {
    DisplayList list = std::move(sink_->sink.list());
    sink_ = std::make_unique<Sink>(source_, options_);
    return list;
}

} // namespace host
