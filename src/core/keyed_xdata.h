// The parameters of a finished feature as typed xdata: before each value a text with its key, so that the
// feature can be edited again. Features that keep one text instead use payload.h.
#pragma once
#include <string>
#include <vector>

#include "core/host/database.h"

namespace corvane {

class KeyedXData {
public:
    KeyedXData& AddShort(const wchar_t* key, int value);   // 16 bits, group 1070
    KeyedXData& AddLong(const wchar_t* key, int value);    // 32 bits, group 1071
    KeyedXData& AddReal(const wchar_t* key, double value); // group 1040
    // Their number as a long, then the texts.
    KeyedXData& AddTexts(const wchar_t* key, const std::vector<std::wstring>& texts);

    // The value behind the first such key that a value of this type follows. False, with the value untouched,
    // when there is none or it isn't finite. Texts in a list must not read like a key.
    bool GetShort(const wchar_t* key, int& value) const;
    bool GetLong(const wchar_t* key, int& value) const;
    bool GetReal(const wchar_t* key, double& value) const;
    bool GetFlag(const wchar_t* key, bool& value) const; // a short that isn't 0
    bool GetTexts(const wchar_t* key, std::vector<std::wstring>& texts) const;

    bool empty() const { return items_.empty(); }
    // Into the entity's xdata of that application, registered on the way. A status when it doesn't fit.
    Acad::ErrorStatus Write(AcDbObjectId entity, const wchar_t* application) const;
    // Empty when the entity has none of that application.
    static KeyedXData Read(const AcDbObject& entity, const wchar_t* application);

private:
    struct Item {
        int code;
        int integer = 0;
        double real = 0;
        std::wstring text;
    };
    KeyedXData& add(const wchar_t* key, Item value);
    // The item behind the key; null when none of that code follows it.
    const Item* find(const wchar_t* key, int code) const;

    std::vector<Item> items_;
};

} // namespace corvane
