// Style names of resource scripts and their bits.
#pragma once

#include <optional>
#include <string_view>

#include "host/ui/types.h"

namespace host::rc {
std::optional<DWORD> styleBits(std::wstring_view name); // nothing for an unknown name
}
