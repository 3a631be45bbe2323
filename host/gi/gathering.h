// The base of drawing contexts that gather what is drawn into them outside any view: the stack of places and
// the answers that all of them give.
#pragma once

#include <vector>

#include "host/gi/draw.h"

namespace host {

class GatheringDraw : public AcGiWorldDraw, public AcGiWorldGeometry, public AcGiContext {
public:
    explicit GatheringDraw(AcDbDatabase* database) : database_(database) {}
    GatheringDraw(const GatheringDraw&) = delete;
    GatheringDraw& operator=(const GatheringDraw&) = delete;

    Adesk::Boolean regenAbort() const override { return false; }
    Adesk::Boolean isDragging() const override { return false; }
    Adesk::UInt32 numberOfIsolines() const override { return 4; }
    AcGiContext* context() override { return this; }
    AcDbDatabase* database() const override { return database_; }
    AcGiWorldGeometry& geometry() const override { return const_cast<GatheringDraw&>(*this); }

    void getModelToWorldTransform(AcGeMatrix3d& matrix) const override { matrix = place(); }
    using AcGiGeometry::pushModelTransform;
    Adesk::Boolean pushModelTransform(const AcGeMatrix3d& matrix) override {
        places_.push_back(place() * matrix);
        return true;
    }
    Adesk::Boolean popModelTransform() override {
        if (!places_.empty()) places_.pop_back();
        return true;
    }

protected:
    // From the coordinates of the moment to the world's.
    AcGeMatrix3d place() const { return places_.empty() ? AcGeMatrix3d() : places_.back(); }

private:
    AcDbDatabase* database_;
    std::vector<AcGeMatrix3d> places_;
};

} // namespace host
