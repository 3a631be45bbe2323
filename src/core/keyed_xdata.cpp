// Items, and their way through xdata.
#include "core/keyed_xdata.h"

#include <cmath>

#include "core/xdata.h"

namespace corvane {
namespace {
constexpr int kText = 1000, kApplication = 1001, kReal = 1040, kShort = 1070, kLong = 1071;
}

KeyedXData& KeyedXData::add(const wchar_t* key, Item value) {
    items_.push_back({kText, 0, 0, key});
    items_.push_back(std::move(value));
    return *this;
}
KeyedXData& KeyedXData::AddShort(const wchar_t* key, int value) { return add(key, {kShort, value, 0, {}}); }
KeyedXData& KeyedXData::AddLong(const wchar_t* key, int value) { return add(key, {kLong, value, 0, {}}); }
KeyedXData& KeyedXData::AddReal(const wchar_t* key, double value) { return add(key, {kReal, 0, value, {}}); }
KeyedXData& KeyedXData::AddTexts(const wchar_t* key, const std::vector<std::wstring>& texts) {
    AddLong(key, int(texts.size()));
    for (const std::wstring& text : texts) items_.push_back({kText, 0, 0, text});
    return *this;
}

const KeyedXData::Item* KeyedXData::find(const wchar_t* key, int code) const {
    for (size_t i = 0; i + 1 < items_.size(); ++i)
        if (items_[i].code == kText && items_[i].text == key && items_[i + 1].code == code)
            return &items_[i + 1];
    return nullptr;
}

bool KeyedXData::GetShort(const wchar_t* key, int& value) const {
    const Item* item = find(key, kShort);
    return item && (value = item->integer, true);
}
bool KeyedXData::GetLong(const wchar_t* key, int& value) const {
    const Item* item = find(key, kLong);
    return item && (value = item->integer, true);
}
bool KeyedXData::GetReal(const wchar_t* key, double& value) const {
    const Item* item = find(key, kReal);
    return item && std::isfinite(item->real) && (value = item->real, true);
}
bool KeyedXData::GetFlag(const wchar_t* key, bool& value) const {
    const Item* item = find(key, kShort);
    return item && (value = item->integer != 0, true);
}
bool KeyedXData::GetTexts(const wchar_t* key, std::vector<std::wstring>& texts) const {
    const Item* count = find(key, kLong);
    if (!count) return false;
    texts.clear();
    const Item* end = items_.data() + items_.size();
    for (const Item* item = count + 1; item != end && item->code == kText; ++item) {
        if (int(texts.size()) >= count->integer) break;
        texts.push_back(item->text);
    }
    return true;
}

Acad::ErrorStatus KeyedXData::Write(AcDbObjectId entity, const wchar_t* application) const {
    const host::ResbufChain chain(TextGroup(kApplication, application));
    resbuf* tail = chain.get();
    for (const Item& item : items_) {
        tail = tail->rbnext = item.code == kText ? TextGroup(kText, item.text) : acutNewRb(item.code);
        if (item.code == kReal) tail->resval.rreal = item.real;
        if (item.code == kShort) tail->resval.rint = short(item.integer);
        if (item.code == kLong) tail->resval.rlong = item.integer;
    }
    return SetXData(entity, application, chain.get());
}

KeyedXData KeyedXData::Read(const AcDbObject& entity, const wchar_t* application) {
    KeyedXData data;
    const host::ResbufChain chain(entity.xData(application));
    for (const resbuf* group = chain.get(); group; group = group->rbnext) {
        Item item{group->restype, 0, 0, {}};
        if (item.code == kText && group->resval.rstring) item.text = group->resval.rstring;
        if (item.code == kReal) item.real = group->resval.rreal;
        if (item.code == kShort) item.integer = group->resval.rint;
        if (item.code == kLong) item.integer = group->resval.rlong;
        if (item.code != kApplication) data.items_.push_back(std::move(item));
    }
    return data;
}

} // namespace corvane
