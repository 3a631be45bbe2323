// The shared items of payloads.
#include "arrays/common/settings_payload.h"

#include <algorithm>
#include <limits>

#include "core/host/system.h"

namespace corvane {
namespace {

constexpr int kAnyLow = std::numeric_limits<int>::min(), kAnyHigh = std::numeric_limits<int>::max();

// The keys of one variation curve.
struct CurveKeys {
    const wchar_t *kind, *start, *end, *c1, *c2, *t1, *t2;
};
constexpr CurveKeys kSizeKeys{L"sm", L"s1", L"s2", L"sc1", L"sc2", L"st1", L"st2"};
constexpr CurveKeys kGapKeys{L"dm", L"d1", L"d2", L"dc1", L"dc2", L"dt1", L"dt2"};

void writeCurve(ItemWriter& items, const CurveKeys& keys, const VariationCurve& curve) {
    items.Add(keys.kind, curve.kind).Add(keys.start, curve.start).Add(keys.end, curve.end);
    items.Add(keys.c1, curve.c1).Add(keys.c2, curve.c2).Add(keys.t1, curve.t1).Add(keys.t2, curve.t2);
}

void readCurve(const PayloadText& payload, const CurveKeys& keys, VariationCurve& curve) {
    ReadItem(payload, keys.kind, curve.kind, kAnyLow, kAnyHigh);
    payload.Get(keys.start, curve.start);
    payload.Get(keys.end, curve.end);
    payload.Get(keys.c1, curve.c1);
    payload.Get(keys.c2, curve.c2);
    payload.Get(keys.t1, curve.t1);
    payload.Get(keys.t2, curve.t2);
    curve.t1 = ClampNumber(curve.t1, 0, 1);
    curve.t2 = ClampNumber(curve.t2, 0, 1);
}

} // namespace

ItemWriter& ItemWriter::Add(const std::wstring& key, const std::wstring& value) {
    payload_.Add(key.c_str(), value);
    return *this;
}
ItemWriter& ItemWriter::Add(const std::wstring& key, int value) { return Add(key, std::to_wstring(value)); }
ItemWriter& ItemWriter::Add(const std::wstring& key, double value) {
    CString text;
    text.Format(L"%.*g", digits_, value);
    return Add(key, text.str());
}

void WritePlacing(ItemWriter& items, const ArraySettings& settings) {
    items.Add(L"cm", settings.mode).Add(L"cn", settings.count).Add(L"sp", settings.spacing);
}

void WriteVariations(ItemWriter& items, const ArraySettings& settings) {
    items.Add(L"mg", settings.gain);
    writeCurve(items, kSizeKeys, settings.sizes);
    writeCurve(items, kGapKeys, settings.gaps);
}

void WriteStart(ItemWriter& items, const GuideStart& start, const wchar_t* number) {
    items.Add(std::wstring(L"dir") + number, start.direction);
    items.Add(std::wstring(L"se") + number, int(start.fromEnd));
    items.Add(std::wstring(L"ra") + number, start.ray);
}

void ReadItem(const PayloadText& payload, const wchar_t* key, int& value, int low, int high) {
    double number = value;
    payload.Get(key, number);
    value = int(ClampNumber(number, low, high));
}

void ReadSettings(const PayloadText& payload, ArraySettings& settings) {
    ReadItem(payload, L"cm", settings.mode, kAnyLow, kAnyHigh);
    ReadItem(payload, L"cn", settings.count, 2, kMostCopies);
    payload.Get(L"sp", settings.spacing);
    settings.spacing = std::max(settings.spacing, kLeastSpacing);
    ReadItem(payload, L"mg", settings.gain, 1, kAnyHigh);
    readCurve(payload, kSizeKeys, settings.sizes);
    readCurve(payload, kGapKeys, settings.gaps);
}

void ReadStart(const PayloadText& payload, GuideStart& start, const wchar_t* number) {
    const auto key = [number](const wchar_t* name) { return std::wstring(name) + number; };
    int fromEnd = start.fromEnd;
    ReadItem(payload, key(L"dir").c_str(), start.direction, kAnyLow, kAnyHigh);
    if (start.direction == 0) start.direction = 1;
    ReadItem(payload, key(L"se").c_str(), fromEnd, kAnyLow, kAnyHigh);
    start.fromEnd = fromEnd != 0;
    payload.Get(key(L"ra").c_str(), start.ray);
}

} // namespace corvane
