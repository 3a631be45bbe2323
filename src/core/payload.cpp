// Payload text: items, look-up, and its way through xdata.
#include "core/payload.h"

#include <algorithm>
#include <cwchar>

#include "core/app_names.h"
#include "core/host/system.h"
#include "core/xdata.h"

namespace corvane {
namespace {

constexpr size_t kPiece = 200;
constexpr wchar_t kExact[] = L"%.17g";
constexpr wchar_t kShort[] = L"%.12g";

} // namespace

PayloadText& PayloadText::add(const wchar_t* format, const wchar_t* key, const double* values, int count) {
    text_ += key;
    text_ += L'=';
    for (int i = 0; i < count; ++i) {
        CString number;
        number.Format(format, values[i]);
        if (i) text_ += L',';
        text_ += number.str();
    }
    text_ += L';';
    return *this;
}

PayloadText& PayloadText::Add(const wchar_t* key, int value) { return Add(key, std::to_wstring(value)); }
PayloadText& PayloadText::Add(const wchar_t* key, const std::wstring& value) {
    text_ += key;
    text_ += L'=' + value + L';';
    return *this;
}
PayloadText& PayloadText::Add(const wchar_t* key, double value) { return add(kExact, key, &value, 1); }
PayloadText& PayloadText::Add(const wchar_t* key, const AcGePoint3d& p) {
    const double values[] = {p.x, p.y, p.z};
    return add(kExact, key, values, 3);
}
PayloadText& PayloadText::Add(const wchar_t* key, const AcGeVector3d& v) {
    return Add(key, AcGePoint3d(v.x, v.y, v.z));
}
PayloadText& PayloadText::AddShort(const wchar_t* key, double value) { return add(kShort, key, &value, 1); }
PayloadText& PayloadText::AddShort(const wchar_t* key, const AcGePoint2d& p) {
    const double values[] = {p.x, p.y};
    return add(kShort, key, values, 2);
}
PayloadText& PayloadText::AddShort(const wchar_t* key, const AcGePoint3d& p) {
    const double values[] = {p.x, p.y, p.z};
    return add(kShort, key, values, 3);
}

bool PayloadText::Get(const wchar_t* key, std::wstring& value) const {
    const std::wstring item = std::wstring(key) + L'=';
    const size_t at = text_.find(item);
    if (at == text_.npos) return false;
    const size_t from = at + item.size(), end = text_.find(L';', from);
    if (end == text_.npos) return false;
    value = text_.substr(from, end - from);
    return true;
}

// Reads numbers parted by commas, like the C library but in no locale: a number that can't be read ends the
// list.
bool PayloadText::numbers(const wchar_t* key, double* values, int count) const {
    std::wstring text;
    if (!Get(key, text)) return false;
    std::vector<double> read;
    size_t at = 0;
    while (int(read.size()) < count) {
        const size_t comma = std::min(text.find(L',', at), text.size());
        const auto number = host::parseReal(std::wstring_view(text).substr(at, comma - at));
        if (!number) return false;
        read.push_back(*number);
        if (comma == text.size()) break;
        at = comma + 1;
    }
    if (int(read.size()) < count) return false;
    std::copy(read.begin(), read.end(), values);
    return true;
}

bool PayloadText::Get(const wchar_t* key, int& value) const {
    double number = 0;
    if (!numbers(key, &number, 1)) return false;
    value = int(number);
    return true;
}
bool PayloadText::Get(const wchar_t* key, double& value) const { return numbers(key, &value, 1); }
bool PayloadText::Get(const wchar_t* key, AcGePoint2d& value) const {
    double v[2];
    return numbers(key, v, 2) && (value.set(v[0], v[1]), true);
}
bool PayloadText::Get(const wchar_t* key, AcGePoint3d& value) const {
    double v[3];
    return numbers(key, v, 3) && (value.set(v[0], v[1], v[2]), true);
}
bool PayloadText::Get(const wchar_t* key, AcGeVector3d& value) const {
    double v[3];
    return numbers(key, v, 3) && (value.set(v[0], v[1], v[2]), true);
}

Acad::ErrorStatus PayloadText::Write(AcDbObjectId entity, const wchar_t* application) const {
    const host::ResbufChain chain(TextGroup(1001, application));
    resbuf* tail = chain.get();
    for (size_t from = 0; from < text_.size(); from += kPiece)
        tail = tail->rbnext = TextGroup(1000, text_.substr(from, kPiece));
    return SetXData(entity, application, chain.get());
}

PayloadText PayloadText::Read(const AcDbObject& entity, const wchar_t* application) {
    const host::ResbufChain chain(entity.xData(application));
    std::wstring text;
    for (const resbuf* group = chain.get(); group; group = group->rbnext)
        if (group->restype == 1000 && group->resval.rstring) text += group->resval.rstring;
    return PayloadText(text);
}

double ReadScaleFactor(const AcDbObject& object) {
    const host::ResbufChain chain(object.xData(RegisteredAppNames::kScaleFactor));
    bool named = false;
    for (const resbuf* group = chain.get(); group; group = group->rbnext) {
        if (group->restype == 1000 && group->resval.rstring)
            named = std::wstring(group->resval.rstring) == L"ScaleFactor";
        else if (group->restype == 1042 && named)
            return group->resval.rreal;
    }
    return 1.0;
}

Acad::ErrorStatus WriteScaleFactor(AcDbObjectId object, double factor) {
    const host::ResbufChain chain(TextGroup(1001, RegisteredAppNames::kScaleFactor));
    chain.get()->rbnext = TextGroup(1000, L"ScaleFactor");
    resbuf* value = chain.get()->rbnext->rbnext = acutNewRb(1042);
    value->resval.rreal = factor;
    return SetXData(object, RegisteredAppNames::kScaleFactor, chain.get());
}

} // namespace corvane
