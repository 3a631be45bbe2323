// The questions that both scatter commands ask.
#pragma once
#include <optional>

#include "core/language.h"
#include "scatter/random/params.h"

namespace corvane::scatter {

// A number between the bounds; others are told and asked again. Enter gives `otherwise`, where it is allowed.
// False when the user cancels.
bool AskReal(const CString& prompt, double& value, double otherwise, bool mayBeEmpty, double least,
             double most);

// A distance above 0; nothing when the user cancels.
std::optional<double> AskDistance(const wchar_t* prompt);
// Circles, squares or templates, with their size or the templates. False, told, when nothing is chosen.
bool AskPattern(const wchar_t* prompt, ScatterParams& params);
// Whether sizes vary, and between which factors. False when the user cancels.
bool AskSizes(ScatterParams& params);
void AskCount(ScatterParams& params);
void AskOverlap(ScatterParams& params);

} // namespace corvane::scatter
