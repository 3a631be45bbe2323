// The payload of arrays along one curve.
#include "arrays/one_curve/array_params.h"

#include <limits>

#include "arrays/common/settings_payload.h"

namespace corvane {
namespace {

constexpr int kDigits = 16;

void readFlag(const PayloadText& payload, const wchar_t* key, bool& value) {
    int number = value;
    ReadItem(payload, key, number, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    value = number != 0;
}

} // namespace

PayloadText EncodeArray(const ArrayRecord& record) {
    const ArrayParams& params = record.params;
    PayloadText payload;
    payload.Mark(kArrayAlongCurve.marker).Mark(L";");
    ItemWriter items(payload, kDigits);
    items.Add(L"g", record.name).Add(L"ph", record.prototype).Add(L"ch", record.path);
    WritePlacing(items, params.settings);
    items.Add(L"rm", int(params.alongTangent));
    WriteVariations(items, params.settings);
    WriteStart(items, params.start);
    items.Add(L"3d", int(params.acrossPath)).Add(L"rsa", params.startTwist).Add(L"rea", params.endTwist);
    return payload;
}

std::optional<ArrayRecord> DecodeArray(const PayloadText& payload) {
    ArrayRecord record;
    ArrayParams& params = record.params;
    if (!payload.Get(L"g", record.name) || !payload.Get(L"ph", record.prototype) ||
        !payload.Get(L"ch", record.path))
        return std::nullopt;
    ReadSettings(payload, params.settings);
    ReadStart(payload, params.start);
    readFlag(payload, L"rm", params.alongTangent);
    readFlag(payload, L"3d", params.acrossPath);
    payload.Get(L"rsa", params.startTwist);
    payload.Get(L"rea", params.endTwist);
    return record;
}

} // namespace corvane
