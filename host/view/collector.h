// Builds a display list by letting drawables draw themselves: keeps transformations, follows blocks,
// lays dashes, outlines wide polylines and places text.
#pragma once

#include <functional>
#include <memory>

#include "host/view/display_list.h"
#include "host/view/drawing_source.h"
#include "host/view/view_frame.h"

namespace host {

struct DisplayOptions {
    double chordError = 0; // for free curves, world units; 0: a part of the drawing's size
    AcGiRegenType regenType = kAcGiStandardDisplay;
    bool plotOnly = false; // leave out layers that aren't plotted
    bool dragging = false;
    ViewFrame view{};           // for what looks different in each view
    double pixelsAcross = 1000; // width of the picture, for the same
    std::size_t mostPoints = 40'000'000;
    std::size_t mostDrawables = 4'000'000; // counting each one in each of its blocks' references
    std::function<bool()> aborted{};       // asked now and then; true ends the work
};

class DisplayCollector {
public:
    explicit DisplayCollector(DrawingSource& source, DisplayOptions options = {});
    ~DisplayCollector();

    // Draws it into the list. Invisible drawables and those on frozen layers leave nothing; blocks that hold
    // themselves are cut off at the second round, nesting at a depth of 64. True when it looks different in
    // each view.
    bool add(const AcGiDrawable& drawable, AcDbObjectId owner = {});
    // For what is added from now on.
    void setView(const ViewFrame& view, double pixelsAcross);

    const DisplayList& list() const; // so far
    // The list as it is; the collector starts anew.
    DisplayList take();

private:
    class Sink;
    std::unique_ptr<Sink> sink_;
    DrawingSource& source_;
    DisplayOptions options_;
};

// The options with what they leave to the drawing filled in from its space; a null id stands for the current
// one.
DisplayOptions optionsForSpace(AcDbDatabase& database, AcDbObjectId space, DisplayOptions options);
// The display list of a drawing's space (a block record): its current one for a null id.
DisplayList displaySpace(AcDbDatabase& database, AcDbObjectId space, DisplayOptions options = {});

} // namespace host
