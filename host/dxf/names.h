// Table records by name while a drawing is being read: those that stand already, those that stand
// further on in the file, and those that the file never defines. The survey, one more look through
// the whole file, is taken only when a name or a handle is missing.
#pragma once
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/dxf/stream.h"
#include "host/dxf/tables.h"

namespace host::dxf {

class NameBook {
public:
    NameBook(AcDbDatabase& database, GroupStream& stream) : database_(database), stream_(stream) {}

    // The record's id; of one that the file defines further on, or perhaps never, an id that waits.
    AcDbObjectId find(const TableKind& kind, std::string_view name);
    // The handle to place a record under that has none of its own: the one that waits for the name.
    std::uint64_t waitingHandle(const TableKind& kind, const std::wstring& name);
    // Makes sure that handles given out from now on collide with none in the file.
    void secureHandles() { survey(); }

    struct Missing {
        const TableKind* kind;
        std::wstring name;
        AcDbObjectId id;
    };
    // The records that were asked for and never came.
    std::vector<Missing> missing() const;

private:
    struct Hash {
        using is_transparent = void;
        size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };
    using Key = std::pair<const TableKind*, std::wstring>; // the name folded
    struct Waiting {
        std::wstring name;
        AcDbObjectId id;
    };
    void survey();
    AcDbObjectId freshId();

    AcDbDatabase& database_;
    GroupStream& stream_;
    std::map<const TableKind*, std::unordered_map<std::string, AcDbObjectId, Hash, std::equal_to<>>> known_;
    std::map<Key, Waiting> waiting_;
    std::map<Key, std::uint64_t> ahead_; // handles of records, by the survey
    bool surveyed_ = false;
};

// Handles above this are faults: they would leave too few to be given out.
inline constexpr std::uint64_t kHighestHandle = 0x3FFFFFFFFFFFFFFF;

} // namespace host::dxf
