// Keeping count of an object's groups.
#include "host/dxf/counts.h"

namespace host::dxf {

void CountKeeper::begin(std::string_view marker) {
    first_ = 0;
    while (first_ < kCount && kRows[first_].marker != marker) ++first_;
    end_ = first_;
    while (end_ < kCount && kRows[end_].marker == marker) stated_[end_] = kSilent, counted_[end_++] = 0;
}

void CountKeeper::count(const Group& group) {
    for (std::size_t i = first_; i < end_; ++i) {
        if (group.code == kRows[i].code && stated_[i] == kSilent) stated_[i] = group.integer;
        if (group.code == kRows[i].counted) ++counted_[i];
    }
}

std::string sentenceFor(const CountRow& row, std::int64_t stated, std::int64_t counted) {
    return "group " + std::to_string(row.code) + " of " + std::string(row.marker) + " says " +
           std::to_string(stated) + ", there are " + std::to_string(counted);
}

} // namespace host::dxf
