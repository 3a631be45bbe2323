// Where a collector's primitives end: the list being built, with the transformation, traits and
// inheritance of the moment. collector.cpp puts the host's drawing interfaces in front of it.
#pragma once

#include <vector>

#include "host/view/clip_shape.h"
#include "host/view/collector.h"
#include "host/view/ribbon.h"
#include "host/view/style_resolver.h"

namespace host {

class DisplaySink {
public:
    DisplaySink(DrawingSource& source, const DisplayOptions& options)
        : source_(source), options_(options), resolver_(source, list_, options.plotOnly) {}

    StoredTraits traits;
    const AcGeMatrix3d& model() const { return stack_.empty() ? AcGeMatrix3d::kIdentity : stack_.back(); }
    bool push(const AcGeMatrix3d& matrix);
    bool pop();
    // Contours and texts from here on are cut to the boundary, which stands in the coordinates of the moment.
    void pushClip(const AcGiClipBoundary& boundary);
    void popClip();

    void polyline(std::span<const AcGePoint3d> points, const AcGeVector3d* normal, Adesk::GsMarker marker);
    void polygon(std::span<const Adesk::UInt32> counts, const AcGePoint3d* points);
    void pline(const Pline& polyline);
    void text(const AcGePoint3d& position, const AcGeVector3d& normal, const AcGeVector3d& direction,
              std::wstring_view message, bool raw, const AcGiTextStyle& style);
    void endless(DisplayPrimitive::Kind kind, const AcGePoint3d& on, const AcGePoint3d& through);

    // Calls `drawIt` with the drawable's look in force; false when it is not to be drawn at all.
    template <class Draw> bool within(const AcGiDrawable& drawable, Draw&& drawIt);
    void beginOwner(AcDbObjectId owner) { list_.owners.push_back(owner); }
    bool isFull();
    DisplayList& list() { return list_; }
    DrawingSource& source() { return source_; }
    const DisplayOptions& options() const { return options_; }

private:
    struct State {
        Inherited inherited;
        std::uint8_t opacity = 255;
    };
    const ResolvedStyle& style();
    DashPattern pattern(double modelScale);
    DisplayPrimitive& begin(DisplayPrimitive::Kind kind);
    void addContour(std::span<const AcGePoint3d> world);
    void addModelContour(std::span<const AcGePoint3d> points);
    void finish();
    void cutContours();
    void dashed(std::span<const AcGePoint3d> world, const DashPattern& dashes);
    void thicken(std::span<const AcGePoint3d> points, const AcGeVector3d& normal);
    std::vector<AcGePoint3d> toWorld(std::span<const AcGePoint3d> points) const;
    void ribbon(std::span<const RibbonPoint> line, bool closed, const AcGeMatrix3d& plane, double elevation);
    void thinRun(std::span<const RibbonPoint> line, bool whole, std::span<const std::size_t> corners,
                 const AcGeMatrix3d& plane, double elevation);
    void placeText(const DisplayText& run, const std::vector<PlainLine::Mark>& marks);
    std::uint32_t faceIndex(const TextFace& face);
    bool enter(const AcGiDrawable& drawable, const DrawableLook& look);

    DrawingSource& source_;
    const DisplayOptions& options_;
    DisplayList list_;
    StyleResolver resolver_;
    std::vector<AcGeMatrix3d> stack_;
    std::vector<ClipShape> clips_;
    std::vector<AcDbObjectId> blocks_;
    State state_;
    ResolvedStyle resolved_;
    TraitValues resolvedFor_;
    bool resolvedValid_ = false;
    std::size_t depth_ = 0, drawables_ = 0;
};

inline constexpr std::size_t kDeepestNesting = 64;

template <class Draw> bool DisplaySink::within(const AcGiDrawable& drawable, Draw&& drawIt) {
    const DrawableLook look = source_.look(drawable);
    if (!enter(drawable, look)) return false;
    const State before = state_;
    const TraitValues traitsBefore = traits.values;
    const std::size_t matrices = stack_.size(), clips = clips_.size();
    if (depth_ > 0) state_.inherited = style().handedDown;
    state_.opacity = look.opacity;
    traits.values = look.traits;
    resolvedValid_ = false;
    if (!look.block.isNull()) blocks_.push_back(look.block);
    ++depth_;
    drawIt();
    --depth_;
    if (!look.block.isNull()) blocks_.pop_back();
    stack_.resize(std::min(stack_.size(), matrices)); // a drawable that forgot to pop harms nobody
    clips_.resize(std::min(clips_.size(), clips), ClipShape({}, AcGeMatrix3d::kIdentity));
    traits.values = traitsBefore;
    state_ = before;
    resolvedValid_ = false;
    return true;
}

} // namespace host
