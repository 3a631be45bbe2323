// The parameters that all arrays share, as items of their payloads. Numbers that make no sense are brought
// within their limits on the way in; items that are missing leave what stands there.
#pragma once
#include <string>

#include "arrays/common/spacing.h"
#include "core/payload.h"

namespace corvane {

// Writes reals with that many significant digits.
class ItemWriter {
public:
    ItemWriter(PayloadText& payload, int digits) : payload_(payload), digits_(digits) {}
    ItemWriter& Add(const std::wstring& key, const std::wstring& value);
    ItemWriter& Add(const std::wstring& key, int value);
    ItemWriter& Add(const std::wstring& key, double value);

private:
    PayloadText& payload_;
    int digits_;
};

// cm cn sp
void WritePlacing(ItemWriter& items, const ArraySettings& settings);
// mg, then sm s1 s2 sc1 sc2 st1 st2 and the same with d
void WriteVariations(ItemWriter& items, const ArraySettings& settings);
// dir se ra, each with the guide's number behind it where there are several
void WriteStart(ItemWriter& items, const GuideStart& start, const wchar_t* number = L"");

void ReadSettings(const PayloadText& payload, ArraySettings& settings);
void ReadStart(const PayloadText& payload, GuideStart& start, const wchar_t* number = L"");
// A whole number, brought within the limits.
void ReadItem(const PayloadText& payload, const wchar_t* key, int& value, int low, int high);

} // namespace corvane
