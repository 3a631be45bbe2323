// Highlights, redraws, and drawing of blocks.
#include "host/view/screen.h"

#include <algorithm>
#include <utility>

#include "host/db/blocktable.h"
#include "host/ent/text.h"
#include "host/gi/draw.h"
#include "host/view/readable.h"

namespace host {

void Screen::highlight(AcDbObjectId entity, bool on) {
    if (entity.isNull()) return;
    const bool changed = on ? highlighted_.insert(entity).second : highlighted_.erase(entity) > 0;
    generation_ += changed;
}

void Screen::redraw(AcDbObjectId entity) {
    if (entity.isNull() || std::find(redrawn_.begin(), redrawn_.end(), entity) != redrawn_.end()) return;
    redrawn_.push_back(entity);
    ++generation_;
}

bool Screen::drawBlock(AcGiWorldDraw* context, AcDbObjectId block) {
    const auto* record = readable<AcDbBlockTableRecord>(block);
    if (!context || !record) return false;
    bool any = false;
    for (AcDbObjectId id : record->entities()) {
        const auto* entity = readable<AcDbEntity>(id);
        if (!entity || context->regenAbort()) continue;
        // Definitions show only where the block is made; references bring attributes of their own.
        const auto* definition = dynamic_cast<const AcDbAttributeDefinition*>(entity);
        if (definition && !definition->isConstant()) continue;
        context->geometry().draw(entity);
        any = true;
    }
    return any;
}

void Screen::draw(const Vector& vector) {
    ++generation_;
    const auto present =
        vector.color == -1 ? std::find(vectors_.begin(), vectors_.end(), vector) : vectors_.end();
    if (present == vectors_.end())
        vectors_.push_back(vector);
    else
        vectors_.erase(present);
}

void Screen::clearVectors() {
    generation_ += !vectors_.empty();
    vectors_.clear();
}

std::vector<AcDbObjectId> Screen::takeRedrawn() { return std::exchange(redrawn_, {}); }

void Screen::forget(const AcDbDatabase* database) {
    const auto gone = [&](AcDbObjectId id) { return id.database() == database; };
    std::erase_if(highlighted_, gone);
    std::erase_if(redrawn_, gone);
    vectors_.clear();
    ++generation_;
}

Screen& screen() {
    static Screen* const only = [] {
        static Screen made;
        setEntityDisplay(&made);
        return &made;
    }();
    return *only;
}

} // namespace host
