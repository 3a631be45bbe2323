// Arrays that stay editable: blocks with a payload (core/editable_block.h), picked again to open the same
// dialog; and what a dialog shows while it is open.
#pragma once
#include <optional>

#include "core/editable_block.h"
#include "core/payload.h"

namespace corvane {

// The copies, and where the block's reference goes.
struct ArrayContents {
    EntityList entities;
    AcGePoint3d insertion;
};

// What a feature's payloads are known by.
struct ArrayKind {
    const wchar_t* application;
    const wchar_t* marker; // the payload's first characters
};

// The payload of a block reference of that kind; empty for everything else.
PayloadText ReadArrayPayload(AcDbObjectId reference, const ArrayKind& kind);
// The object whose handle stands under the key; null when it is gone.
AcDbObjectId ObjectOfKey(const PayloadText& payload, const wchar_t* key);
// A name for a new array: the prefix and a fresh GUID.
std::wstring FreshArrayName(const wchar_t* prefix);

// Puts the contents into a new anonymous block, and a reference with the payload into the current space. The
// reference's id; null, and no reference, when there is nothing to put or it fails.
AcDbObjectId CreateArray(ArrayContents contents, const PayloadText& payload, const ArrayKind& kind);
// Gives the reference, wherever it has been taken since, a new anonymous block that shows the contents where
// they are, and the payload. The old block is left for purging.
Acad::ErrorStatus ReplaceArray(AcDbObjectId reference, ArrayContents contents, const PayloadText& payload,
                               const ArrayKind& kind);

// The contents as they would be, as entities of the current space, for as long as a dialog is open. What is
// left of them goes with the preview.
class ArrayPreview {
public:
    ArrayPreview() = default;
    ~ArrayPreview() { Clear(); }
    ArrayPreview(const ArrayPreview&) = delete;
    ArrayPreview& operator=(const ArrayPreview&) = delete;

    // Erases what was shown and shows these; then the display is up to date.
    void Show(EntityList entities);
    void Clear();
    const AcDbObjectIdArray& Shown() const { return shown_; }

private:
    AcDbObjectIdArray shown_;
};

} // namespace corvane
