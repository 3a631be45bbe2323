// The table of values, line weights, normals and names.
#include "host/dxf/values.h"

#include <algorithm>
#include <cstdlib>

#include "host/db/adesk.h"

namespace host::dxf {
namespace {

// Reals that must be above 0. Without a stand-in of its own the value can't be mended.
struct PositiveRow {
    std::string_view marker;
    int code;
    const char* sentence;
    double instead;
};
constexpr PositiveRow kPositive[] = {{"AcDbCircle", 40, "the radius is not above 0", 0},
                                     {"AcDbText", 40, "the text height is not above 0", 2.5},
                                     {"AcDbMText", 40, "the text height is not above 0", 2.5},
                                     {"AcDbEllipse", 40, "the ratio of the axes is not above 0", 1e-6}};

constexpr int kWeights[] = {-3, -2, -1, 0,  5,  9,  13,  15,  18,  20,  25,  30,  35, 40,
                            50, 53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};

bool isWeight(std::int64_t value) {
    return std::find(std::begin(kWeights), std::end(kWeights), value) != std::end(kWeights);
}

std::int64_t nearestWeight(std::int64_t value) {
    return *std::min_element(std::begin(kWeights), std::end(kWeights), [value](int a, int b) {
        return std::abs(double(a) - double(value)) < std::abs(double(b) - double(value));
    });
}

} // namespace

const char* ValueKeeper::fault(Group& group) {
    if (group.code == 100) return marker_ = group.text, zeros_ = 0, nullptr;
    if (group.code == 210) zeros_ = 0;
    if (group.code == 210 || group.code == 220 || group.code == 230) {
        zeros_ += group.type == GroupType::real && group.real == 0;
        if (group.code != 230 || zeros_ < 3) return nullptr;
        group.real = 1;
        return "the normal has no direction";
    }
    const bool common = marker_ == "AcDbEntity" || marker_ == "AcDbLayerTableRecord";
    if (group.code == 370 && common && !isWeight(group.integer)) {
        group.integer = nearestWeight(group.integer);
        return "the line weight is none of those there are";
    }
    if (group.code == 7 && marker_ == "AcDbText" && group.text.empty()) {
        group.text = "Standard";
        return "the text style has no name";
    }
    for (const PositiveRow& row : kPositive)
        if (row.code == group.code && row.marker == marker_ && group.real <= 0) {
            if (row.instead > 0) group.real = row.instead;
            return row.sentence;
        }
    return nullptr;
}

std::wstring lawfulName(const std::wstring& name) {
    constexpr std::wstring_view kUnlawful = L"<>/\\\":;?,=`";
    std::wstring lawful = name;
    for (size_t i = 0; i < lawful.size(); ++i) {
        const bool star = lawful[i] == L'*' && i > 0; // names of the drawing's own blocks begin with one
        if (star || lawful[i] < L' ' || kUnlawful.find(lawful[i]) != std::wstring_view::npos)
            lawful[i] = L'_';
    }
    return lawful;
}

} // namespace host::dxf
