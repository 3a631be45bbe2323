// What scatters are made by, and its way through the xdata of their references.
#pragma once
#include <optional>
#include <vector>

#include "core/app_names.h"
#include "core/host/database.h"
#include "core/keyed_xdata.h"

namespace corvane::scatter {

enum class PatternType { circle = 0, square = 1, templates = 2 };

inline constexpr int kMostPatterns = 1000000;
inline constexpr double kLeastScale = 0.001, kMostScale = 100;

// What both kinds share. The sources are the curves, or the boundaries.
struct ScatterParams {
    int version = 1;
    int seed = 0; // the low 32 bits of the time at creation, in seconds
    PatternType pattern = PatternType::circle;
    double baseSize = 1; // diameter or side
    bool sizeRandom = true;
    double scaleMin = 0.3, scaleMax = 3;
    int count = 100; // at most kMostPatterns
    bool deleteOverlap = false;
    bool alignTangent = false;
    double tangentJitter = 0; // degrees
    std::vector<AcDbObjectId> sources, templates;
};

struct ScatterOnCurveParams : ScatterParams {
    static constexpr const wchar_t* kApplication = RegisteredAppNames::kScatterOnCurves;
    bool onCurve = false; // centres strictly on the curve
    double width = 0;     // radius of the band around it
    bool spacingRandom = true;
};

// Overlap is no part of what is stored, and tangents are without effect.
struct ScatterInRegionParams : ScatterParams {
    static constexpr const wchar_t* kApplication = RegisteredAppNames::kScatterInRegions;
    bool rotate = false;
    double rotationRange = 360; // degrees
};

// Whether a scatter can be made by them: enough to scatter, sizes and ranges within their bounds.
bool Serves(const ScatterOnCurveParams& params);
bool Serves(const ScatterInRegionParams& params);

KeyedXData Encode(const ScatterOnCurveParams& params);
KeyedXData Encode(const ScatterInRegionParams& params);
// Numbers that are missing keep their defaults; objects that are gone are left out.
void Decode(const KeyedXData& data, ScatterOnCurveParams& params);
void Decode(const KeyedXData& data, ScatterInRegionParams& params);

// The parameters on a block reference, which is no template of its own; nothing when it is no scatter of that
// kind.
template <class Params> std::optional<Params> ReadParams(AcDbObjectId reference);

// True for the kinds of object that can be scattered.
bool IsTemplate(AcDbObjectId object);

} // namespace corvane::scatter
