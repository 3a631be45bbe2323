// Making and rebuilding scatters.
#include "scatter/random/scatter_block.h"

#include "core/host/editor.h"
#include "core/host/progress.h"
#include "core/language.h"

namespace corvane::scatter {

template <class Params> PlacedScatter PlaceScatter(EntityList entities, const Params& params) {
    PlacedScatter placed;
    const AcDbObjectId block = BuildBlock(std::move(entities));
    if (block.isNull()) return placed.outcome = Placing::noBlock, placed;
    placed.reference = InsertBlock(block, AcGePoint3d::kOrigin);
    if (placed.reference.isNull()) {
        EraseObject(block);
        return placed.outcome = Placing::noReference, placed;
    }
    placed.editable = Encode(params).Write(placed.reference, Params::kApplication) == Acad::eOk;
    return placed;
}
template PlacedScatter PlaceScatter(EntityList, const ScatterOnCurveParams&);
template PlacedScatter PlaceScatter(EntityList, const ScatterInRegionParams&);

template <class Params>
bool RebuildScatter(AcDbObjectId reference, const Params& params, const ScatterProgress& progress) {
    EntityList entities;
    if (!Serves(params) || !Generate(params, entities, progress)) return false;
    if (ReplaceBlock(reference, std::move(entities)) != Acad::eOk) return false;
    Encode(params).Write(reference, Params::kApplication);
    ads_name name;
    if (acdbGetAdsName(name, reference) == Acad::eOk) acdbEntUpd(name);
    acedUpdateDisplay();
    return true;
}
template bool RebuildScatter(AcDbObjectId, const ScatterOnCurveParams&, const ScatterProgress&);
template bool RebuildScatter(AcDbObjectId, const ScatterInRegionParams&, const ScatterProgress&);

ScatterProgress ShownProgress() {
    const std::wstring caption = Translate(L"正在生成散布图案").str();
    return [caption](double share) { return host_door::showProgress(caption, share); };
}

} // namespace corvane::scatter
