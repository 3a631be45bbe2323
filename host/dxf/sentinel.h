// How binary drawing files begin.
#pragma once
#include <string_view>

namespace host::dxf {
inline constexpr std::string_view kBinarySentinel("AutoCAD Binary DXF\r\n\x1a\0", 22);
}
