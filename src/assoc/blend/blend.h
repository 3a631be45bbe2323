// Blends in the drawing: making them, finding them under a pick, making their copies anew.
#pragma once
#include "assoc/association.h"
#include "assoc/blend/blend_record.h"

namespace corvane {

// The object of a drawing that hears of a blend's changed curves.
class CvBlendToNotify : public NotifyObject {
    ACRX_DECLARE_MEMBERS(CvBlendToNotify)
public:
    CvBlendToNotify();
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    static void rxInit();
};

// At the module's loading and unloading: the class, and the reactors.
void LoadBlends();
void UnloadBlends();
Association& BlendAssociation();

enum class BlendFailure { none, lock, curves, block, definition, reference };
struct MadeBlend {
    AcDbObjectId reference{};
    BlendFailure failure = BlendFailure::none;
};
// The blend as an anonymous block, its reference in the current space, from now on following its curves.
MadeBlend CreateBlend(const BlendRecord& record);

// The copies anew, from the record given or from that of the reference itself; the record is stored. False,
// with the blend as it was, when a source curve or the block can't be opened.
bool UpdateBlend(AcDbObjectId reference, BlendRecord record);
bool RebuildBlend(AcDbObjectId reference);

// The blend that a pick in world coordinates means: the picked reference itself; or, for an entity in an
// anonymous block, the first reference to that block which holds a blend and whose extents contain the point
// in x and y, else the first which holds a blend. Null when there is none.
AcDbObjectId FindBlend(AcDbObjectId picked, const AcGePoint3d& point);

} // namespace corvane
