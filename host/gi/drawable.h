// AcGiDrawable: whatever can draw itself. Entities are drawables; so are transients that live outside
// any drawing.
#pragma once

class AcGiWorldDraw;
class AcGiViewportDraw;

class AcGiDrawable {
public:
    virtual ~AcGiDrawable() = default;

    // Draws what looks the same in every view. True when that is all; false asks for viewportDraw.
    virtual bool worldDraw(AcGiWorldDraw* context) const = 0;
    // Draws what depends on the view.
    virtual void viewportDraw(AcGiViewportDraw* context) const = 0;

protected:
    AcGiDrawable() = default;
    AcGiDrawable(const AcGiDrawable&) = default;
    AcGiDrawable& operator=(const AcGiDrawable&) = default;
};
