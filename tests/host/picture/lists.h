// Display lists put together by hand.
#pragma once

#include <initializer_list>

#include "host/view/display_list.h"

namespace lists {

using Kind = host::DisplayPrimitive::Kind;

inline host::DisplayList empty() {
    host::DisplayList list;
    list.layers = {{L"0", true}};
    list.owners = {AcDbObjectId()};
    return list;
}

// Adds a primitive of one contour in a colour of its own, on the layer with that number.
inline void add(host::DisplayList& list, Kind kind, std::initializer_list<AcGePoint3d> points,
                host::DisplayColor color = {}, std::uint32_t layer = 0, int weight = 25) {
    host::DisplayPrimitive primitive;
    primitive.kind = kind;
    primitive.style = static_cast<std::uint32_t>(list.styles.size());
    primitive.first = static_cast<std::uint32_t>(list.contourEnds.size());
    primitive.count = 1;
    list.styles.push_back({color, layer, weight, 255});
    list.points.insert(list.points.end(), points);
    list.contourEnds.push_back(static_cast<std::uint32_t>(list.points.size()));
    for (const AcGePoint3d& p : points) primitive.box.addPoint(p);
    list.primitives.push_back(primitive);
}

inline void addText(host::DisplayList& list, const wchar_t* text, AcGePoint3d origin, double height) {
    host::DisplayPrimitive primitive;
    primitive.kind = Kind::text;
    primitive.style = static_cast<std::uint32_t>(list.styles.size());
    primitive.first = static_cast<std::uint32_t>(list.texts.size());
    list.styles.push_back({});
    if (list.faces.empty()) list.faces.push_back({});
    list.texts.push_back({text, 0, origin, {height, 0, 0}, {0, height, 0}});
    list.primitives.push_back(primitive);
}

} // namespace lists
