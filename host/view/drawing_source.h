// What the display list needs to know of a drawing, as plain answers: how entities, layers and linetypes
// look. DatabaseSource answers from a drawing; tests and previews may answer otherwise.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/gi/draw.h"

class AcDbDatabase;

namespace host {

struct LayerLook {
    std::wstring name = L"0";
    AcCmColor color;       // by layer stands for colour 7
    AcDbObjectId linetype; // null: full lines
    int weight = AcDb::kLnWtByLwDefault;
    bool off = false, frozen = false, plottable = true;
    bool isZero = true; // layer 0: inside blocks it stands for the reference's layer
};

// What an entity brings along before it draws.
struct DrawableLook {
    TraitValues traits;
    std::uint8_t opacity = 255;
    bool visible = true;
    AcDbObjectId block; // the block record whose instance it draws, or null
};

enum class LinetypeKind { byLayer, byBlock, pattern };
struct LinetypeLook {
    LinetypeKind kind = LinetypeKind::pattern;
    std::vector<double> dashes; // empty: full lines
};

class DrawingSource {
public:
    virtual ~DrawingSource() = default;
    virtual DrawableLook look(const AcGiDrawable& drawable) = 0;
    virtual LayerLook layer(AcDbObjectId id) = 0;       // null or unknown ids: as layer 0
    virtual LinetypeLook linetype(AcDbObjectId id) = 0; // null: by layer
    virtual double linetypeScale() { return 1; }        // of the whole drawing
    virtual int defaultWeight() { return 25; }          // hundredths of a millimetre
    virtual bool fillMode() { return true; }
    virtual AcDbDatabase* database() { return nullptr; }
};

} // namespace host
