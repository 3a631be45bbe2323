// What a version of drawing files can't hold and what became of it, told in one sentence a kind.
#pragma once
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace host::dxf {

class Losses {
public:
    // Entities by their name in files: "12 splines were written as polylines".
    void addEntity(const std::string& kind, std::string_view outcome);
    // Anything else, by what one and what many of it are called.
    void add(std::string_view one, std::string_view many, std::string_view outcome, long count = 1);
    // In the order of what they are about.
    std::vector<std::string> sentences() const;

private:
    struct Subject {
        std::string one, many, outcome;
        auto operator<=>(const Subject&) const = default;
    };
    std::map<Subject, long> counts_;
};

} // namespace host::dxf
