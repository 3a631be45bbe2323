// Reading typed answers: keywords, numbers, points. Plain text in, plain values out.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "host/ge/point3d.h"

namespace host {

struct Keyword {
    std::wstring shown;  // as the prompt and the user write it
    std::wstring global; // what the caller gets
};

// A keyword list of acedInitGet: words parted by blanks; from the word that begins with "_" on, the
// language-independent names in the same order.
std::vector<Keyword> parseKeywords(const std::wstring& list);
// The keyword that the text stands for, or null: without regard to case, by its run of capitals or any longer
// beginning of it; "_" before the text asks for the language-independent name.
const Keyword* matchKeyword(const std::vector<Keyword>& keywords, const std::wstring& text);

// What points are read against.
struct PointFrame {
    AcGePoint3d last;     // of relative answers; UCS
    double elevation = 0; // Z of points given with X and Y alone
    double angleBase = 0; // radians
    bool clockwise = false;
};
struct TypedPoint {
    AcGePoint3d point;
    bool world = false; // written with "*": in world coordinates
};
// "x,y", "x,y,z", "@dx,dy", "d<angle", "@d<angle", with "*" before for world coordinates. Angles in degrees.
std::optional<TypedPoint> parsePoint(const std::wstring& text, const PointFrame& frame);

// A distance or number: decimals, exponents, fractions such as 1/2 and 1-1/2, feet and inches such as 5'-6".
std::optional<double> parseDistance(const std::wstring& text);
// An angle in radians: degrees as decimals, "45d30'15\"", "50g" grads, "0.5r" radians.
std::optional<double> parseAngle(const std::wstring& text);

// The names of object snaps as answers ("end", "mid", ...), by their first three letters; 0 for none of them,
// the bit of OSMODE else.
int objectSnapBit(const std::wstring& text);

// The entity of (handent "2F"), perhaps with the point it was picked at: (handent "2F" 10,20). Also !SYMBOL,
// by name.
struct EntityAnswer {
    std::wstring handle, symbol;
    std::optional<AcGePoint3d> point;
};
std::optional<EntityAnswer> parseEntityAnswer(const std::wstring& text);

} // namespace host
