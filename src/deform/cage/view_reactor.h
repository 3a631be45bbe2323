// Keeps a cage in sight while the view changes.
#pragma once
#include <cstdint>
#include <optional>

#include "core/host/editor.h"
#include "deform/cage/cage_graphics.h"

namespace corvane::deform {

// Draws the cage again after changes of the view, five times a second at most.
class ViewReactor : public AcEditorReactor {
public:
    explicit ViewReactor(CageGraphics& graphics);
    ~ViewReactor() override;
    void viewChanged() override;
    // What a change too soon after another has left to be done; called when there is time.
    void catchUp();

private:
    bool due() const;
    CageGraphics& graphics_;
    bool dirty_ = false;
    std::optional<std::uint32_t> lastTicks_;
};
using FFDViewReactor = ViewReactor;

} // namespace corvane::deform
