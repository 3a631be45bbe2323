// Results that stay editable: entities in an anonymous block whose reference carries the parameters they were
// made by, so that picking it again opens the same dialog and builds it anew. The features give the entities
// and the payload; the preview, the block and its replacement are here.
#pragma once
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "core/host/database.h"
#include "core/payload.h"

namespace corvane {

// Entities outside any drawing, in their order; and where the block's reference goes.
struct ArrayContents {
    std::vector<std::unique_ptr<AcDbEntity>> entities;
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
// The handle as payloads hold it; empty when the object can't be opened.
std::wstring HandleText(AcDbObjectId object);
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
    void Show(std::vector<std::unique_ptr<AcDbEntity>> entities);
    void Clear();
    const AcDbObjectIdArray& Shown() const { return shown_; }

private:
    AcDbObjectIdArray shown_;
};

} // namespace corvane
