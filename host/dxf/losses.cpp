// The words for what is lost.
#include "host/dxf/losses.h"

namespace host::dxf {
namespace {

struct NounRow {
    std::string_view kind, one, many;
};
constexpr NounRow kNouns[] = {
    {"3DSOLID", "solid", "solids"},
    {"ACAD_TABLE", "table", "tables"},
    {"BODY", "body", "bodies"},
    {"ELLIPSE", "ellipse", "ellipses"},
    {"HATCH", "hatch", "hatches"},
    {"HELIX", "helix", "helices"},
    {"IMAGE", "image", "images"},
    {"LEADER", "leader", "leaders"},
    {"MESH", "mesh", "meshes"},
    {"MLINE", "multiline", "multilines"},
    {"MTEXT", "multiline text", "multiline texts"},
    {"MULTILEADER", "multileader", "multileaders"},
    {"RAY", "ray", "rays"},
    {"REGION", "region", "regions"},
    {"SPLINE", "spline", "splines"},
    {"TOLERANCE", "tolerance frame", "tolerance frames"},
    {"WIPEOUT", "wipeout", "wipeouts"},
    {"XLINE", "construction line", "construction lines"},
};

} // namespace

void Losses::addEntity(const std::string& kind, std::string_view outcome) {
    for (const NounRow& row : kNouns)
        if (row.kind == kind) return add(row.one, row.many, outcome);
    add("entity of the kind " + kind, "entities of the kind " + kind, outcome);
}

void Losses::add(std::string_view one, std::string_view many, std::string_view outcome, long count) {
    if (count > 0) counts_[{std::string(one), std::string(many), std::string(outcome)}] += count;
}

std::vector<std::string> Losses::sentences() const {
    std::vector<std::string> all;
    for (const auto& [subject, count] : counts_)
        all.push_back(std::to_string(count) + " " +
                      (count == 1 ? subject.one + " was " : subject.many + " were ") + subject.outcome);
    return all;
}

} // namespace host::dxf
