// Object ids and handles.
#include "host/db/objectid.h"

#include <cwchar>

#include "host/db/object.h"

const AcDbObjectId AcDbObjectId::kNull;

AcDbHandle::AcDbHandle(const ACHAR* text) {
    if (!text || !*text) return;
    Adesk::UInt64 value = 0;
    int digits = 0;
    for (; *text; ++text) {
        const ACHAR c = *text;
        int digit = 0;
        if (c >= L'0' && c <= L'9')
            digit = c - L'0';
        else if (c >= L'A' && c <= L'F')
            digit = c - L'A' + 10;
        else if (c >= L'a' && c <= L'f')
            digit = c - L'a' + 10;
        else
            return;
        if (value != 0 && ++digits > 15) return;
        value = value << 4 | Adesk::UInt64(digit);
    }
    value_ = value;
}

std::wstring AcDbHandle::ascii() const {
    wchar_t digits[17];
    wchar_t* at = digits + 16;
    *at = 0;
    Adesk::UInt64 rest = value_;
    do {
        *--at = L"0123456789ABCDEF"[rest & 15];
    } while (rest >>= 4);
    return at;
}

void AcDbHandle::getIntoAsciiBuffer(ACHAR* buffer, size_t size) const {
    if (!buffer || size == 0) return;
    const std::wstring text = ascii();
    const size_t length = text.size() < size ? text.size() : 0;
    std::wmemcpy(buffer, text.data(), length);
    buffer[length] = 0;
}

bool AcDbObjectId::isErased() const { return !isValid() || cell_->object->isErased(); }

AcRxClass* AcDbObjectId::objectClass() const { return isValid() ? cell_->object->isA() : nullptr; }
