// The screen as the database sees it: which entities are highlighted, what was asked to be drawn again,
// and how the contents of a block are drawn.
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
    // Grows with every change of the two.
    unsigned generation() const { return generation_; }
    // Forgets what belongs to a drawing that goes away.
    void forget(const AcDbDatabase* database);

private:
    std::set<AcDbObjectId> highlighted_;
    std::vector<AcDbObjectId> redrawn_;
    unsigned generation_ = 0;
};

// The process's screen. The first call makes it the entities' display.
Screen& screen();

} // namespace host
