// Counts that objects state of their own groups, held against what is there.
#pragma once
#include <array>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string>
#include <string_view>

#include "host/db/groups.h"

namespace host::dxf {

struct CountRow {
    std::string_view marker; // of the class
    int code;                // of the count
    int counted;             // of the groups that it counts
    bool made;               // written anew from the data; else it stays as it came
};

class CountKeeper {
public:
    // A class begins; an empty marker when the object ends. First look at mismatches().
    void begin(std::string_view marker);
    void take(const Group& group) {
        if (first_ != end_) count(group);
    }
    // Calls tell(row, stated, counted) for each count of the class at hand that isn't true.
    template <class Tell> void mismatches(Tell tell) const {
        for (std::size_t i = first_; i < end_; ++i)
            if (stated_[i] != kSilent && stated_[i] != counted_[i]) tell(kRows[i], stated_[i], counted_[i]);
    }

private:
    static constexpr CountRow kRows[] = {{"AcDbPolyline", 90, 10, true}, {"AcDbSpline", 72, 40, true},
                                         {"AcDbSpline", 73, 10, true},   {"AcDbSpline", 74, 11, true},
                                         {"AcDbLeader", 76, 10, false},  {"AcDbMline", 72, 11, false}};
    static constexpr std::size_t kCount = std::size(kRows);
    static constexpr std::int64_t kSilent = std::numeric_limits<std::int64_t>::min();
    void count(const Group& group);
    std::size_t first_ = 0, end_ = 0; // the rows of the class
    std::array<std::int64_t, kCount> stated_{}, counted_{};
};

// "group 90 of AcDbPolyline says 5, there are 4".
std::string sentenceFor(const CountRow& row, std::int64_t stated, std::int64_t counted);

} // namespace host::dxf
