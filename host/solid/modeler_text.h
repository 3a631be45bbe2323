// The text in which drawing files keep solids and regions: its cipher, and its records. What the records of a
// region mean is told in modeler_faces.h.
#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "host/db/groups.h"

namespace host {

// A line as files hold it in plain letters: every character stands for another, blanks for themselves.
std::string plainModelerText(std::string_view line);

// One record: its kind and what stands behind it.
struct ModelerRecord {
    std::string_view kind;
    std::vector<std::string_view> fields;
    // The records that the fields "$n" point at, from the field's own number on, the common first ones
    // (attributes, history) left out; -1 for none.
    std::vector<int> pointers;
};

// All records of the text, and the text they view. Files before version 7 of the modeller know no history.
struct ModelerText {
    std::string text;
    int version = 0; // such as 400 or 21800; 0 when the text is none
    std::vector<ModelerRecord> records;
};
// From an entity's groups 1 and 3.
ModelerText readModelerText(const GroupList& groups);

} // namespace host
