// Keeps a cage in sight while the view changes.
#pragma once
#include <cstdint>
#include <optional>

#include "deform/cage/cage_graphics.h"
#include "deform/cage/input_listening.h"

namespace corvane::deform {

// Draws the cage again after changes of the view, five times a second at most. What a change too soon after
// another has left to be done is made up for when the cursor moves.
class ViewReactor : public AcEditorReactor {
public:
    explicit ViewReactor(CageGraphics& graphics);
    ~ViewReactor() override;
    void viewChanged() override;

private:
    class Follower : public AcEdInputPointMonitor {
    public:
        explicit Follower(ViewReactor& view) : view_(view) {}
        Acad::ErrorStatus monitorInputPoint(const AcEdInputPoint&, AcEdInputPointMonitorResult&) override {
            return view_.catchUp(), Acad::eOk;
        }

    private:
        ViewReactor& view_;
    };
    void catchUp();
    bool due() const;

    CageGraphics& graphics_;
    Follower follower_{*this};
    InputListening listening_{follower_};
    bool dirty_ = false;
    std::optional<std::uint32_t> lastTicks_;
};
using FFDViewReactor = ViewReactor;

} // namespace corvane::deform
