// The screen as the database sees it: which entities are highlighted, what was asked to be drawn again,
// how the contents of a block are drawn; and the vectors of acedGrDraw.
#pragma once

#include <set>
#include <vector>

#include "host/db/entity.h"

namespace host {

class Screen : public EntityDisplay {
public:
    void highlight(AcDbObjectId entity, bool on) override;
    void redraw(AcDbObjectId entity) override;
    bool drawBlock(AcGiWorldDraw* context, AcDbObjectId block) override;

    // In the order of their handles.
    const std::set<AcDbObjectId>& highlighted() const { return highlighted_; }
    // Entities to be drawn again since the last call, each once, in the order asked for.
    std::vector<AcDbObjectId> takeRedrawn();
    // Lines that programs have drawn on the screen; they last until it is drawn anew.
    struct Vector {
        AcGePoint3d from, to; // world
        int color = 7;        // 0 erases, 1 to 255 the drawing's colours, -1 inverts
        bool highlight = false;
        bool operator==(const Vector&) const = default;
    };
    const std::vector<Vector>& vectors() const { return vectors_; }
    // An inverting one that is there already takes it away.
    void draw(const Vector& vector);
    void clearVectors();
    // Grows with every change of the three.
    unsigned generation() const { return generation_; }
    // Forgets what belongs to a drawing that goes away.
    void forget(const AcDbDatabase* database);

private:
    std::set<AcDbObjectId> highlighted_;
    std::vector<AcDbObjectId> redrawn_;
    std::vector<Vector> vectors_;
    unsigned generation_ = 0;
};

// The process's screen. The first call makes it the entities' display.
Screen& screen();

} // namespace host
