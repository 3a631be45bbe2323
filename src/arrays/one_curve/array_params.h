// The record of an array along one curve, and its payload. What is done with it stands in copies.h.
#pragma once
#include <optional>
#include <string>

#include "arrays/common/editable_array.h"
#include "arrays/common/spacing.h"
#include "core/app_names.h"

namespace corvane {

struct ArrayParams {
    ArraySettings settings;
    GuideStart start;
    bool alongTangent = true; // turned to the path
    bool acrossPath = false;  // in space: the object's normal along the path
    double startTwist = 0;    // degrees, about the path, at its start and end
    double endTwist = 0;
    bool operator==(const ArrayParams&) const = default;
};

inline constexpr ArrayKind kArrayAlongCurve{RegisteredAppNames::kArrayOneCurve, L"AAC1"};

// What a payload holds.
struct ArrayRecord {
    std::wstring name;            // of the array, kept through edits
    std::wstring prototype, path; // handles; empty when there was none
    ArrayParams params;
};
PayloadText EncodeArray(const ArrayRecord& record);
// Nothing when the name or one of the handles is missing; other items that are missing keep their defaults.
std::optional<ArrayRecord> DecodeArray(const PayloadText& payload);

} // namespace corvane
