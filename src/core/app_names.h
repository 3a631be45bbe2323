// RegisteredAppNames: the xdata application names under which features keep their data in drawings.
// They stand in existing drawings; spelling slips among them must stay.
#pragma once

namespace corvane::RegisteredAppNames {

inline constexpr wchar_t kArrayOneCurve[] = L"SCVN_AAC";
inline constexpr wchar_t kArrayTwoCurves[] = L"SCVN_AADC";
inline constexpr wchar_t kArrayThreeCurves[] = L"SCVN_AATC";
inline constexpr wchar_t kWave[] = L"SCVN_AAWC";
inline constexpr wchar_t kWeave[] = L"SCVN_CVBZ";
inline constexpr wchar_t kBlend[] = L"SCVN_BLEND";
inline constexpr wchar_t kNumbering[] = L"SCVN_NumberPL";
inline constexpr wchar_t kRigidTiles[] = L"SCVN_tileRigidity";
inline constexpr wchar_t kWorldDirection[] = L"SCVN_WoldSpaceDirection";
inline constexpr wchar_t kImageHoleNet[] = L"CVN_IMGHOLENET";
inline constexpr wchar_t kImageAffect[] = L"CVN_IMGAFFECT";
inline constexpr wchar_t kReliefLines[] = L"CVN_PARALLELHATCHING";
inline constexpr wchar_t kScatterOnCurves[] = L"CVN_RNDSCATTER1";
inline constexpr wchar_t kScatterInRegions[] = L"CVN_RNDSCATTER2";
inline constexpr wchar_t kCurveTransform[] = L"CVN_CurveTransform";
inline constexpr wchar_t kScaleFactor[] = L"CORVAEN";

} // namespace corvane::RegisteredAppNames
