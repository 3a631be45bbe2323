// The parameters of a finished feature as one text of "key=value;" items, kept in the xdata of what
// the feature made, so that it can be edited again.
#pragma once
#include <string>

#include "core/host/database.h"

namespace corvane {

class PayloadText {
public:
    PayloadText() = default;
    explicit PayloadText(std::wstring text) : text_(std::move(text)) {}
    const std::wstring& text() const { return text_; }
    bool empty() const { return text_.empty(); }

    // Appends raw text: the version mark, or the ";" that keeps a short key from being found in a longer
    // one's tail.
    PayloadText& Mark(const std::wstring& text) { return text_ += text, *this; }
    // Reals with 17 significant digits, so that they come back exactly; the short form has 12.
    PayloadText& Add(const wchar_t* key, int value);
    PayloadText& Add(const wchar_t* key, double value);
    PayloadText& Add(const wchar_t* key, const AcGePoint3d& value);
    PayloadText& Add(const wchar_t* key, const AcGeVector3d& value);
    PayloadText& Add(const wchar_t* key, const std::wstring& value);
    PayloadText& AddShort(const wchar_t* key, double value);
    PayloadText& AddShort(const wchar_t* key, const AcGePoint2d& value);
    PayloadText& AddShort(const wchar_t* key, const AcGePoint3d& value);

    // The value behind the first "key=" up to the next ";". False, with the value untouched, when either is
    // missing. The key is searched as plain text: "d" is found in "sd=1;" unless the writer put ";" before
    // its keys.
    bool Get(const wchar_t* key, std::wstring& value) const;
    bool Get(const wchar_t* key, int& value) const;
    bool Get(const wchar_t* key, double& value) const;
    bool Get(const wchar_t* key, AcGePoint2d& value) const;
    bool Get(const wchar_t* key, AcGePoint3d& value) const;
    bool Get(const wchar_t* key, AcGeVector3d& value) const;

    // Into the entity's xdata of that application, registered on the way, in strings of 200 characters.
    Acad::ErrorStatus Write(AcDbObjectId entity, const wchar_t* application) const;
    // From the xdata: its strings in order. Empty when there is none.
    static PayloadText Read(const AcDbObject& entity, const wchar_t* application);

private:
    PayloadText& add(const wchar_t* format, const wchar_t* key, const double* values, int count);
    bool numbers(const wchar_t* key, double* values, int count) const;
    std::wstring text_;
};

// The scale factor kept under the application CORVAEN; 1.0 when it is missing.
double ReadScaleFactor(const AcDbObject& object);
Acad::ErrorStatus WriteScaleFactor(AcDbObjectId object, double factor);

} // namespace corvane
