// The frame of a selecting command: prompt, filter, set, loop over the objects; and ids, extents and
// updates of what was selected.
#pragma once
#include <string_view>
#include <vector>

#include "core/host/database.h"
#include "core/host/editor.h"

namespace corvane {

// The kinds that commands select from.
enum class CurveFilter {
    polylines,
    allCurves,
    allCurvesWithoutHelix,
    conicsAndSplines,
    text,
    curvesAndBlocks
};
// A filter chain for acedSSGet: "<or", a group 0 a kind, "or>". The caller releases it.
resbuf* BuildFilter(CurveFilter kinds);

// What a selection is for: objects on locked layers are left out of those for change, and it is told how
// many.
enum class Purpose { look, change };

// Turns echoing off and picking of whole groups on for the length of a command. Echoing is on afterwards; the
// pick style stays.
class CommandFrame {
public:
    CommandFrame();
    ~CommandFrame();
    CommandFrame(const CommandFrame&) = delete;
    CommandFrame& operator=(const CommandFrame&) = delete;
};

// A selection set, freed with its owner.
class SelectionSet {
public:
    SelectionSet() = default;
    ~SelectionSet();
    SelectionSet(SelectionSet&& other) noexcept;
    SelectionSet& operator=(SelectionSet&& other) noexcept;

    // Prints `prompt` and lets the user select objects of those kinds. When nothing comes of it, prints
    // `nothing` and gives an empty set.
    static SelectionSet Ask(const wchar_t* prompt, CurveFilter kinds, const wchar_t* nothing,
                            Purpose purpose = Purpose::look);
    // The same for kinds by their names in files, parted by blanks.
    static SelectionSet AskKinds(const wchar_t* prompt, std::wstring_view kinds, const wchar_t* nothing,
                                 Purpose purpose = Purpose::look);
    // Any objects.
    static SelectionSet AskAny(const wchar_t* prompt, const wchar_t* nothing);

    // These entities; null ids are left out.
    static SelectionSet Of(const std::vector<AcDbObjectId>& ids);

    bool empty() const { return length_ == 0; }
    long length() const { return length_; }
    // Null for entities that are gone.
    AcDbObjectId at(long index) const;
    const std::int64_t* name() const { return name_; }

private:
    static SelectionSet ask(const wchar_t* prompt, const resbuf* filter, const wchar_t* nothing,
                            Purpose purpose);
    void free();
    ads_name name_{0, 0};
    long length_ = 0;
};

// Opens each object of the set in turn and calls `work` with it; objects that can't be opened or are of
// another class are passed over. `work` may erase the object or open it further; it is closed afterwards.
template <class Class, class Work> void ForEach(const SelectionSet& set, AcDb::OpenMode mode, Work work) {
    for (long i = 0; i < set.length(); ++i) {
        AcDbObjectPointer<Class> object(set.at(i), mode);
        if (object) work(*object);
    }
}

// The handle of an object; the status of opening it on failure.
Acad::ErrorStatus GetHandle(AcDbObjectId id, AcDbHandle& handle);
// The id of a handle text: 0, or 3 when there is no such object; then says so if `complain` is set.
int IdFromHandleText(AcDbDatabase* database, const wchar_t* handle, AcDbObjectId& id, bool complain);

// The box of all entities of the set; entities without extents are passed over. A set without any gives the
// fresh box, which runs from +1e20 to -1e20.
void SelectionExtents(AcDbExtents& extents, const ads_name set);
// The same for ids; the array is cleared.
void IdsExtents(AcDbExtents& extents, AcDbObjectIdArray& ids);
// Redraws the entities; the array is cleared.
void UpdateEntities(AcDbObjectIdArray& ids);

} // namespace corvane
