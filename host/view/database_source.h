// DrawingSource over a drawing: reads records as they stand, also while others have them open.
#pragma once

#include "host/view/drawing_source.h"

namespace host {

class DatabaseSource : public DrawingSource {
public:
    // `database` may be null: then everything is on layer 0 with full lines.
    explicit DatabaseSource(AcDbDatabase* database) : database_(database) {}
    DrawableLook look(const AcGiDrawable& drawable) override;
    LayerLook layer(AcDbObjectId id) override;
    LinetypeLook linetype(AcDbObjectId id) override;
    double linetypeScale() override;
    bool fillMode() override;
    AcDbDatabase* database() override { return database_; }

private:
    AcDbDatabase* database_;
};

} // namespace host
