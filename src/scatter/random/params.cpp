// Keys, ranges, and the order in which parameters are kept.
#include "scatter/random/params.h"

#include <algorithm>

#include "core/editable_block.h"
#include "core/host/entities.h"

namespace corvane::scatter {
namespace {

constexpr const wchar_t *kVersion = L"VER", *kSeed = L"SEED", *kPattern = L"PTYPE", *kBase = L"BASE",
                        *kOnCurve = L"ONCURVE", *kWidth = L"WIDTH", *kSizeRandom = L"SIZERND",
                        *kScaleMin = L"SCMIN", *kScaleMax = L"SCMAX", *kSpacingRandom = L"SPACERND",
                        *kCount = L"COUNT", *kDeleteOverlap = L"DELOVL", *kAlign = L"ALIGNTAN",
                        *kJitter = L"TANJITTER", *kCurves = L"CURVES", *kTemplates = L"TEMPLS",
                        *kRotate = L"ROTRND", *kRange = L"ROTANG", *kBounds = L"BOUNDS";

std::vector<std::wstring> handlesOf(const std::vector<AcDbObjectId>& ids) {
    std::vector<std::wstring> handles;
    for (const AcDbObjectId id : ids) handles.push_back(id.handle().ascii());
    return handles;
}

std::vector<AcDbObjectId> objectsOf(const KeyedXData& data, const wchar_t* key) {
    std::vector<std::wstring> handles;
    data.GetTexts(key, handles);
    std::vector<AcDbObjectId> ids;
    for (const std::wstring& handle : handles)
        if (const AcDbObjectId id = ObjectOfHandle(handle); !id.isNull()) ids.push_back(id);
    return ids;
}

void readShared(const KeyedXData& data, const wchar_t* sources, ScatterParams& params) {
    data.GetShort(kVersion, params.version);
    data.GetLong(kSeed, params.seed);
    int pattern = 0;
    data.GetShort(kPattern, pattern);
    params.pattern = pattern == 1 || pattern == 2 ? PatternType(pattern) : PatternType::circle;
    data.GetReal(kBase, params.baseSize);
    data.GetFlag(kSizeRandom, params.sizeRandom);
    data.GetReal(kScaleMin, params.scaleMin);
    data.GetReal(kScaleMax, params.scaleMax);
    data.GetLong(kCount, params.count);
    params.count = std::min(params.count, kMostPatterns);
    data.GetFlag(kAlign, params.alignTangent);
    data.GetReal(kJitter, params.tangentJitter);
    params.sources = objectsOf(data, sources);
    params.templates = objectsOf(data, kTemplates);
    std::erase_if(params.templates, [](AcDbObjectId id) { return !IsTemplate(id); });
}

bool servesAtAll(const ScatterParams& params) {
    if (params.sources.empty() || params.count < 1 || params.count > kMostPatterns) return false;
    if (params.pattern == PatternType::templates ? params.templates.empty() : !(params.baseSize > 0))
        return false;
    return !params.sizeRandom || (params.scaleMin >= kLeastScale && params.scaleMax >= kLeastScale &&
                                  params.scaleMax <= kMostScale && params.scaleMin <= params.scaleMax);
}

} // namespace

bool Serves(const ScatterOnCurveParams& params) {
    return servesAtAll(params) && (params.onCurve || params.width > 0);
}
bool Serves(const ScatterInRegionParams& params) {
    return servesAtAll(params) &&
           (!params.rotate || (params.rotationRange >= 10 && params.rotationRange <= 360));
}

KeyedXData Encode(const ScatterOnCurveParams& params) {
    KeyedXData data;
    data.AddShort(kVersion, params.version).AddLong(kSeed, params.seed);
    data.AddShort(kPattern, int(params.pattern)).AddReal(kBase, params.baseSize);
    data.AddShort(kOnCurve, params.onCurve).AddReal(kWidth, params.width);
    data.AddShort(kSizeRandom, params.sizeRandom);
    data.AddReal(kScaleMin, params.scaleMin).AddReal(kScaleMax, params.scaleMax);
    data.AddShort(kSpacingRandom, params.spacingRandom).AddLong(kCount, params.count);
    data.AddShort(kDeleteOverlap, params.deleteOverlap).AddShort(kAlign, params.alignTangent);
    data.AddReal(kJitter, params.tangentJitter);
    return data.AddTexts(kCurves, handlesOf(params.sources))
        .AddTexts(kTemplates, handlesOf(params.templates));
}

KeyedXData Encode(const ScatterInRegionParams& params) {
    KeyedXData data;
    data.AddShort(kVersion, params.version).AddLong(kSeed, params.seed);
    data.AddShort(kPattern, int(params.pattern)).AddReal(kBase, params.baseSize);
    data.AddShort(kSizeRandom, params.sizeRandom);
    data.AddReal(kScaleMin, params.scaleMin).AddReal(kScaleMax, params.scaleMax);
    data.AddShort(kRotate, params.rotate).AddReal(kRange, params.rotationRange);
    data.AddShort(kAlign, params.alignTangent).AddReal(kJitter, params.tangentJitter);
    data.AddLong(kCount, params.count);
    return data.AddTexts(kBounds, handlesOf(params.sources))
        .AddTexts(kTemplates, handlesOf(params.templates));
}

void Decode(const KeyedXData& data, ScatterOnCurveParams& params) {
    readShared(data, kCurves, params);
    data.GetFlag(kOnCurve, params.onCurve);
    data.GetReal(kWidth, params.width);
    data.GetFlag(kSpacingRandom, params.spacingRandom);
    data.GetFlag(kDeleteOverlap, params.deleteOverlap);
}

void Decode(const KeyedXData& data, ScatterInRegionParams& params) {
    readShared(data, kBounds, params);
    data.GetFlag(kRotate, params.rotate);
    data.GetReal(kRange, params.rotationRange);
}

template <class Params> std::optional<Params> ReadParams(AcDbObjectId id) {
    AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForRead);
    if (!reference) return std::nullopt;
    const KeyedXData data = KeyedXData::Read(*reference, Params::kApplication);
    if (data.empty()) return std::nullopt;
    Params params;
    Decode(data, params);
    std::erase(params.templates, id); // each rebuild would hold all patterns of the one before
    return params;
}
template std::optional<ScatterOnCurveParams> ReadParams(AcDbObjectId);
template std::optional<ScatterInRegionParams> ReadParams(AcDbObjectId);

bool IsTemplate(AcDbObjectId id) {
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    if (!entity) return false;
    const AcDbEntity* e = entity.object();
    return AcDbText::cast(e) || AcDbMText::cast(e) || AcDbBlockReference::cast(e) || AcDbEllipse::cast(e) ||
           AcDbCircle::cast(e) || e->isA()->dxfName() == std::wstring(L"3DSOLID");
}

} // namespace corvane::scatter
